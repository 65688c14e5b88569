#ifndef DRIVEWIZ_PARAMTABLE_PARA_IMPORT_H
#define DRIVEWIZ_PARAMTABLE_PARA_IMPORT_H

#include "drivewiz_global.h"
#include "util/Divers.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <cstdlib>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace drivewiz {

namespace importdetail {
class CellStore;
class CsvLineReader;
class KeyIndex;
class MergeLookup;
class SortKeyText;
} // namespace importdetail

/// An in-memory CSV table of text cells (parameter descriptions, selection lists, group
/// files) with a main index: the rows ordered by a sort string built from each row's
/// coordinate, element, number and axis. Every lookup by coordinate goes through it.
///
/// Row arguments of the accessors are positions in the main index, except for
/// GetCSVString() and ExportAll(), which use file order. Column titles are kept in lower
/// case; the last column is the sort-string column titled "par".
///
/// Failures are shown through the dialog service with the drive tool's German texts;
/// nothing is thrown. Cells are stored compactly (UTF-8 text in shared blocks, 16-bit cell
/// ends per row), so a table of 100,000 rows takes less memory than twice its file.
class DRIVEWIZ_EXPORT TImportTable
{
public:
    TImportTable();
    virtual ~TImportTable();
    TImportTable(const TImportTable &) = delete;
    TImportTable &operator=(const TImportTable &) = delete;

    // --- loading --------------------------------------------------------------------
    /// Replaces the contents with one CSV file (title line first, "," or ";").
    bool ImportTable(const QString &fileName);
    /// Merges a further file with the same columns: rows whose coordinate (and number or
    /// axis) the table already holds are skipped, so the first file read wins; so are
    /// repeats within the new file. The index is rebuilt once, at the end, so the merge
    /// takes linear time and lets no events run in between. An empty table just reads it.
    bool AddCSVFile(const QString &fileName);
    /// Empties the table (titles included).
    void Clear();

    /// Sets the delimiter from a title line: ";" if it holds one, else ",". A line with
    /// both shows a message and is then read with ";".
    void CheckCSVdelim(const QString &titleLine);
    /// Sets up the columns from a title line; returns the number of CSV columns.
    int InitColumnArray(const QString &titleLine);
    /// Kept for callers that size the table first; rows are stored in chunks that grow
    /// as rows come, so there is nothing to reserve.
    void SetColumnArrayLength(int rows);

    /// Appends a CSV line (blank lines are ignored). False when no delimiter is known yet.
    bool AddRow(const QString &line);
    /// Appends a CSV line and puts it into the main index where it belongs, without
    /// sorting the table again; returns its position in the index, or -1.
    int AppendRowIndexed(const QString &line);
    /// Writes a CSV line into row `row` (file order); a row beyond the end is appended.
    bool InsertRow(const QString &line, int row, const TCharSet &delimiters);
    /// Overwrites row `row` (file order) with a CSV line.
    void UpdateRow(const QString &line, int row);
    /// Inserts a CSV line before row `row` (file order); the main index must be rebuilt.
    void InsertNewRow(const QString &line, int row);
    /// Sorts the main index by the sort strings.
    void ReBuildMainIndex();
    /// False once a key cell ("Koordinate", "Achse", "Nummer") changed: positions still
    /// name the same rows, but the order is stale until ReBuildMainIndex().
    bool MainIndexValid() const { return mainIndexValid(); }

    /// The sort string of a row: letter, number (3 digits), element (4), `nummer` (3) and
    /// axis; e.g. "B33.7" with axis "2" gives "B03300070002".
    static QString BuildSortString(const QString &koordinate, const QString &achse,
                                   const QString &nummer);

    // --- columns --------------------------------------------------------------------
    /// The column number of a title (case-insensitive), or -1 with a message box.
    int ColNoByName(const QString &title) const;
    /// Like ColNoByName, answering whether the column exists (and showing the same box).
    bool ColumnExists(const QString &title) const;
    /// Silent test for a column, for optional columns.
    bool HasColumn(const QString &title) const;
    /// The column number of a title, or -1, without a message.
    int FindColumn(const QString &title) const;
    /// CSV columns plus the sort-string column.
    int ColCount() const { return int(m_titles.size()); }
    /// The lower-case titles, the sort-string column "par" last.
    const QStringList &ColTitles() const { return m_titles; }
    int RowCount() const { return m_rowCount; }
    /// The delimiter of the table: ',' or ';' (NUL before anything was loaded).
    char Delimiter() const { return m_delimiter; }

    // --- cells by position in the main index ---------------------------------------
    /// The cell, or "?" when the column or the position does not exist.
    QString ValueByColName(int p, const QString &title) const;
    /// Writes a cell; bad positions are ignored.
    void SetValueByColName(int p, const QString &title, const QString &value);
    /// The cell of an optional column: empty, without a message, when the column or the
    /// position does not exist.
    QString Cell(int p, const QString &title) const;
    /// Writes a cell of an optional column; a missing column or position is ignored.
    void SetCell(int p, const QString &title, const QString &value);
    /// Reads several columns of one row at once (empty for missing ones): one column
    /// look-up per title, for callers that read whole rows.
    QStringList Cells(int p, std::initializer_list<const char *> titles) const;
    /// The cell at a position and column number; empty when either is out of range.
    QString CellAt(int p, int column) const;
    /// The same as UTF-8 bytes, without a copy where the table can: the bytes may refer
    /// to the table's storage and are valid until the table changes.
    QByteArray CellUtf8At(int p, int column) const;
    void SetCellAt(int p, int column, const QString &value);
    /// Row number (file order) of a position in the main index, or -1.
    int RowOfPosition(int p) const;
    /// Changes whenever a cell or the rows change (a cell written with the text it holds
    /// is no change), and differs between tables: who keeps what was read from the cells
    /// can keep it while this stays the same.
    quint64 CellRevision() const;

    // --- lookups --------------------------------------------------------------------
    /// Position of a coordinate in the main index, or -1. `second` is the axis, or the
    /// number when the table has a "Nummer" column (blank: any number).
    int FindParam(const QString &koordinate, const QString &second) const;
    /// FindParam for a coordinate whose axis may not be listed: retries without axis.
    int FindParAxUnknown(const QString &koordinate, const QString &axis) const;
    /// A position of some row of a parameter group (one letter), or -1.
    int FindGruppe(const QString &letter, const QString &axis) const;

    // --- accessors by position ------------------------------------------------------
    QString fGetSortFullKoord(int p) const;
    QString fGetGruppe(int p) const;
    QString fGetParam(int p) const;
    QString GetPureKoordinate(int p) const { return fGetParam(p); }
    QString fGetElement(int p) const;
    QString GetOrgElement(int p) const { return fGetElement(p); }
    QString fGetAchse(int p) const;
    QString GetAchse(int p) const { return fGetAchse(p); }
    QString fGetKoord(int p) const;
    QString GetOrgKoordinate(int p) const { return fGetKoord(p); }
    QString fGetParamName(int p) const;
    bool IstArrayPar(int p) const;
    bool IstRecordPar(int p) const;
    int GetArrayElementCount(int p) const;
    QString fGetAchsenListe(int p) const;
    QString GetRTFFileName(int p, const QString &suffix) const;

    // --- export ---------------------------------------------------------------------
    /// One CSV line of a file-order row with the given columns, in the given order.
    QString GetCSVString(int row, const QStringList &columnTitles) const;
    /// Writes every row in file order; each cell as "cell"; and ";" as delimiter.
    bool ExportAll(const QString &fileName) const;
    /// The same with a choice: titles (tExp_ColTitles, or only them: tExp_ColTitlesOnly),
    /// all rows (tExp_AllRecords) or the visible ones (tExp_OnlyVisibleRecs), and whether
    /// the file is overwritten (tExp_rewrite) or appended to.
    bool ExportAll(const QString &fileName, TExportCsvOptionsType options) const;

protected:
    /// The file-order rows an export with tExp_OnlyVisibleRecs writes: every row here.
    virtual std::vector<int> visibleRowsForExport() const;
    /// True while the owning component is edited in a form designer.
    virtual bool isDesigningTable() const { return false; }

    int nameColumn() const { return m_colName; }
    int koordinateColumn() const { return m_colKoordinate; }
    int achseColumn() const { return m_colAchse; }
    int nummerColumn() const { return m_colNummer; }
    bool mainIndexValid() const;

private:
    struct ParseReport;
    struct SourceFile;
    bool openSource(const QString &fileName, SourceFile &source) const;
    bool loadLines(SourceFile &source, const QString &fileName, bool merge);
    bool appendLine(const importdetail::CsvLineReader &lines, bool cp1252, ParseReport &report,
                    const importdetail::SortKeyText *madeKey);
    void updateSortKey(int row);
    void setRowKey(int row, const char *k, size_t kLen, const char *a, size_t aLen,
                   const char *n, size_t nLen);
    int rowAt(int p) const;
    int searchColumn(const QString &title) const;
    QString cell(int row, int column) const;
    void setCell(int row, int column, const QString &value);
    bool indexOutOfDate() const;
    void ensureRows(int rows);
    void reportParse(const ParseReport &report, const QString &fileName) const;
    bool checkMergeTitles(const QString &title, const QString &fileName);
    bool mergeLineIsNew(const importdetail::CsvLineReader &lines, bool cp1252,
                        importdetail::MergeLookup &known, importdetail::SortKeyText &key) const;
    int findAnyNumber(const char *key, size_t len) const;
    std::pair<int, int> keyWidths(int row) const;

    QStringList m_titles;                                           // lower case, "par" last
    std::vector<std::pair<QString, int>> m_sortedTitles;            // trimmed titles, sorted
    mutable QHash<QString, int> m_columnCache;                      // title as asked -> column
    mutable std::unordered_map<const char *, int> m_literalColumns; // literal title -> column
    std::unique_ptr<importdetail::CellStore> m_cells; // the cells of every row
    std::unique_ptr<importdetail::KeyIndex> m_index;  // sort strings and the main index
    int m_rowCount = 0;
    int m_csvColumns = 0;
    int m_colName = -1;
    int m_colKoordinate = -1;
    int m_colAchse = -1;
    int m_colNummer = -1;
    char m_delimiter = 0;
};

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_PARA_IMPORT_H
