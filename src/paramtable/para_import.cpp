#include "paramtable/para_import.h"

#include "paramtable/coordinates.h"
#include "paramtable/para_import_index_p.h"
#include "paramtable/para_import_p.h"
#include "paramtable/para_import_store_p.h"
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

// Left-pads with '0' to the width; a longer text stays as it is.
QString padZero(const QString &s, int width)
{
    return s.size() >= width ? s : QString(width - s.size(), QLatin1Char('0')) + s;
}

} // namespace

TImportTable::TImportTable()
    : m_cells(std::make_unique<importdetail::CellStore>()),
      m_index(std::make_unique<importdetail::KeyIndex>())
{}

TImportTable::~TImportTable() = default;

void TImportTable::Clear()
{
    m_titles.clear();
    m_sortedTitles.clear();
    m_columnCache.clear();
    m_literalColumns.clear();
    m_cells->reset(0);
    m_index->clear();
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
    m_cells->reset(words);
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
    // Rows are stored in chunks that are added as rows come: nothing to size beforehand.
    Q_UNUSED(rows)
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
    return p >= m_rowCount ? -1 : m_index->rowAt(p);
}

int TImportTable::RowOfPosition(int p) const
{
    return rowAt(p);
}

QString TImportTable::cell(int row, int column) const
{
    if (row < 0 || row >= m_rowCount || column < 0) return QString();
    if (column == m_csvColumns) return QString::fromStdString(m_index->key(size_t(row)));
    return m_cells->text(size_t(row), column);
}

void TImportTable::setCell(int row, int column, const QString &value)
{
    if (row < 0 || row >= m_rowCount || column < 0 || column >= m_csvColumns) return;
    m_cells->setText(size_t(row), column, value);
    if (column == m_colKoordinate || column == m_colAchse || column == m_colNummer) {
        const std::string before = m_index->key(size_t(row));
        updateSortKey(row);
        // The row belongs elsewhere now, but positions callers hold stay valid until
        // ReBuildMainIndex; until then the index is stale and look-ups use the old keys.
        if (before != m_index->key(size_t(row))) m_index->invalidate();
    }
}

QString TImportTable::CellAt(int p, int column) const
{
    return cell(rowAt(p), column);
}

QByteArray TImportTable::CellUtf8At(int p, int column) const
{
    const int row = rowAt(p);
    if (row < 0 || row >= m_rowCount || column < 0) return QByteArray();
    if (column == m_csvColumns) return QByteArray::fromStdString(m_index->key(size_t(row)));
    return m_cells->utf8(size_t(row), column);
}

void TImportTable::SetCellAt(int p, int column, const QString &value)
{
    setCell(rowAt(p), column, value);
}

quint64 TImportTable::CellRevision() const
{
    return m_cells->revision();
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

void TImportTable::setRowKey(int row, const char *k, size_t kLen, const char *a, size_t aLen,
                             const char *n, size_t nLen)
{
    if (m_colKoordinate < 0 || kLen == 0) {
        m_index->setKey(size_t(row), "", 0);
        return;
    }
    const importdetail::SortKeyText key(k, kLen, a, aLen, n, nLen);
    m_index->setKey(size_t(row), key.data(), key.size());
}

void TImportTable::updateSortKey(int row)
{
    const auto raw = [this, row](int column) {
        return column < 0 ? QByteArray() : m_cells->utf8(size_t(row), column);
    };
    const QByteArray k = raw(m_colKoordinate);
    const QByteArray a = raw(m_colAchse);
    const QByteArray n = raw(m_colNummer);
    setRowKey(row, k.constData(), size_t(k.size()), a.constData(), size_t(a.size()),
              n.constData(), size_t(n.size()));
}

// --- main index and lookups -------------------------------------------------------------

bool TImportTable::mainIndexValid() const
{
    return m_index->valid();
}

void TImportTable::ReBuildMainIndex()
{
    m_index->rebuild();
}

bool TImportTable::indexOutOfDate() const
{
    if (m_index->positions() == size_t(m_rowCount)) return false;
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

namespace {

// The sort string a look-up searches for: the number (or axis) is padded and checked by the
// sort-string builder itself, the same way as the row keys were made.
void searchKey(importdetail::SortKeyText &key, const QString &koordinate, const QString &second,
               bool byNumber)
{
    char k[64];
    char s[32];
    size_t kLen = 0;
    size_t sLen = 0;
    if (importdetail::toAscii(koordinate, k, sizeof k, kLen) &&
        importdetail::toAscii(second, s, sizeof s, sLen)) {
        if (byNumber)
            key.build(k, kLen, "", 0, s, sLen);
        else
            key.build(k, kLen, s, sLen, "", 0);
        return;
    }
    const QByteArray kUtf8 = koordinate.toUtf8();
    const QByteArray sUtf8 = second.toUtf8();
    const size_t kn = size_t(kUtf8.size());
    const size_t sn = size_t(sUtf8.size());
    if (byNumber)
        key.build(kUtf8.constData(), kn, "", 0, sUtf8.constData(), sn);
    else
        key.build(kUtf8.constData(), kn, sUtf8.constData(), sn, "", 0);
}

bool isBlank(const QString &text)
{
    for (const QChar c : text) {
        if (!c.isSpace()) return false;
    }
    return true;
}

} // namespace

int TImportTable::FindParam(const QString &koordinate, const QString &second) const
{
    if (koordinate.isEmpty() || m_rowCount == 0 || indexOutOfDate()) return -1;
    const bool byNumber = m_colNummer >= 0;
    importdetail::SortKeyText key;
    searchKey(key, koordinate, second, byNumber);
    if (byNumber && isBlank(second)) return findAnyNumber(key.data(), key.size());
    return m_index->find(key.data(), key.size());
}

// A blank number finds the first row of the coordinate on the table's own axis, whatever
// its number. The number's digits are not at a fixed place in the sort string (numbers
// from 1000 and elements from 10000 take more digits), so the rows that start like the
// coordinate are compared with their number left out.
int TImportTable::findAnyNumber(const char *key, size_t len) const
{
    if (len < 4) return -1;
    const size_t prefix = len - 4; // the key ends in "000" (no number) and "0" (no axis)
    const std::string wanted(key, len);
    const std::vector<importdetail::SortKey> &sorted = m_index->sortedKeys();
    for (size_t p = m_index->lowerBound(key, prefix); p < sorted.size(); ++p) {
        const int row = m_index->rowAt(int(p));
        const std::string rowKey = m_index->key(size_t(row));
        if (rowKey.compare(0, prefix, wanted, 0, prefix) != 0) break;
        const QByteArray k = m_cells->utf8(size_t(row), m_colKoordinate);
        const QByteArray a = m_colAchse < 0 ? QByteArray() : m_cells->utf8(size_t(row), m_colAchse);
        const importdetail::SortKeyText withAxis(k.constData(), size_t(k.size()), a.constData(),
                                                 size_t(a.size()), "", 0);
        const importdetail::SortKeyText bare(k.constData(), size_t(k.size()), "", 0, "", 0);
        if (withAxis.str() == wanted && bare.str() == wanted) return int(p);
    }
    return -1;
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
    const QByteArray g = letter.toUpper().toUtf8();
    // The first row of the group, so callers can walk it forward.
    return g.size() == 1 ? m_index->findGroup(g.at(0)) : -1;
}

} // namespace drivewiz
