// Reading CSV files into the import table: one pass over the UTF-8 bytes, cells copied
// into the shared buffer, sort strings built on the way.

#include "paramtable/para_import.h"

#include "paramtable/coordinates.h"
#include "paramtable/para_import_index_p.h"
#include "paramtable/para_import_p.h"
#include "paramtable/para_import_store_p.h"
#include "platform/dialogs.h"
#include "platform/textcodec.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cstring>

namespace drivewiz {

namespace {

// Rows with up to this many columns are read with buffers on the stack.
constexpr int kMaxFastColumns = 256;

} // namespace

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

bool TImportTable::appendLine(const importdetail::CsvLineReader &lines, bool cp1252,
                              ParseReport &report, const importdetail::SortKeyText *madeKey)
{
    // Windows-1252 bytes may grow to three UTF-8 bytes each.
    const size_t len = lines.length();
    char *out = m_cells->rowBuffer((cp1252 ? 3 * len : len) + importdetail::kCopySlack);
    if (!out) {
        report.tooLarge = true;
        return false;
    }
    quint32 starts[kMaxFastColumns + 1];
    std::vector<quint32> manyStarts;
    quint32 *s = starts;
    if (m_csvColumns > kMaxFastColumns) {
        manyStarts.resize(size_t(m_csvColumns) + 1);
        s = manyStarts.data();
    }
    bool unterminated = false;
    lines.copyFields(cp1252, out, s, size_t(m_csvColumns), unterminated);
    if (unterminated && report.unterminatedQuotes++ == 0)
        report.firstUnterminatedLine = report.line;
    // The key is made from the copied cells before they are handed to the store.
    const auto cellAt = [&](int column, const char *&text) -> size_t {
        text = column < 0 ? "" : out + s[column];
        return column < 0 ? 0 : s[column + 1] - s[column];
    };
    const char *k, *a, *n;
    const size_t kLen = cellAt(m_colKoordinate, k);
    const size_t aLen = cellAt(m_colAchse, a);
    const size_t nLen = cellAt(m_colNummer, n);
    importdetail::SortKeyText built;
    if (kLen > 0 && !madeKey) built.build(k, kLen, a, aLen, n, nLen);
    const importdetail::SortKeyText &key = madeKey ? *madeKey : built;
    if (kLen > 0 && !key.plainCoordinate() && !importdetail::isKoordinateBytes(k, kLen) &&
        report.badCoordinates++ < 5)
        report.badCoordinateSamples << QString::number(report.line) + QStringLiteral(": ") +
                                           utf8Text(k, qsizetype(kLen)).left(40);
    m_index->appendKey(key.data(), key.size());
    m_cells->appendRow(s);
    ++m_rowCount;
    return true;
}

void TImportTable::ensureRows(int rows)
{
    if (rows <= m_rowCount) return;
    m_cells->resizeRows(size_t(rows));
    m_index->resize(size_t(rows));
    m_rowCount = rows;
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
    importdetail::CsvLineReader lines(source.data, source.size);
    if (!lines.next() || isBlank(lines.line(), lines.length())) {
        ShowMessage(QStringLiteral("FEHLER: Datei \"") + fileName +
                    QStringLiteral("\" ist leer oder hat keine Titelzeile!"));
        if (!merge) Clear();
        return false;
    }
    const QByteArray titleBytes = QByteArray::fromRawData(lines.line(), qsizetype(lines.length()));
    const QString title =
        source.cp1252 ? decodeWindows1252(titleBytes) : utf8Text(titleBytes);
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
    lines.setDelimiter(m_delimiter);
    if (merge && !m_index->valid()) ReBuildMainIndex();
    importdetail::MergeLookup known(*m_index);
    // The key a merge looks a line up by is the row's sort string as well, unless the table
    // has both a number and an axis column.
    importdetail::SortKeyText mergeKey;
    const bool sameKey = m_colNummer < 0 || m_colAchse < 0;
    const int firstNew = m_rowCount;
    while (lines.next()) {
        ++report.line;
        const char *line = lines.line();
        const size_t len = lines.length();
        if (isBlank(line, len)) continue;
        if (merge && !mergeLineIsNew(lines, source.cp1252, known, mergeKey)) continue;
        if (!appendLine(lines, source.cp1252, report, merge && sameKey ? &mergeKey : nullptr))
            break;
        if (merge) known.add(size_t(m_rowCount - 1));
    }
    if (merge)
        m_index->addRows(size_t(firstNew));
    else
        ReBuildMainIndex();
    reportParse(report, fileName);
    return true;
}

// The merge keeps the first file's rows: a line whose coordinate and second key (number,
// else axis) the table holds already is dropped, and so is a repeat within the new file.
// Looking the key up among the old rows' sorted keys and the new rows' keys gives the
// same answer as a lookup after every appended line, without rebuilding the index.
bool TImportTable::mergeLineIsNew(const importdetail::CsvLineReader &lines, bool cp1252,
                                  importdetail::MergeLookup &known,
                                  importdetail::SortKeyText &key) const
{
    key.clear();
    const char *line = lines.line();
    // Only the fields up to the coordinate and the second key are needed.
    const int secondColumn = m_colNummer >= 0 ? m_colNummer : m_colAchse;
    const size_t wanted =
        std::min(size_t(std::max(m_colKoordinate, secondColumn) + 1), size_t(m_csvColumns));
    std::array<importdetail::FieldSpan, 8> fields; // coordinates come early in a line
    std::vector<importdetail::FieldSpan> many;
    importdetail::FieldSpan *f = fields.data();
    if (wanted > fields.size()) {
        many.resize(wanted);
        f = many.data();
    }
    bool unterminated = false;
    const size_t found = lines.scanFields(f, wanted, unterminated);
    const auto text = [&](int column) {
        if (column < 0 || size_t(column) >= found) return QByteArray();
        const char *begin = line + f[column].begin;
        const size_t n = f[column].end - f[column].begin;
        if (cp1252 && std::any_of(begin, begin + n,
                                  [](char c) { return static_cast<unsigned char>(c) >= 0x80; }))
            return windows1252ToUtf8(begin, qsizetype(n));
        return QByteArray::fromRawData(begin, qsizetype(n));
    };
    const QByteArray k = text(m_colKoordinate);
    if (k.isEmpty()) return true; // no coordinate: a lookup finds nothing, so the line is appended
    QByteArray second = text(secondColumn);
    const bool digits = !second.isEmpty() && second.size() <= 9 &&
                        std::all_of(second.cbegin(), second.cend(),
                                    [](char c) { return c >= '0' && c <= '9'; });
    if (!digits && !importdetail::isIntegerBytes(second.constData(), size_t(second.size())))
        second = QByteArrayLiteral("0");
    if (m_colNummer >= 0)
        key.build(k.constData(), size_t(k.size()), "", 0, second.constData(), size_t(second.size()));
    else
        key.build(k.constData(), size_t(k.size()), second.constData(), size_t(second.size()), "", 0);
    return !known.contains(key.data(), key.size());
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
    m_index->addRows(size_t(before));
    const int row = m_rowCount - 1;
    for (size_t p = m_index->positions(); p-- > 0;) {
        if (m_index->rowAt(int(p)) == row) return int(p);
    }
    return -1;
}

bool TImportTable::InsertRow(const QString &line, int row, const TCharSet &delimiters)
{
    if (row < 0 || m_csvColumns == 0) return false;
    if (row >= m_rowCount) {
        if (line.trimmed().isEmpty()) return true;
        row = m_rowCount;
        ensureRows(row + 1);
    }
    // Cells come from ExtractCSVWord itself, so any delimiter set works here.
    std::vector<QByteArray> cells;
    cells.reserve(size_t(m_csvColumns));
    for (int c = 0; c < m_csvColumns; ++c)
        cells.push_back(ExtractCSVWord(c + 1, line, delimiters).toUtf8());
    m_cells->setRow(size_t(row), cells);
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
    m_cells->insertRow(size_t(row));
    m_index->insertRow(size_t(row));
    ++m_rowCount;
    InsertRow(line, row, TCharSet(QString(QLatin1Char(m_delimiter ? m_delimiter : ';'))));
}

} // namespace drivewiz
