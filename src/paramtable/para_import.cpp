#include "paramtable/para_import.h"

#include "paramtable/coordinates.h"
#include "paramtable/para_import_p.h"
#include "platform/dialogs.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace drivewiz {

namespace {

const QString kSortTitle = QStringLiteral("par");

QString lowerTitle(const QString &title)
{
    return title.trimmed().toLower();
}

quint64 overrideKey(int row, int column)
{
    return (quint64(quint32(row)) << 32) | quint32(column);
}

// Left-pads with '0' to the width; a longer text stays as it is.
constexpr size_t kMaxText = 0x7FFFFFFFu; // offsets keep their top bit as a flag

QString padZero(const QString &s, int width)
{
    return s.size() >= width ? s : QString(width - s.size(), QLatin1Char('0')) + s;
}

} // namespace

TImportTable::TImportTable() = default;
TImportTable::~TImportTable() = default;

void TImportTable::Clear()
{
    m_titles.clear();
    m_sortedTitles.clear();
    m_columnCache.clear();
    m_literalColumns.clear();
    m_text.reset();
    m_textSize = 0;
    m_textCapacity = 0;
    m_offsets.clear();
    m_offsets.shrink_to_fit();
    m_overrides.clear();
    m_rowKeys.clear();
    m_rowKeys.shrink_to_fit();
    m_mainIndex.clear();
    m_sortedKeys.clear();
    m_indexValid = false;
    m_rowCount = 0;
    m_csvColumns = 0;
    m_colName = m_colKoordinate = m_colAchse = m_colNummer = -1;
    m_delimiter = 0;
}

// --- columns ------------------------------------------------------------------------

void TImportTable::CheckCSVdelim(const QString &titleLine)
{
    m_delimiter = ',';
    const bool comma = titleLine.contains(QLatin1Char(','));
    const bool semicolon = titleLine.contains(QLatin1Char(';'));
    if (comma && semicolon)
        ShowMessage(QStringLiteral("Fehler: Titelzeile in CSV-Datei darf nicht Komma und "
                                   "Semikolon gleichzeitig enthalten!"));
    if (semicolon) m_delimiter = ';';
}

int TImportTable::InitColumnArray(const QString &titleLine)
{
    Clear();
    CheckCSVdelim(titleLine);
    const TCharSet delims{QString(QLatin1Char(m_delimiter))};
    const int words = LWordCount(titleLine, delims, ewSingleDelim);
    m_csvColumns = words;
    for (int i = 0; i < words; ++i) {
        const QString title = ExtractCSVWord(i + 1, titleLine, delims).toLower();
        m_titles << title;
        const QString key = title.trimmed();
        if (key == QLatin1String("name"))
            m_colName = i;
        else if (key == QLatin1String("koordinate"))
            m_colKoordinate = i;
        else if (key == QLatin1String("achse"))
            m_colAchse = i;
        else if (key == QLatin1String("nummer"))
            m_colNummer = i;
    }
    m_titles << kSortTitle;
    m_columnCache.clear();
    m_literalColumns.clear();
    // Searched by the trimmed title; with a title twice, the last column wins.
    m_sortedTitles.clear();
    for (int i = 0; i < m_titles.size(); ++i)
        m_sortedTitles.emplace_back(m_titles.at(i).trimmed(), i);
    std::stable_sort(m_sortedTitles.begin(), m_sortedTitles.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    return words;
}

void TImportTable::SetColumnArrayLength(int rows)
{
    if (rows <= 0) return;
    m_offsets.reserve(size_t(rows) * size_t(m_csvColumns + 1));
    m_rowKeys.reserve(size_t(rows));
}

int TImportTable::ColNoByName(const QString &title) const
{
    if (m_titles.isEmpty()) {
        ShowMessage(QStringLiteral("Fehler beim Zugriff auf Spalte \"") + title +
                    QStringLiteral("\"\r\"fColTitles\" noch nicht initialisiert!"));
        return -1;
    }
    const int column = FindColumn(title);
    if (column < 0) {
        ShowMessage(QStringLiteral("Fehler: Spalte ") + title +
                    QStringLiteral(" im CSV-File nicht gefunden!"));
        return -1;
    }
    if (column >= ColCount()) {
        ShowMessage(QStringLiteral("Fehler bei Index-Ermittlung bei Spalte ") + title +
                    QStringLiteral("(") + QString::number(column) + QStringLiteral(")"));
        return -1;
    }
    return column;
}

int TImportTable::FindColumn(const QString &title) const
{
    // Callers ask for the same few titles over and over: remember the answers.
    const auto cached = m_columnCache.constFind(title);
    if (cached != m_columnCache.constEnd()) return cached.value();
    const int column = searchColumn(title);
    m_columnCache.insert(title, column);
    return column;
}

int TImportTable::searchColumn(const QString &title) const
{
    const QString key = lowerTitle(title);
    const auto it = std::upper_bound(m_sortedTitles.begin(), m_sortedTitles.end(), key,
                                     [](const QString &k, const auto &t) { return k < t.first; });
    if (it == m_sortedTitles.begin() || std::prev(it)->first != key) return -1;
    return std::prev(it)->second;
}

bool TImportTable::ColumnExists(const QString &title) const
{
    return ColNoByName(title) >= 0;
}

bool TImportTable::HasColumn(const QString &title) const
{
    return FindColumn(title) >= 0;
}

QString TImportTable::Cell(int p, const QString &title) const
{
    const int column = FindColumn(title);
    return column < 0 ? QString() : cell(rowAt(p), column);
}

QStringList TImportTable::Cells(int p, std::initializer_list<const char *> titles) const
{
    QStringList out;
    out.reserve(qsizetype(titles.size()));
    const int row = rowAt(p);
    for (const char *title : titles) {
        // Titles are string literals: their address is key enough.
        auto it = m_literalColumns.find(title);
        if (it == m_literalColumns.end())
            it = m_literalColumns.emplace(title, FindColumn(QLatin1String(title))).first;
        out << (it->second < 0 ? QString() : cell(row, it->second));
    }
    return out;
}

void TImportTable::SetCell(int p, const QString &title, const QString &value)
{
    const int column = FindColumn(title);
    if (column >= 0) setCell(rowAt(p), column, value);
}

// --- cells ----------------------------------------------------------------------------

int TImportTable::rowAt(int p) const
{
    if (p < 0 || p >= m_rowCount) return -1;
    // Before the first rebuild the positions are the file order.
    if (size_t(p) < m_mainIndex.size()) return m_mainIndex[size_t(p)];
    return p;
}

int TImportTable::RowOfPosition(int p) const
{
    return rowAt(p);
}

QString TImportTable::cell(int row, int column) const
{
    if (row < 0 || row >= m_rowCount || column < 0) return QString();
    if (column == m_csvColumns)
        return QString::fromUtf8(m_rowKeys[size_t(row)].data(),
                                 qsizetype(m_rowKeys[size_t(row)].size()));
    if (column > m_csvColumns) return QString();
    const size_t base = size_t(row) * size_t(m_csvColumns + 1) + size_t(column);
    const quint32 begin = m_offsets[base];
    if (begin & kOverridden) {
        const auto it = m_overrides.find(overrideKey(row, column));
        return it == m_overrides.end() ? QString() : it->second;
    }
    const quint32 end = m_offsets[base + 1] & ~kOverridden;
    return QString::fromUtf8(m_text.get() + begin, qsizetype(end - begin));
}

void TImportTable::setCell(int row, int column, const QString &value)
{
    if (row < 0 || row >= m_rowCount || column < 0 || column >= m_csvColumns) return;
    const size_t base = size_t(row) * size_t(m_csvColumns + 1) + size_t(column);
    m_offsets[base] |= kOverridden;
    m_overrides[overrideKey(row, column)] = value;
    if (column == m_colKoordinate || column == m_colAchse || column == m_colNummer) {
        const std::string before = m_rowKeys[size_t(row)];
        updateSortKey(row);
        // The row belongs elsewhere now, but positions callers hold stay valid until
        // ReBuildMainIndex; until then the index is stale and look-ups use the old keys.
        if (before != m_rowKeys[size_t(row)]) m_indexValid = false;
    }
}

QString TImportTable::CellAt(int p, int column) const
{
    return cell(rowAt(p), column);
}

void TImportTable::SetCellAt(int p, int column, const QString &value)
{
    setCell(rowAt(p), column, value);
}

QString TImportTable::ValueByColName(int p, const QString &title) const
{
    const int column = ColNoByName(title);
    const int row = rowAt(p);
    if (column < 0 || row < 0) return QStringLiteral("?");
    return cell(row, column);
}

void TImportTable::SetValueByColName(int p, const QString &title, const QString &value)
{
    const int row = rowAt(p);
    if (row < 0) return;
    setCell(row, ColNoByName(title), value);
}

void TImportTable::updateSortKey(int row)
{
    const auto raw = [this, row](int column, std::string &store) -> const std::string & {
        store = column < 0 ? std::string() : cell(row, column).toStdString();
        return store;
    };
    std::string k, a, n;
    raw(m_colKoordinate, k);
    raw(m_colAchse, a);
    raw(m_colNummer, n);
    m_rowKeys[size_t(row)] =
        m_colKoordinate < 0 || k.empty()
            ? std::string()
            : importdetail::sortKey(k.data(), k.size(), a.data(), a.size(), n.data(), n.size());
}

// --- text store -----------------------------------------------------------------------

char *TImportTable::reserveText(size_t extra)
{
    const size_t needed = m_textSize + extra;
    if (needed >= kMaxText) return nullptr;
    if (needed > m_textCapacity) {
        const size_t capacity = std::min(kMaxText, std::max(needed, m_textCapacity * 3 / 2));
        // realloc: large blocks are remapped rather than copied.
        char *grown = static_cast<char *>(std::realloc(m_text.get(), capacity));
        if (!grown) return nullptr;
        (void)m_text.release();
        m_text.reset(grown);
        m_textCapacity = capacity;
    }
    return m_text.get() + m_textSize;
}

void TImportTable::appendText(const char *text, size_t len)
{
    char *out = reserveText(len);
    if (!out) return;
    std::memcpy(out, text, len);
    m_textSize += len;
}

// Loading reserves for the worst case; give back what a loaded table will not use.
void TImportTable::shrinkText()
{
    if (m_textCapacity <= m_textSize + m_textSize / 8 + 4096) return;
    if (char *exact = static_cast<char *>(std::realloc(m_text.get(), m_textSize + 1))) {
        (void)m_text.release();
        m_text.reset(exact);
        m_textCapacity = m_textSize + 1;
    }
}

// --- main index and lookups -------------------------------------------------------------

namespace {

// Sort items carry the first eight key bytes as a number, so most comparisons need no
// memory outside the item; the row number keeps equal keys in file order.
struct SortItem
{
    quint64 prefix;
    int row;
};

quint64 keyPrefix(const std::string &key)
{
    quint64 p = 0;
    for (size_t i = 0; i < 8; ++i)
        p = (p << 8) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0u);
    return p;
}

} // namespace

// The rows [from, to) in sort-string order. Description files come mostly in coordinate
// order: rows that keep the order are taken as they come, the few others are sorted on
// their own and merged in. Equal keys keep their file order.
std::vector<int> TImportTable::sortedRows(int from, int to) const
{
    const auto less = [this](const SortItem &a, const SortItem &b) {
        if (a.prefix != b.prefix) return a.prefix < b.prefix;
        const int c = m_rowKeys[size_t(a.row)].compare(m_rowKeys[size_t(b.row)]);
        return c != 0 ? c < 0 : a.row < b.row;
    };
    std::vector<SortItem> inOrder;
    std::vector<SortItem> others;
    inOrder.reserve(size_t(to - from));
    for (int i = from; i < to; ++i) {
        const SortItem item{keyPrefix(m_rowKeys[size_t(i)]), i};
        if (inOrder.empty() || !less(item, inOrder.back()))
            inOrder.push_back(item);
        else
            others.push_back(item);
    }
    std::sort(others.begin(), others.end(), less);
    std::vector<SortItem> items(inOrder.size() + others.size());
    std::merge(inOrder.begin(), inOrder.end(), others.begin(), others.end(), items.begin(), less);
    std::vector<int> rows(items.size());
    for (size_t i = 0; i < items.size(); ++i)
        rows[i] = items[i].row;
    return rows;
}

void TImportTable::ReBuildMainIndex()
{
    m_indexValid = false;
    m_mainIndex = sortedRows(0, m_rowCount);
    m_sortedKeys.resize(size_t(m_rowCount));
    for (int i = 0; i < m_rowCount; ++i)
        m_sortedKeys[size_t(i)] = m_rowKeys[size_t(m_mainIndex[size_t(i)])];
    m_indexValid = true;
}

// After rows were appended to an indexed table: sort only the new rows and merge them in;
// on equal keys the older row stays first, as a full rebuild would keep it.
void TImportTable::mergeIntoIndex(int firstNewRow)
{
    const std::vector<int> added = sortedRows(firstNewRow, m_rowCount);
    const auto less = [this](int a, int b) {
        const int c = m_rowKeys[size_t(a)].compare(m_rowKeys[size_t(b)]);
        return c != 0 ? c < 0 : a < b;
    };
    std::vector<int> merged(m_mainIndex.size() + added.size());
    std::merge(m_mainIndex.begin(), m_mainIndex.end(), added.begin(), added.end(), merged.begin(),
               less);
    m_mainIndex = std::move(merged);
    m_sortedKeys.resize(m_mainIndex.size());
    for (size_t i = 0; i < m_mainIndex.size(); ++i)
        m_sortedKeys[i] = m_rowKeys[size_t(m_mainIndex[i])];
    m_indexValid = true;
}

bool TImportTable::indexOutOfDate() const
{
    if (m_mainIndex.size() == size_t(m_rowCount) && m_sortedKeys.size() == size_t(m_rowCount))
        return false;
    ShowMessage(QStringLiteral("Internal Error: Index out of date!\rReBuildMainIndex has to be "
                               "used!"));
    return true;
}

QString TImportTable::BuildSortString(const QString &koordinate, const QString &achse,
                                      const QString &nummer)
{
    if (koordinate.isEmpty()) return QString();
    const QString rest = koordinate.mid(1);
    const int dot = rest.indexOf(QLatin1Char('.'));
    QString sort = koordinate.left(1);
    sort += padZero(dot < 0 ? rest : rest.left(dot), 3);
    sort += dot < 0 ? QStringLiteral("0000")
                    : padZero(LExtractWord(2, koordinate, TCharSet("."), ewSingleDelim), 4);
    sort += IsInteger(nummer) ? padZero(nummer.trimmed(), 3) : QStringLiteral("000");
    sort += IsInteger(achse) ? achse.trimmed() : QStringLiteral("0");
    return sort;
}

std::string TImportTable::searchKey(const QString &koordinate, const QString &second) const
{
    // The number (or axis) is padded and checked by the sort-string builder itself, the
    // same way as the row keys were made.
    char k[64];
    char s[32];
    size_t kLen = 0;
    size_t sLen = 0;
    if (importdetail::toAscii(koordinate, k, sizeof k, kLen) &&
        importdetail::toAscii(second, s, sizeof s, sLen)) {
        return m_colNummer >= 0 ? importdetail::sortKey(k, kLen, "", 0, s, sLen)
                                : importdetail::sortKey(k, kLen, s, sLen, "", 0);
    }
    const QByteArray kUtf8 = koordinate.toUtf8();
    const QByteArray sUtf8 = second.toUtf8();
    const size_t kn = size_t(kUtf8.size());
    const size_t sn = size_t(sUtf8.size());
    return m_colNummer >= 0
               ? importdetail::sortKey(kUtf8.constData(), kn, "", 0, sUtf8.constData(), sn)
               : importdetail::sortKey(kUtf8.constData(), kn, sUtf8.constData(), sn, "", 0);
}

int TImportTable::FindParam(const QString &koordinate, const QString &second) const
{
    if (koordinate.isEmpty() || m_rowCount == 0 || indexOutOfDate()) return -1;
    const std::string key = searchKey(koordinate, second);
    const bool anyNumber = m_colNummer >= 0 && second.trimmed().isEmpty();
    if (!anyNumber) {
        const auto it = std::lower_bound(m_sortedKeys.begin(), m_sortedKeys.end(), key);
        if (it == m_sortedKeys.end() || *it != key) return -1;
        return int(it - m_sortedKeys.begin());
    }
    // The three number digits are read as "000", so rows of every number match.
    const auto masked = [](std::string s) {
        for (size_t i = 8; i < 11 && i < s.size(); ++i)
            s[i] = '0';
        return s;
    };
    const auto it = std::lower_bound(
        m_sortedKeys.begin(), m_sortedKeys.end(), key,
        [&masked](const std::string &a, const std::string &k) { return masked(a) < k; });
    if (it == m_sortedKeys.end() || masked(*it) != key) return -1;
    return int(it - m_sortedKeys.begin());
}

int TImportTable::FindParAxUnknown(const QString &koordinate, const QString &axis) const
{
    if (!IsKoordinate(koordinate)) return -1;
    const int p = FindParam(koordinate, axis);
    if (p >= 0) return p;
    if (IsInteger(axis) && axis.trimmed() != QLatin1String("0"))
        return FindParam(koordinate, QString());
    if (isDesigningTable()) return FindParam(koordinate, QStringLiteral("1"));
    return -1;
}

int TImportTable::FindGruppe(const QString &letter, const QString &axis) const
{
    Q_UNUSED(axis)
    if (letter.size() != 1 || m_rowCount == 0 || indexOutOfDate()) return -1;
    const std::string g = letter.toUpper().toStdString();
    // The first row of the group, so callers can walk it forward.
    const auto it = std::lower_bound(
        m_sortedKeys.begin(), m_sortedKeys.end(), g,
        [](const std::string &a, const std::string &k) { return a.compare(0, 1, k) < 0; });
    if (it == m_sortedKeys.end() || it->compare(0, 1, g) != 0) return -1;
    return int(it - m_sortedKeys.begin());
}

} // namespace drivewiz
