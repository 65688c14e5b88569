// Reading the description and selection files into the simulated drive's catalogue.

#include "SimulatedDrive_p.h"

#include "paramtable/coordinates.h"
#include "paramtable/para_import.h"
#include "platform/textcodec.h"
#include "util/Divers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace drivewiz::sim {

namespace {

int columnOf(const TImportTable &table, const char *title)
{
    const QStringList &titles = table.ColTitles();
    for (int c = 0; c + 1 < titles.size(); ++c) // the last column is the table's sort key
        if (titles.at(c).trimmed() == QLatin1String(title)) return c;
    return -1;
}

// The import table keeps its titles in lower case; the drive serves them as the file
// writes them, so it reads the title line once more. Any doubt keeps the lower case.
QStringList titlesAsWritten(const QString &file, const TImportTable &table)
{
    QStringList lower = table.ColTitles();
    lower.removeLast();
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly)) return lower;
    const QString line = decodeText(f.readLine()).trimmed();
    const TCharSet delims{QString(QLatin1Char(table.Delimiter()))};
    QStringList titles;
    for (int c = 0; c < lower.size(); ++c) {
        titles << ExtractCSVWord(c + 1, line, delims);
        if (titles.last().toLower().trimmed() != lower.at(c).trimmed()) return lower;
    }
    return titles;
}

QStringList rowCells(const TImportTable &table, int p, int columns)
{
    QStringList cells;
    cells.reserve(columns);
    for (int c = 0; c < columns; ++c)
        cells << table.CellAt(p, c);
    return cells;
}

// "01084000h", "0x01084000", "$1084000": 1 to 8 hex digits, not 0.
quint32 hexAddress(const QString &cell)
{
    static const QRegularExpression re(QStringLiteral("^(?:0x|\\$)?([0-9A-F]{1,8})H?$"),
                                       QRegularExpression::CaseInsensitiveOption);
    const auto match = re.match(cell.trimmed());
    return match.hasMatch() ? match.captured(1).toUInt(nullptr, 16) : 0u;
}

int axisOf(const QString &cell)
{
    bool ok = false;
    const int axis = cell.trimmed().toInt(&ok);
    return ok ? axis : 0;
}

void setColumns(const TImportTable &table, SimCatalogue &cat)
{
    cat.wertColumn = columnOf(table, "wert");
    cat.nameColumn = columnOf(table, "name");
    cat.unitColumn = columnOf(table, "einheit");
    cat.ugwColumn = columnOf(table, "ugw");
    cat.ogwColumn = columnOf(table, "ogw");
    cat.defaultColumn = columnOf(table, "defaultwert");
    cat.decimalsColumn = columnOf(table, "nachkommastellen");
}

void readParams(const TImportTable &table, SimCatalogue &cat)
{
    const int columns = int(cat.titles.size());
    const int koordCol = columnOf(table, "koordinate");
    const int achseCol = columnOf(table, "achse");
    const int ussCol = columnOf(table, "uss-adresse /hex");
    for (int p = 0; p < table.RowCount(); ++p) {
        SimParam param;
        param.cells = rowCells(table, p, columns);
        param.koordinate = param.cells.at(koordCol).trimmed().toUpper();
        param.axis = achseCol >= 0 ? axisOf(param.cells.at(achseCol)) : 0;
        quint32 address = ussCol >= 0 ? hexAddress(param.cells.at(ussCol)) : 0u;
        if (address == 0) address = koordinateAddress(param.koordinate, param.axis);
        if (address == 0) continue;
        param.value = cat.cell(param, cat.wertColumn);
        if (param.value.isEmpty()) param.value = cat.cell(param, cat.defaultColumn);
        param.live = liveKindOf(param.koordinate, &param.channel);
        cat.params.emplace(address, std::move(param));
    }
}

void readSelections(const QString &file, SimCatalogue &cat)
{
    if (file.isEmpty() || !QFileInfo::exists(file)) return;
    TImportTable table;
    if (!table.ImportTable(file)) return;
    const int koordCol = columnOf(table, "koordinate");
    const int wertCol = columnOf(table, "wert");
    const int textCol = columnOf(table, "text");
    if (koordCol < 0) return;
    const QStringList titles = titlesAsWritten(file, table);
    const QChar delimiter = QLatin1Char(table.Delimiter());
    cat.selectionTitle = csvLine(titles, delimiter);
    // The main index orders the entries by coordinate and entry number.
    for (int p = 0; p < table.RowCount(); ++p) {
        const QStringList cells = rowCells(table, p, int(titles.size()));
        SimSelection &sel = cat.selections[cells.at(koordCol).trimmed().toUpper()];
        sel.lines << csvLine(cells, delimiter);
        bool ok = false;
        const int key = wertCol >= 0 ? cells.at(wertCol).trimmed().toInt(&ok) : 0;
        if (ok && textCol >= 0) sel.texts.emplace(key, cells.at(textCol).trimmed());
    }
}

} // namespace

quint32 koordinateAddress(const QString &koordinate, int axis)
{
    // Checked here first: GetQ7Addresse reports a bad coordinate in a message box.
    static const QRegularExpression re(QStringLiteral("^[A-Z][0-9]{1,4}(\\.[0-9]{1,5})?$"));
    const QString k = koordinate.trimmed().toUpper();
    if (axis < 0 || axis > 4 || !re.match(k).hasMatch()) return 0;
    return GetQ7Addresse(k, axis);
}

bool loadCatalogue(const QString &descriptionFile, const QString &selectionFile, SimCatalogue &cat)
{
    TImportTable table;
    if (!table.ImportTable(descriptionFile)) return false;
    if (columnOf(table, "koordinate") < 0) return false;
    cat.titles = titlesAsWritten(descriptionFile, table);
    cat.delimiter = QLatin1Char(table.Delimiter());
    setColumns(table, cat);
    readParams(table, cat);
    const QString selections =
        selectionFile.isEmpty()
            ? QFileInfo(descriptionFile).dir().filePath(QStringLiteral("Auswahlen.csv"))
            : selectionFile;
    readSelections(selections, cat);
    return true;
}

} // namespace drivewiz::sim
