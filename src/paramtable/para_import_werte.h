#ifndef DRIVEWIZ_PARAMTABLE_PARA_IMPORT_WERTE_H
#define DRIVEWIZ_PARAMTABLE_PARA_IMPORT_WERTE_H

#include "paramtable/para_import.h"

#include <functional>
#include <set>

namespace drivewiz {

/// An import table with a row filter: which parameters a list or a search shows, by group
/// letter, read level, a list of hidden parameters, element display rules and a small
/// filter expression such as `(Datentyp=i16) or (Datentyp=u16)`.
///
/// The filter expression is read left to right with no precedence: each term is either a
/// parenthesised `title op value` or, without parentheses, the whole rest of the
/// expression; `op` is `=` (wildcard match, `*` and `?`) or `<`, `<=`, `>`, `>=`
/// (plain text order, so "9" > "10"). Terms are joined by `and` / `or`; cells and values
/// are compared trimmed and in lower case.
///
/// Accessors taking `i` address the visible rows (the list rebuilt by
/// GetVisibleParamCount()); `orgValueByColName` takes a position in the main index.
class DRIVEWIZ_EXPORT TWerteTable : public TImportTable
{
public:
    /// Called for every row that passed all other tests; may clear `Accepted`.
    using TOnFilterRecordEvent = std::function<void(int Id_org, bool &Accepted)>;

    TWerteTable();

    void SetFilter(const QString &filter);
    QString Filter() const { return m_filter; }
    /// Rows with a "Read-Level" above this are hidden; 99 or more shows every level.
    void SetLevelFilter(int level) { m_levelFilter = level; }
    int LevelFilter() const { return m_levelFilter; }
    /// Coordinates separated by "," or ";": every axis and element of them is hidden.
    void SetHiddenParamFilter(const QString &list);
    /// Stores the flag and sets both element display modes: true shows every element,
    /// false only element 0 of arrays and records.
    void SetShowElements(bool show);
    bool ShowElements() const { return m_showElements; }
    /// One group letter, or empty for all groups.
    void SetGroupFilter(const QString &letter) { m_groupFilter = letter.trimmed().toUpper(); }
    QString GroupFilter() const { return m_groupFilter; }

    /// 0 shows every element, 1 only the row whose coordinate holds ".0", 2 none.
    int ArrayDisplayMode = 0;
    int RecordDisplayMode = 0;
    /// When set, further axes of an accepted parameter are skipped.
    bool OneAxis = false;
    TOnFilterRecordEvent OnFilterRecord;

    /// Whether the row at a main-index position passes the filters.
    bool RowAccepted(int position);
    /// Rebuilds the visible list and returns its length.
    int GetVisibleParamCount();
    /// The visible list: main-index positions of the accepted rows.
    const std::vector<int> &VisibleRows() const { return m_visible; }

    QString Koordinate(int i) const;
    QString Achse(int i) const;
    QString Element(int i) const;
    QString GetParamName(int i) const;
    QString GetRTFFileName(int i, const QString &suffix) const;
    QString ValueByColName(int i, const QString &title) const;
    void SetValueByColName(int i, const QString &title, const QString &value);
    QString orgValueByColName(int position, const QString &title) const;
    QString ValueByKoordinate(const QString &koordinate, const QString &axis,
                              const QString &title) const;
    QString GetAchsenListe(int i) const;
    int GetArrayElementCount(int i) const;
    /// Number of groups among the rows that pass every filter but the group filter.
    int GetAnzGruppen();
    /// The i-th of the groups GetAnzGruppen() found.
    QString GetGruppe(int i) const;

protected:
    /// The rows of the visible list, in its order.
    std::vector<int> visibleRowsForExport() const override;

private:
    struct Term
    {
        enum Op { None, Match, Less, LessEqual, Greater, GreaterEqual } op = None;
        enum Join { First, And, Or } join = First;
        QString title;
        QString value;
        int column = -1;
    };
    void parseFilter();
    void resolveFilterColumns();
    bool evaluateFilter(int position) const;
    bool termHolds(const Term &term, int position) const;
    int visibleAt(int i) const;

    bool m_showElements = false;
    QString m_filter;
    QString m_groupFilter;
    std::vector<int> m_visible;
    QString m_lastAccepted;
    int m_levelFilter = 99;
    std::set<QString> m_hidden;
    std::vector<QString> m_groups;
    std::vector<Term> m_terms;
    int m_levelColumn = -1;
    bool m_columnsResolved = false;
};

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_PARA_IMPORT_WERTE_H
