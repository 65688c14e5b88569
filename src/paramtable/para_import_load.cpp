// Reading CSV files into the import table: one pass over the UTF-8 bytes, cells copied
// into the shared buffer, sort strings built on the way.

#include "paramtable/para_import.h"

#include "paramtable/coordinates.h"
#include "paramtable/para_import_p.h"
#include "platform/dialogs.h"
#include "platform/textcodec.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstring>
#include <unordered_set>

namespace drivewiz {

// What went wrong while reading one file; reported once per file, not per line.
struct TImportTable::ParseReport
{
    int unterminatedQuotes = 0;
    int firstUnterminatedLine = 0;
    int badCoordinates = 0;
    QStringList badCoordinateSamples;
    bool nulBytes = false;
    bool tooLarge = false;
    int line = 0; // current line number (title = 1)
};

// Keys seen during a merge: the table's rows before it (sorted), and the rows it appended,
// kept as row numbers in an open-addressing hash over the table's own keys.
struct TImportTable::MergeKeys
{
    MergeKeys(const std::vector<std::string> &sorted, const std::vector<std::string> &rowKeys)
        : old(sorted), keys(rowKeys)
    {}

    bool containsAdded(const std::string &key) const
    {
        if (slots.empty()) return false;
        for (size_t i = hash(key) & mask;; i = (i + 1) & mask) {
            if (slots[i] < 0) return false;
            if (keys[size_t(slots[i])] == key) return true;
        }
    }

    void add(int row)
    {
        if ((count + 1) * 2 > slots.size()) grow();
        size_t i = hash(keys[size_t(row)]) & mask;
        while (slots[i] >= 0)
            i = (i + 1) & mask;
        slots[i] = row;
        ++count;
    }

    importdetail::SortedKeyCursor old;

private:
    static size_t hash(const std::string &key) { return std::hash<std::string>()(key); }

    void grow()
    {
        std::vector<int> previous = std::move(slots);
        slots.assign(std::max<size_t>(1024, previous.size() * 2), -1);
        mask = slots.size() - 1;
        count = 0;
        for (const int row : previous) {
            if (row >= 0) add(row);
        }
    }

    const std::vector<std::string> &keys;
    std::vector<int> slots;
    size_t mask = 0;
    size_t count = 0;
};

// The bytes of a file being read: mapped where possible, copied only to drop NUL bytes.
struct TImportTable::SourceFile
{
    QFile file;
    QByteArray owned;
    const char *data = nullptr;
    size_t size = 0;
    bool cp1252 = false; // not valid UTF-8: read as Windows-1252
    bool nulBytes = false;
};

namespace {

// Splits a buffer into lines: CR, LF and CR LF all end a line. The next CR and LF are
// remembered, so each byte is searched once even in files with only CR line ends.
class LineSplitter
{
public:
    LineSplitter(const char *data, size_t size)
        : m_data(data), m_size(size), m_nextLf(find('\n', 0)), m_nextCr(find('\r', 0))
    {}

    bool next(const char *&line, size_t &len)
    {
        if (m_pos >= m_size) return false;
        if (m_nextLf < m_pos) m_nextLf = find('\n', m_pos);
        if (m_nextCr < m_pos) m_nextCr = find('\r', m_pos);
        const size_t end = std::min(m_nextLf, m_nextCr);
        line = m_data + m_pos;
        len = end - m_pos;
        m_pos = end + 1;
        if (end < m_size && m_data[end] == '\r' && m_pos < m_size && m_data[m_pos] == '\n') ++m_pos;
        return true;
    }

    size_t position() const { return m_pos; }

private:
    size_t find(char c, size_t from) const
    {
        const void *hit = std::memchr(m_data + from, c, m_size - from);
        return hit ? size_t(static_cast<const char *>(hit) - m_data) : m_size;
    }

    const char *m_data;
    size_t m_size;
    size_t m_pos = 0;
    size_t m_nextLf;
    size_t m_nextCr;
};

bool isBlank(const char *line, size_t len)
{
    for (size_t i = 0; i < len; ++i) {
        const unsigned char c = static_cast<unsigned char>(line[i]);
        if (c > ' ') return false;
    }
    return true;
}

} // namespace

bool TImportTable::openSource(const QString &fileName, SourceFile &source) const
{
    const QFileInfo info(fileName);
    if (!info.exists()) {
        ShowMessage(QStringLiteral("Datei \"") + fileName + QStringLiteral("\" existiert nicht!"));
        return false;
    }
    source.file.setFileName(fileName);
    if (info.isDir() || !source.file.open(QIODevice::ReadOnly)) {
        ShowMessage(QStringLiteral("FEHLER: Datei ") + fileName +
                    QStringLiteral(" konnte nicht geöffnet werden!"));
        return false;
    }
    const qint64 size = source.file.size();
    const uchar *mapped = size > 0 ? source.file.map(0, size) : nullptr;
    if (mapped) {
        source.data = reinterpret_cast<const char *>(mapped);
        source.size = size_t(size);
    } else {
        source.owned = source.file.readAll(); // pipes, special files
        source.data = source.owned.constData();
        source.size = size_t(source.owned.size());
    }
    if (std::memchr(source.data, 0, source.size)) {
        source.owned = QByteArray(source.data, qsizetype(source.size));
        source.owned.replace('\0', QByteArray());
        source.data = source.owned.constData();
        source.size = size_t(source.owned.size());
        source.nulBytes = true;
    }
    if (source.size >= 3 && std::memcmp(source.data, "\xEF\xBB\xBF", 3) == 0) {
        source.data += 3;
        source.size -= 3;
    }
    // Windows tools write Windows-1252; anything that is valid UTF-8 is read as UTF-8.
    source.cp1252 = !isValidUtf8(source.data, qsizetype(source.size));
    return true;
}

bool TImportTable::storeRow(int row, const char *line, size_t len, bool cp1252, ParseReport &report)
{
    // Windows-1252 bytes may grow to three UTF-8 bytes each.
    char *out = reserveText((cp1252 ? 3 * len : len) + 8);
    if (!out) {
        report.tooLarge = true;
        return false;
    }
    const size_t stride = size_t(m_csvColumns) + 1;
    quint32 *offsets = m_offsets.data() + size_t(row) * stride;
    bool unterminated = false;
    const auto copy = cp1252 ? importdetail::copyCsvFields1252 : importdetail::copyCsvFields;
    m_textSize += copy(line, len, m_delimiter, out, quint32(m_textSize), offsets,
                       size_t(m_csvColumns), unterminated);
    if (unterminated && report.unterminatedQuotes++ == 0)
        report.firstUnterminatedLine = report.line;
    const auto cellAt = [&](int column, const char *&text) -> size_t {
        text = column < 0 ? "" : m_text.get() + offsets[column];
        return column < 0 ? 0 : offsets[column + 1] - offsets[column];
    };
    const char *k, *a, *n;
    const size_t kLen = cellAt(m_colKoordinate, k);
    const size_t aLen = cellAt(m_colAchse, a);
    const size_t nLen = cellAt(m_colNummer, n);
    if (kLen == 0) {
        m_rowKeys[size_t(row)].clear();
        return true;
    }
    m_rowKeys[size_t(row)] = importdetail::sortKey(k, kLen, a, aLen, n, nLen);
    if (!importdetail::isKoordinateBytes(k, kLen) && report.badCoordinates++ < 5)
        report.badCoordinateSamples << QString::number(report.line) + QStringLiteral(": ") +
                                           QString::fromUtf8(k, qsizetype(kLen)).left(40);
    return true;
}

// Row storage grows in steps (or up to what SetColumnArrayLength reserved), so appending a
// row is cheap; trimRows() cuts the slack.
void TImportTable::ensureRows(int rows)
{
    if (size_t(rows) > m_rowKeys.size()) {
        const size_t stride = size_t(m_csvColumns) + 1;
        const size_t grown = size_t(rows) <= m_rowKeys.capacity()
                                 ? m_rowKeys.capacity()
                                 : std::max(size_t(rows), m_rowKeys.size() * 3 / 2);
        m_offsets.resize(grown * stride, quint32(m_textSize));
        m_rowKeys.resize(grown);
    }
    m_rowCount = std::max(m_rowCount, rows);
}

void TImportTable::trimRows()
{
    m_offsets.resize(size_t(m_rowCount) * (size_t(m_csvColumns) + 1));
    m_rowKeys.resize(size_t(m_rowCount));
}

bool TImportTable::ImportTable(const QString &fileName)
{
    Clear();
    SourceFile source;
    if (!openSource(fileName, source)) return false;
    return loadLines(source, fileName, false);
}

bool TImportTable::AddCSVFile(const QString &fileName)
{
    // Nothing to merge with yet: the file is simply read.
    if (m_titles.isEmpty()) return ImportTable(fileName);
    SourceFile source;
    if (!openSource(fileName, source)) return false;
    return loadLines(source, fileName, true);
}

bool TImportTable::checkMergeTitles(const QString &title, const QString &fileName)
{
    CheckCSVdelim(title);
    const TCharSet delims{QString(QLatin1Char(m_delimiter))};
    const int n = LWordCount(title, delims, ewSingleDelim);
    if (ColCount() != n + 1) {
        ShowMessage(QStringLiteral("FEHLER: Spaltenanzahl in \"\r") + fileName +
                    QStringLiteral("\r") + QStringLiteral("\" stimmt ") +
                    QStringLiteral("mit der zuvor importierten Datei nicht überein!") +
                    QStringLiteral("\r") + QStringLiteral("Erwartet: ") +
                    QString::number(ColCount()) + QStringLiteral("\r") +
                    QStringLiteral("Aktuelle Datei: ") + QString::number(n));
        return false;
    }
    for (int i = 0; i < n; ++i) {
        if (ExtractCSVWord(i + 1, title, delims).toLower() != m_titles.at(i)) {
            ShowMessage(QStringLiteral("FEHLER: Spaltenreihenfolge in \"") + fileName +
                        QStringLiteral("\" stimmt ") +
                        QStringLiteral("mit der zuvor importierten Datei nicht überein!"));
            return false;
        }
    }
    return true;
}

bool TImportTable::loadLines(SourceFile &source, const QString &fileName, bool merge)
{
    ParseReport report;
    report.nulBytes = source.nulBytes;
    LineSplitter lines(source.data, source.size);
    const char *line = nullptr;
    size_t len = 0;
    if (!lines.next(line, len) || isBlank(line, len)) {
        ShowMessage(QStringLiteral("FEHLER: Datei \"") + fileName +
                    QStringLiteral("\" ist leer oder hat keine Titelzeile!"));
        if (!merge) Clear();
        return false;
    }
    const QByteArray titleBytes = QByteArray::fromRawData(line, qsizetype(len));
    const QString title =
        source.cp1252 ? decodeWindows1252(titleBytes) : QString::fromUtf8(titleBytes);
    report.line = 1;
    if (merge) {
        if (!checkMergeTitles(title, fileName)) return false;
    } else {
        InitColumnArray(title);
        if (m_colKoordinate < 0)
            ShowMessage(QStringLiteral("Warnung: In \"") + fileName +
                        QStringLiteral("\" fehlt die Spalte \"Koordinate\"; Parameter können "
                                       "darin nicht gesucht werden."));
    }
    // Room for the rows (estimated from the title line's length) and for their text.
    const size_t perLine = std::max<size_t>(len / 2, 16);
    SetColumnArrayLength(m_rowCount + int(std::min<size_t>(source.size / perLine + 16, 1u << 26)));
    reserveText(source.size + source.size / 16);
    if (merge && !m_indexValid) ReBuildMainIndex();
    MergeKeys known(m_sortedKeys, m_rowKeys);
    const int firstNew = m_rowCount;
    while (lines.next(line, len)) {
        ++report.line;
        if (isBlank(line, len)) continue;
        if (merge && !mergeLineIsNew(line, len, source.cp1252, known)) continue;
        ensureRows(m_rowCount + 1);
        if (!storeRow(m_rowCount - 1, line, len, source.cp1252, report)) {
            --m_rowCount;
            break;
        }
        if (merge) known.add(m_rowCount - 1);
    }
    trimRows();
    shrinkText();
    if (merge)
        mergeIntoIndex(firstNew);
    else
        ReBuildMainIndex();
    reportParse(report, fileName);
    return true;
}

// The merge keeps the first file's rows: a line whose coordinate and second key (number,
// else axis) the table holds already is dropped, and so is a repeat within the new file.
// Looking the key up among the old rows' sorted keys and the new rows' keys gives the
// same answer as a lookup after every appended line, without rebuilding the index.
bool TImportTable::mergeLineIsNew(const char *line, size_t len, bool cp1252, MergeKeys &known) const
{
    importdetail::FieldSpan fields[256];
    std::vector<importdetail::FieldSpan> many;
    importdetail::FieldSpan *f = fields;
    if (size_t(m_csvColumns) > std::size(fields)) {
        many.resize(size_t(m_csvColumns));
        f = many.data();
    }
    // Only the fields up to the coordinate and the second key are needed.
    const int secondColumn = m_colNummer >= 0 ? m_colNummer : m_colAchse;
    const size_t wanted = size_t(std::max(m_colKoordinate, secondColumn) + 1);
    bool unterminated = false;
    const size_t found = importdetail::scanCsvFields(
        line, len, m_delimiter, f, std::min(wanted, size_t(m_csvColumns)), unterminated);
    const auto text = [&](int column) {
        if (column < 0 || size_t(column) >= found) return std::string();
        const char *begin = line + f[column].begin;
        const size_t n = f[column].end - f[column].begin;
        const bool ascii = std::all_of(begin, begin + n,
                                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
        if (cp1252 && !ascii) {
            const QByteArray utf8 = windows1252ToUtf8(begin, qsizetype(n));
            return std::string(utf8.constData(), size_t(utf8.size()));
        }
        return std::string(begin, n);
    };
    const std::string k = text(m_colKoordinate);
    if (k.empty()) return true; // no coordinate: a lookup finds nothing, so the line is appended
    std::string second = text(secondColumn);
    if (!importdetail::isIntegerBytes(second.data(), second.size())) second = "0";
    const bool byNumber = m_colNummer >= 0;
    const std::string key =
        byNumber ? importdetail::sortKey(k.data(), k.size(), "", 0, second.data(), second.size())
                 : importdetail::sortKey(k.data(), k.size(), second.data(), second.size(), "", 0);
    return !known.old.contains(key) && !known.containsAdded(key);
}

void TImportTable::reportParse(const ParseReport &report, const QString &fileName) const
{
    const QString name = QStringLiteral("\"") + fileName + QStringLiteral("\"");
    if (report.nulBytes)
        ShowMessage(QStringLiteral("Warnung: ") + name +
                    QStringLiteral(" enthält NUL-Zeichen; sie wurden entfernt."));
    if (report.unterminatedQuotes > 0)
        ShowMessage(QStringLiteral("Warnung: In ") + name + QStringLiteral(" ist in ") +
                    QString::number(report.unterminatedQuotes) +
                    QStringLiteral(" Zeile(n) ein Anführungszeichen nicht geschlossen (zuerst "
                                   "in Zeile ") +
                    QString::number(report.firstUnterminatedLine) +
                    QStringLiteral("); das Feld reicht bis zum Zeilenende."));
    if (report.badCoordinates > 0)
        ShowMessage(QStringLiteral("Warnung: In ") + name + QStringLiteral(" stehen ") +
                    QString::number(report.badCoordinates) +
                    QStringLiteral(" ungültige Koordinaten (Zeile: Koordinate):\r") +
                    report.badCoordinateSamples.join(QLatin1Char('\r')));
    if (report.tooLarge)
        ShowMessage(QStringLiteral("FEHLER: ") + name +
                    QStringLiteral(" ist zu groß (über 2 GB Text) und wurde nicht eingelesen."));
}

bool TImportTable::AddRow(const QString &line)
{
    if (m_delimiter == 0) {
        ShowMessage(QStringLiteral("\"AddRow\" nicht möglich; Delim unbekannt!"));
        return false;
    }
    if (line.trimmed().isEmpty()) return true;
    return InsertRow(line, m_rowCount, TCharSet(QString(QLatin1Char(m_delimiter))));
}

int TImportTable::AppendRowIndexed(const QString &line)
{
    const int before = m_rowCount;
    if (!AddRow(line) || m_rowCount == before) return -1;
    const int row = m_rowCount - 1;
    if (!m_indexValid || m_mainIndex.size() != size_t(row)) {
        ReBuildMainIndex();
    } else {
        // Behind the rows with an equal key: file order among equals, as a rebuild keeps it.
        const auto at =
            std::upper_bound(m_sortedKeys.begin(), m_sortedKeys.end(), m_rowKeys[size_t(row)]);
        const auto pos = at - m_sortedKeys.begin();
        m_sortedKeys.insert(at, m_rowKeys[size_t(row)]);
        m_mainIndex.insert(m_mainIndex.begin() + pos, row);
    }
    const auto it = std::find(m_mainIndex.begin(), m_mainIndex.end(), row);
    return int(it - m_mainIndex.begin());
}

bool TImportTable::InsertRow(const QString &line, int row, const TCharSet &delimiters)
{
    if (row < 0 || m_csvColumns == 0) return false;
    if (row >= m_rowCount) {
        if (line.trimmed().isEmpty()) return true;
        row = m_rowCount;
        ensureRows(row + 1);
        trimRows();
    }
    // Cells come from ExtractCSVWord itself, so any delimiter set works here.
    const size_t stride = size_t(m_csvColumns) + 1;
    for (int c = 0; c < m_csvColumns; ++c)
        m_overrides.erase((quint64(quint32(row)) << 32) | quint32(c));
    quint32 *offsets = m_offsets.data() + size_t(row) * stride;
    for (int c = 0; c < m_csvColumns; ++c) {
        const QByteArray cellText = ExtractCSVWord(c + 1, line, delimiters).toUtf8();
        offsets[c] = quint32(m_textSize);
        appendText(cellText.constData(), size_t(cellText.size()));
    }
    offsets[m_csvColumns] = quint32(m_textSize);
    updateSortKey(row);
    return true;
}

void TImportTable::UpdateRow(const QString &line, int row)
{
    if (row >= 0 && row < m_rowCount)
        InsertRow(line, row, TCharSet(QString(QLatin1Char(m_delimiter ? m_delimiter : ';'))));
}

void TImportTable::InsertNewRow(const QString &line, int row)
{
    if (m_csvColumns == 0) return;
    row = std::clamp(row, 0, m_rowCount);
    const size_t stride = size_t(m_csvColumns) + 1;
    m_offsets.insert(m_offsets.begin() + std::ptrdiff_t(size_t(row) * stride), stride,
                     quint32(m_textSize));
    m_rowKeys.insert(m_rowKeys.begin() + row, std::string());
    ++m_rowCount;
    // Overwritten cells are keyed by row: move those behind the new row down by one.
    std::unordered_map<quint64, QString> moved;
    for (auto &[key, value] : m_overrides) {
        const quint64 r = key >> 32;
        moved[r >= quint64(row) ? key + (quint64(1) << 32) : key] = std::move(value);
    }
    m_overrides = std::move(moved);
    InsertRow(line, row, TCharSet(QString(QLatin1Char(m_delimiter ? m_delimiter : ';'))));
    m_indexValid = false;
}

} // namespace drivewiz
