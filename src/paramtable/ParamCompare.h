#ifndef DRIVEWIZ_PARAMTABLE_PARAMCOMPARE_H
#define DRIVEWIZ_PARAMTABLE_PARAMCOMPARE_H

#include "paramtable/ParamSet.h"

#include <QAbstractTableModel>
#include <QPointer>
#include <QSortFilterProxyModel>

namespace drivewiz {

class ParamUndoStack;
class TParaTable;

/// Two parameter sets side by side, as a table model: "this" side (usually the table's
/// values) and the "other" side (a file, the drive, the defaults, the values at
/// opening). One row per parameter of either side, in the order of this side, then the
/// other side's parameters this side lacks.
///
/// Columns: coordinate (with the tick box), name, this value, other value, unit. Rows
/// whose values differ start ticked; rows missing on one side or not read cannot be
/// ticked. Apply writes the ticked rows' values through the table's normal write path
/// as one undo step.
///
/// A view puts a ParamCompareFilter between the model and itself for the "only
/// differences" filter and the search field, and shows counts() (signal countsChanged).
class DRIVEWIZ_EXPORT ParamCompare : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { ColKoordinate, ColName, ColThis, ColOther, ColUnit, ColumnCount };
    enum class State { Same, Different, MissingHere, MissingThere, NotRead };
    Q_ENUM(State)
    enum Role {
        StateRole = Qt::UserRole + 1, ///< State as int
        KeyRole,                      ///< ParamKey
        SearchRole,                   ///< the row's texts joined, lower case
    };
    /// Which side's value Apply writes: the other side's into the table (a file, the
    /// defaults), or this side's (values edited offline, to be written to the drive).
    enum class ApplySide { Other, This };

    struct Row
    {
        ParamKey key;
        QString name;
        QString thisValue;
        QString otherValue;
        QString unit;
        State state = State::Same;
        bool ticked = false;
    };

    struct Counts
    {
        int rows = 0;
        int same = 0;
        int different = 0;
        int missingHere = 0;
        int missingThere = 0;
        int notRead = 0;
        int ticked = 0;
    };

    /// `table` gives the language of captions and placeholders (German without one).
    explicit ParamCompare(const TParaTable *table = nullptr, QObject *parent = nullptr);

    /// Compares two sets; the model is reset.
    void compare(const ParamSet &mine, const ParamSet &other);
    const ParamSet &thisSet() const { return m_this; }
    const ParamSet &otherSet() const { return m_other; }
    /// Captions of the two value columns (default: the language strings "this value",
    /// "other value"), e.g. "Table" and "Drive".
    void setSideCaptions(const QString &thisCaption, const QString &otherCaption);

    const Row &row(int i) const { return m_rows.at(i); }
    const QVector<Row> &rows() const { return m_rows; }
    Counts counts() const { return m_counts; }
    bool isTickable(int row) const;
    void setTicked(int row, bool ticked);
    /// Ticks or unticks every tickable row (or those of `rows`, model rows).
    void setAllTicked(bool ticked);
    QList<int> tickedRows() const;

    /// Both sets name a drive family and the families differ: the caller asks before
    /// anything else happens.
    bool familyMismatch() const;
    static bool familyMismatch(const ParamSet &a, const ParamSet &b);

    /// Writes the ticked rows' values (of `side`) into the table through its normal write
    /// path, each checked and limited as a typed value is, as one step of `undo` (when
    /// given). Rows whose parameter the table does not know are listed as unknown, not
    /// written. The model is updated to what was written.
    ApplyResult apply(TParaTable &table, ParamUndoStack *undo = nullptr,
                      ApplySide side = ApplySide::Other);

    // --- QAbstractTableModel -----------------------------------------------------------
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

Q_SIGNALS:
    void countsChanged();

private:
    void recount();
    QString valueText(const Row &r, bool thisSide) const;

    QPointer<const TParaTable> m_table;
    ParamSet m_this;
    ParamSet m_other;
    QVector<Row> m_rows;
    Counts m_counts;
    QString m_thisCaption;
    QString m_otherCaption;
    QString m_missing;
    QString m_notRead;
};

/// The filter between a ParamCompare and its view: "only differences" (hides the rows
/// whose values are the same; on by default) and a search text matched against the
/// coordinate, the name and both values, case-insensitive.
class DRIVEWIZ_EXPORT ParamCompareFilter : public QSortFilterProxyModel
{
    Q_OBJECT
    Q_PROPERTY(bool onlyDifferences READ onlyDifferences WRITE setOnlyDifferences)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText)

public:
    explicit ParamCompareFilter(QObject *parent = nullptr);

    bool onlyDifferences() const { return m_onlyDifferences; }
    void setOnlyDifferences(bool only);
    QString searchText() const { return m_search; }
    void setSearchText(const QString &text);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;

private:
    bool m_onlyDifferences = true;
    QString m_search; // lower case
};

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_PARAMCOMPARE_H
