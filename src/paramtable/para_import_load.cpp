// Reading CSV files into the import table: one pass over the UTF-8 bytes, cells copied
// into the shared buffer, sort strings built on the way.

#include "paramtable/para_import.h"

#include "paramtable/coordinates.h"
#include "paramtable/para_import_p.h"
#include "platform/dialogs.h"
#include "platform/textcodec.h"

#include <QElapsedTimer>
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

namespace {

constexpr size_t kMaxBuffer = 0x7FFFFFFFu; // offsets keep their top bit as a flag

// Splits a buffer into lines: CR, LF and CR LF all end a line. The next CR and LF are
// remembered, so each byte is searched once even in files with only CR line ends.
class LineSplitter
{
public:
    LineSplitter(const char *data, size_t size)
        : m_data(data), m_size(size), m_nextLf(find('\n', 0)), m_nextCr(find('\r', 0))
    {
    }

    bool next(const char *&line, size_t &len)
    {
        if (m_pos >= m_size)
            return false;
        if (m_nextLf < m_pos)
            m_nextLf = find('\n', m_pos);
        if (m_nextCr < m_pos)
            m_nextCr = find('\r', m_pos);
        const size_t end = std::min(m_nextLf, m_nextCr);
        line = m_data + m_pos;
        len = end - m_pos;
        m_pos = end + 1;
        if (end < m_size && m_data[end] == '\r' && m_pos < m_size && m_data[m_pos] == '\n')
            ++m_pos;
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
        if (c > ' ')
            return false;
    }
    return true;
}

} // namespace

bool TImportTable::readFile(const QString &fileName, QByteArray &utf8) const
{
    const QFileInfo info(fileName);
    if (!info.exists()) {
        ShowMessage(QStringLiteral("Datei \"") + fileName + QStringLiteral("\" existiert nicht!"));
        return false;
    }
    QFile file(fileName);
    if (info.isDir() || !file.open(QIODevice::ReadOnly)) {
        ShowMessage(QStringLiteral("FEHLER: Datei ") + fileName +
                    QStringLiteral(" konnte nicht geöffnet werden!"));
        return false;
    }
    QByteArray bytes = file.readAll();
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    // Windows tools write Windows-1252; anything that is valid UTF-8 is read as UTF-8.
    utf8 = isValidUtf8(bytes.constData(), bytes.size()) ? std::move(bytes)
                                                         : decodeText(bytes).toUtf8();
    return true;
}

void TImportTable::storeRowUtf8(int row, const char *line, size_t len, char delimiter,
                                ParseReport &report)
{
    const size_t stride = size_t(m_csvColumns) + 1;
    if (m_buffer.size() + len >= kMaxBuffer) {
        report.tooLarge = true;
        return;
    }
    importdetail::FieldSpan spans[256];
    std::vector<importdetail::FieldSpan> many;
    importdetail::FieldSpan *fields = spans;
    if (size_t(m_csvColumns) > std::size(spans)) {
        many.resize(size_t(m_csvColumns));
        fields = many.data();
    }
    bool unterminated = false;
    const size_t found = importdetail::scanCsvFields(line, len, delimiter, fields,
                                                     size_t(m_csvColumns), unterminated);
    if (unterminated && report.unterminatedQuotes++ == 0)
        report.firstUnterminatedLine = report.line;
    // The cells of a row are never longer than the line: size the buffer once, copy, trim.
    const size_t base = m_buffer.size();
    m_buffer.resize(base + len);
    char *out = m_buffer.data() + base;
    size_t written = 0;
    quint32 *offsets = m_offsets.data() + size_t(row) * stride;
    for (size_t c = 0; c < size_t(m_csvColumns); ++c) {
        offsets[c] = quint32(base + written);
        if (c < found) {
            const size_t n = fields[c].end - fields[c].begin;
            std::memcpy(out + written, line + fields[c].begin, n);
            written += n;
        }
    }
    offsets[m_csvColumns] = quint32(base + written);
    m_buffer.resize(base + written);
    const auto span = [&](int column) {
        return column >= 0 && size_t(column) < found ? fields[column] : importdetail::FieldSpan();
    };
    const auto k = span(m_colKoordinate), a = span(m_colAchse), n = span(m_colNummer);
    const size_t kLen = k.end - k.begin;
    m_rowKeys[size_t(row)] =
        m_colKoordinate < 0 || kLen == 0
            ? std::string()
            : importdetail::sortKey(line + k.begin, kLen, line + a.begin, a.end - a.begin,
                                    line + n.begin, n.end - n.begin);
    if (kLen > 0 && !importdetail::isKoordinateBytes(line + k.begin, kLen) &&
        report.badCoordinates++ < 5)
        report.badCoordinateSamples << QString::number(report.line) + QStringLiteral(": ") +
                                           QString::fromUtf8(line + k.begin, qsizetype(kLen)).left(40);
}

void TImportTable::ensureRows(int rows)
{
    const size_t stride = size_t(m_csvColumns) + 1;
    if (size_t(rows) * stride > m_offsets.size())
        m_offsets.resize(size_t(rows) * stride, quint32(m_buffer.size()));
    if (size_t(rows) > m_rowKeys.size())
        m_rowKeys.resize(size_t(rows));
    m_rowCount = std::max(m_rowCount, rows);
}

void TImportTable::appendRowUtf8(const char *line, size_t len, char delimiter,
                                 ParseReport &report)
{
    ensureRows(m_rowCount + 1);
    storeRowUtf8(m_rowCount - 1, line, len, delimiter, report);
}

bool TImportTable::ImportTable(const QString &fileName)
{
    Clear();
    QByteArray utf8;
    if (!readFile(fileName, utf8))
        return false;
    return loadLines(utf8, fileName, false);
}

bool TImportTable::AddCSVFile(const QString &fileName)
{
    // Nothing to merge with yet: the file is simply read.
    if (m_titles.isEmpty())
        return ImportTable(fileName);
    QByteArray utf8;
    if (!readFile(fileName, utf8))
        return false;
    return loadLines(utf8, fileName, true);
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

bool TImportTable::loadLines(const QByteArray &bytes, const QString &fileName, bool merge)
{
    ParseReport report;
    QByteArray utf8 = bytes;
    if (utf8.contains('\0')) {
        report.nulBytes = true;
        utf8.replace('\0', QByteArray());
    }
    const char *data = utf8.constData();
    const size_t size = size_t(utf8.size());
    LineSplitter lines(data, size);
    const char *line = nullptr;
    size_t len = 0;
    if (!lines.next(line, len) || isBlank(line, len)) {
        ShowMessage(QStringLiteral("FEHLER: Datei \"") + fileName +
                    QStringLiteral("\" ist leer oder hat keine Titelzeile!"));
        if (!merge)
            Clear();
        return false;
    }
    const QString title = QString::fromUtf8(line, qsizetype(len));
    report.line = 1;
    if (merge) {
        if (!checkMergeTitles(title, fileName))
            return false;
    } else {
        InitColumnArray(title);
        if (m_colKoordinate < 0)
            ShowMessage(QStringLiteral("Warnung: In \"") + fileName +
                        QStringLiteral("\" fehlt die Spalte \"Koordinate\"; Parameter können "
                                       "darin nicht gesucht werden."));
        SetColumnArrayLength(int(std::count(data + lines.position(), data + size, '\n')) + 1);
    }
    m_buffer.reserve(m_buffer.size() + size);
    std::unordered_set<std::string> known;
    if (merge)
        known.insert(m_rowKeys.begin(), m_rowKeys.end());
    const size_t stride = size_t(m_csvColumns) + 1;
    while (lines.next(line, len) && !report.tooLarge) {
        ++report.line;
        if (isBlank(line, len))
            continue;
        if (merge && !mergeLineIsNew(line, len, known))
            continue;
        appendRowUtf8(line, len, m_delimiter, report);
        if (report.tooLarge) {
            m_rowCount -= 1;
            m_offsets.resize(size_t(m_rowCount) * stride);
            m_rowKeys.resize(size_t(m_rowCount));
        } else if (merge) {
            known.insert(m_rowKeys[size_t(m_rowCount - 1)]);
        }
    }
    ReBuildMainIndex();
    reportParse(report, fileName);
    return true;
}

// The merge keeps the first file's rows: a line whose coordinate and second key (number,
// else axis) the table holds already is dropped, and so is a repeat within the new file.
// A hash of the keys gives the same answer as a lookup after every appended line.
bool TImportTable::mergeLineIsNew(const char *line, size_t len,
                                  std::unordered_set<std::string> &known) const
{
    importdetail::FieldSpan fields[256];
    std::vector<importdetail::FieldSpan> many;
    importdetail::FieldSpan *f = fields;
    if (size_t(m_csvColumns) > std::size(fields)) {
        many.resize(size_t(m_csvColumns));
        f = many.data();
    }
    bool unterminated = false;
    const size_t found = importdetail::scanCsvFields(line, len, m_delimiter, f,
                                                     size_t(m_csvColumns), unterminated);
    const auto span = [&](int column) {
        return column >= 0 && size_t(column) < found ? f[column] : importdetail::FieldSpan();
    };
    const auto k = span(m_colKoordinate);
    if (k.end == k.begin)
        return true; // no coordinate: a lookup finds nothing, so the line is appended
    const auto second = span(m_colNummer >= 0 ? m_colNummer : m_colAchse);
    const char *s = line + second.begin;
    size_t sLen = second.end - second.begin;
    if (!importdetail::isIntegerBytes(s, sLen)) {
        s = "0";
        sLen = 1;
    }
    const bool byNumber = m_colNummer >= 0;
    const std::string key = importdetail::sortKey(line + k.begin, k.end - k.begin,
                                                  byNumber ? "" : s, byNumber ? 0 : sLen,
                                                  byNumber ? s : "", byNumber ? sLen : 0);
    return known.count(key) == 0;
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
                    QStringLiteral(" ist zu groß; ab Zeile ") + QString::number(report.line) +
                    QStringLiteral(" wurde nichts mehr eingelesen."));
}

bool TImportTable::AddRow(const QString &line)
{
    if (m_delimiter == 0) {
        ShowMessage(QStringLiteral("\"AddRow\" nicht möglich; Delim unbekannt!"));
        return false;
    }
    if (line.trimmed().isEmpty())
        return true;
    return InsertRow(line, m_rowCount, TCharSet(QString(QLatin1Char(m_delimiter))));
}

bool TImportTable::InsertRow(const QString &line, int row, const TCharSet &delimiters)
{
    if (row < 0 || m_csvColumns == 0)
        return false;
    if (row >= m_rowCount) {
        if (line.trimmed().isEmpty())
            return true;
        row = m_rowCount;
        ensureRows(row + 1);
    }
    // Cells come from ExtractCSVWord itself, so any delimiter set works here.
    const size_t stride = size_t(m_csvColumns) + 1;
    for (int c = 0; c < m_csvColumns; ++c)
        m_overrides.erase((quint64(quint32(row)) << 32) | quint32(c));
    quint32 *offsets = m_offsets.data() + size_t(row) * stride;
    for (int c = 0; c < m_csvColumns; ++c) {
        offsets[c] = quint32(m_buffer.size());
        m_buffer += ExtractCSVWord(c + 1, line, delimiters).toStdString();
    }
    offsets[m_csvColumns] = quint32(m_buffer.size());
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
    if (m_csvColumns == 0)
        return;
    row = std::clamp(row, 0, m_rowCount);
    const size_t stride = size_t(m_csvColumns) + 1;
    m_offsets.insert(m_offsets.begin() + std::ptrdiff_t(size_t(row) * stride), stride,
                     quint32(m_buffer.size()));
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
