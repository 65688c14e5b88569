// The import table's accessors by position and its export.

#include "paramtable/para_import.h"

#include "platform/dialogs.h"
#include "platform/textcodec.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>

namespace drivewiz {

namespace {

// Files we write are read back by the drive tool: Windows-1252 where every character
// fits, else UTF-8. Decoding the result must give the text again.
QByteArray encodeForFile(const QString &text)
{
    const QByteArray cp1252 = encodeWindows1252(text);
    return decodeText(cp1252) == text ? cp1252 : encodeUtf8(text);
}

} // namespace

QString TImportTable::fGetSortFullKoord(int p) const
{
    const int row = rowAt(p);
    return row < 0 ? QString() : cell(row, m_csvColumns);
}

QString TImportTable::fGetGruppe(int p) const
{
    return fGetSortFullKoord(p).left(1);
}

// The widths of the number and element digits in a row's sort string: three and four, more
// for numbers from 1000 and elements from 10000 (read off the row's coordinate).
std::pair<int, int> TImportTable::keyWidths(int row) const
{
    const QString k = m_colKoordinate < 0 ? QString() : cell(row, m_colKoordinate).trimmed();
    const int dot = k.indexOf(QLatin1Char('.'), 1);
    const int number = dot < 0 ? int(k.size()) - 1 : dot - 1;
    const int element =
        dot < 0 ? 0 : int(LExtractWord(2, k, TCharSet("."), ewSingleDelim).size());
    return {std::max(number, 3), std::max(element, 4)};
}

QString TImportTable::fGetParam(int p) const
{
    const QString sort = fGetSortFullKoord(p);
    if (sort.isEmpty()) return QString();
    const QString number = sort.mid(1, keyWidths(rowAt(p)).first);
    return sort.left(1) + (number.startsWith(QLatin1Char('0')) ? number.mid(1) : number);
}

QString TImportTable::fGetElement(int p) const
{
    const auto [number, width] = keyWidths(rowAt(p));
    QString element = fGetSortFullKoord(p).mid(1 + number, width).trimmed();
    int zeros = 0;
    while (zeros < element.size() - 1 && element.at(zeros) == QLatin1Char('0'))
        ++zeros;
    return element.mid(zeros);
}

QString TImportTable::fGetAchse(int p) const
{
    const QString sort = fGetSortFullKoord(p).trimmed();
    return sort.isEmpty() ? QString() : sort.right(1);
}

QString TImportTable::fGetKoord(int p) const
{
    return m_colKoordinate < 0 ? QString() : cell(rowAt(p), m_colKoordinate);
}

QString TImportTable::fGetParamName(int p) const
{
    if (m_colName < 0) {
        ShowMessage(QStringLiteral("? Kein Parametername gefunden ???\r\rTImportTable."
                                   "fGetParamName(") +
                    QString::number(p) + QStringLiteral(")"));
        return QString();
    }
    return cell(rowAt(p), m_colName);
}

bool TImportTable::IstArrayPar(int p) const
{
    if (rowAt(p) < 0 || !fGetKoord(p).contains(QLatin1Char('.'))) return false;
    return m_colName < 0 || !cell(rowAt(p), m_colName).contains(QChar(0x00A7));
}

bool TImportTable::IstRecordPar(int p) const
{
    if (rowAt(p) < 0 || m_colName < 0 || !fGetKoord(p).contains(QLatin1Char('.'))) return false;
    return cell(rowAt(p), m_colName).contains(QChar(0x00A7));
}

int TImportTable::GetArrayElementCount(int p) const
{
    if (!IstArrayPar(p)) return 0;
    // Elements from 10000 on sort among the shorter ones (the sort string compares as
    // text), so the count comes from the largest element met, not from the last row.
    const QString param = fGetParam(p);
    int largest = fGetElement(p).toInt();
    for (int q = p + 1; q < m_rowCount && fGetParam(q) == param; ++q)
        largest = std::max(largest, fGetElement(q).toInt());
    return largest + 1;
}

QString TImportTable::fGetAchsenListe(int p) const
{
    if (rowAt(p) < 0) return QString();
    const QString koord = fGetKoord(p);
    int first = p;
    while (first > 0 && fGetKoord(first - 1) == koord)
        --first;
    QStringList axes;
    for (int i = first; i < m_rowCount && fGetKoord(i) == koord; ++i)
        axes << fGetAchse(i);
    const QString list = axes.join(QLatin1Char(','));
    return list == QLatin1String("1,2,3,4") ? QStringLiteral("1-4") : list;
}

QString TImportTable::GetRTFFileName(int p, const QString &suffix) const
{
    QString name = fGetParam(p);
    const QString element = fGetElement(p);
    if ((IstArrayPar(p) || IstRecordPar(p)) && !element.isEmpty())
        name += QLatin1Char('-') + element;
    return name + suffix + QStringLiteral(".rtf");
}

QString TImportTable::GetCSVString(int row, const QStringList &columnTitles) const
{
    if (row < 0 || row >= m_rowCount) {
        ShowMessage(QStringLiteral("GetCSVString: RecNo exceeds permitted range!\r"));
        return QString();
    }
    const QChar delimiter = m_delimiter == ';' ? QLatin1Char(';') : QLatin1Char(',');
    QStringList cells;
    for (const QString &title : columnTitles)
        cells << cell(row, ColNoByName(title));
    return cells.join(delimiter);
}

bool TImportTable::ExportAll(const QString &fileName) const
{
    return ExportAll(fileName, {tExp_ColTitles, tExp_AllRecords, tExp_rewrite});
}

std::vector<int> TImportTable::visibleRowsForExport() const
{
    std::vector<int> rows(static_cast<size_t>(m_rowCount));
    for (int r = 0; r < m_rowCount; ++r)
        rows[size_t(r)] = r;
    return rows;
}

bool TImportTable::ExportAll(const QString &fileName, TExportCsvOptionsType options) const
{
    const auto quoted = [](const QString &text) {
        return QLatin1Char('"') + text + QStringLiteral("\";");
    };
    QString out;
    if (options.contains(tExp_ColTitles) || options.contains(tExp_ColTitlesOnly)) {
        for (int c = 0; c < m_csvColumns; ++c)
            out += quoted(m_titles.at(c));
        out += QStringLiteral("\r\n");
    }
    std::vector<int> rows;
    if (options.contains(tExp_ColTitlesOnly))
        rows.clear();
    else if (options.contains(tExp_OnlyVisibleRecs))
        rows = visibleRowsForExport();
    else if (options.contains(tExp_AllRecords))
        rows = TImportTable::visibleRowsForExport();
    for (const int r : rows) {
        for (int c = 0; c < m_csvColumns; ++c)
            out += quoted(cell(r, c));
        out += QStringLiteral("\r\n");
    }
    const QByteArray bytes = encodeForFile(out);
    bool written = false;
    if (options.contains(tExp_rewrite)) {
        QSaveFile file(fileName);
        written =
            file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    } else {
        QFile file(fileName);
        written = file.open(QIODevice::WriteOnly | QIODevice::Append) &&
                  file.write(bytes) == bytes.size();
    }
    if (!written)
        ShowMessage(QStringLiteral("FEHLER: Datei ") + fileName +
                    QStringLiteral(" konnte nicht geschrieben werden!"));
    return written;
}

} // namespace drivewiz
