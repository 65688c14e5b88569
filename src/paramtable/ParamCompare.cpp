// Two parameter sets side by side, and writing the ticked rows.

#include "paramtable/ParamCompare.h"

#include "paramtable/ParaTable.h"
#include "paramtable/ParamTexts.h"
#include "paramtable/ParamUndo.h"
#include "platform/convert.h"
#include "util/Divers.h"

namespace drivewiz {

namespace {

// "1.5" and "1.50" are the same value; texts compare as they are, but for blanks
// around them.
bool sameValue(const QString &a, const QString &b)
{
    if (a == b) return true;
    const QString ta = a.trimmed(), tb = b.trimmed();
    if (ta == tb) return true;
    double x = 0, y = 0;
    return !ta.isEmpty() && !tb.isEmpty() && TryStrToFloat(TrimFloat(ta), x) &&
           TryStrToFloat(TrimFloat(tb), y) && x == y;
}

} // namespace

ParamCompare::ParamCompare(const TParaTable *table, QObject *parent)
    : QAbstractTableModel(parent), m_table(table)
{
    m_thisCaption = paramSetText(table, "ColThis");
    m_otherCaption = paramSetText(table, "ColOther");
    m_missing = paramSetText(table, "Missing");
    m_notRead = paramSetText(table, "NotRead");
}

void ParamCompare::setSideCaptions(const QString &thisCaption, const QString &otherCaption)
{
    m_thisCaption = thisCaption;
    m_otherCaption = otherCaption;
    Q_EMIT headerDataChanged(Qt::Horizontal, ColThis, ColOther);
}

void ParamCompare::compare(const ParamSet &mine, const ParamSet &other)
{
    beginResetModel();
    m_this = mine;
    m_other = other;
    m_rows.clear();
    m_rows.reserve(mine.size() + other.size());
    std::vector<bool> used(size_t(other.size()), false);
    for (const ParamSet::Entry &e : mine.entries()) {
        Row r{e.key, e.name, e.value, QString(), e.unit, State::MissingThere, false};
        const int i = other.indexOf(e.key);
        if (i >= 0) {
            const ParamSet::Entry &o = other.at(i);
            used[size_t(i)] = true;
            r.otherValue = o.value;
            if (r.name.isEmpty()) r.name = o.name;
            if (r.unit.isEmpty()) r.unit = o.unit;
            r.state = !e.read || !o.read                ? State::NotRead
                      : sameValue(e.value, o.value) ? State::Same
                                                    : State::Different;
        }
        r.ticked = r.state == State::Different;
        m_rows.append(std::move(r));
    }
    for (int i = 0; i < other.size(); ++i) {
        if (used[size_t(i)]) continue;
        const ParamSet::Entry &o = other.at(i);
        m_rows.append(Row{o.key, o.name, QString(), o.value, o.unit,
                          o.read ? State::MissingHere : State::NotRead, false});
    }
    recount();
    endResetModel();
    Q_EMIT countsChanged();
}

void ParamCompare::recount()
{
    Counts c;
    c.rows = int(m_rows.size());
    for (const Row &r : std::as_const(m_rows)) {
        switch (r.state) {
        case State::Same: ++c.same; break;
        case State::Different: ++c.different; break;
        case State::MissingHere: ++c.missingHere; break;
        case State::MissingThere: ++c.missingThere; break;
        case State::NotRead: ++c.notRead; break;
        }
        if (r.ticked) ++c.ticked;
    }
    m_counts = c;
}

bool ParamCompare::isTickable(int row) const
{
    if (row < 0 || row >= m_rows.size()) return false;
    const State s = m_rows.at(row).state;
    return s == State::Different || s == State::Same;
}

void ParamCompare::setTicked(int row, bool ticked)
{
    if (!isTickable(row) || m_rows.at(row).ticked == ticked) return;
    m_rows[row].ticked = ticked;
    m_counts.ticked += ticked ? 1 : -1;
    const QModelIndex i = index(row, ColKoordinate);
    Q_EMIT dataChanged(i, i, {Qt::CheckStateRole});
    Q_EMIT countsChanged();
}

void ParamCompare::setAllTicked(bool ticked)
{
    for (int i = 0; i < m_rows.size(); ++i) {
        if (isTickable(i)) m_rows[i].ticked = ticked && m_rows.at(i).state == State::Different;
    }
    recount();
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0, ColKoordinate), index(int(m_rows.size()) - 1, ColKoordinate),
                           {Qt::CheckStateRole});
    Q_EMIT countsChanged();
}

QList<int> ParamCompare::tickedRows() const
{
    QList<int> out;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).ticked) out << i;
    }
    return out;
}

bool ParamCompare::familyMismatch(const ParamSet &a, const ParamSet &b)
{
    const QString fa = a.meta().family.trimmed(), fb = b.meta().family.trimmed();
    return !fa.isEmpty() && !fb.isEmpty() && fa.compare(fb, Qt::CaseInsensitive) != 0;
}

bool ParamCompare::familyMismatch() const
{
    return familyMismatch(m_this, m_other);
}

ApplyResult ParamCompare::apply(TParaTable &table, ParamUndoStack *undo, ApplySide side)
{
    QList<ParamChange> changes;
    QList<int> rows;
    for (const int i : tickedRows()) {
        const Row &r = m_rows.at(i);
        changes << ParamChange{r.key, QString(), side == ApplySide::Other ? r.otherValue : r.thisValue};
        rows << i;
    }
    const QString text = paramSetText(&table, "StepApply", QString::number(changes.size()));
    QList<ParamChange> written;
    const ApplyResult result = undo ? undo->writeValues(changes, WriteOrigin::Apply, text, &written)
                                    : ParamUndoStack::writeChanges(table, changes, WriteOrigin::Apply,
                                                                   true, &written);
    QHash<ParamKey, QString> done;
    for (const ParamChange &c : std::as_const(written))
        done.insert(c.key, c.newValue);
    for (const int i : std::as_const(rows)) {
        Row &r = m_rows[i];
        const auto it = done.constFind(r.key);
        if (it == done.cend()) continue;
        (side == ApplySide::Other ? r.thisValue : r.otherValue) = *it;
        r.state = sameValue(r.thisValue, r.otherValue) ? State::Same : State::Different;
        r.ticked = false;
    }
    recount();
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(int(m_rows.size()) - 1, ColumnCount - 1));
    Q_EMIT countsChanged();
    return result;
}

// --- model ---------------------------------------------------------------------------------

int ParamCompare::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ParamCompare::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString ParamCompare::valueText(const Row &r, bool thisSide) const
{
    if (r.state == (thisSide ? State::MissingHere : State::MissingThere)) return m_missing;
    if (r.state == State::NotRead) {
        const ParamSet &set = thisSide ? m_this : m_other;
        const ParamSet::Entry *e = set.find(r.key);
        if (!e) return m_missing;
        if (!e->read) return m_notRead;
    }
    return thisSide ? r.thisValue : r.otherValue;
}

QVariant ParamCompare::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size()) return QVariant();
    const Row &r = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        switch (index.column()) {
        case ColKoordinate: return r.key.text();
        case ColName: return r.name;
        case ColThis: return valueText(r, true);
        case ColOther: return valueText(r, false);
        case ColUnit: return r.unit;
        }
        return QVariant();
    case Qt::CheckStateRole:
        if (index.column() != ColKoordinate || !isTickable(index.row())) return QVariant();
        return r.ticked ? Qt::Checked : Qt::Unchecked;
    case StateRole: return int(r.state);
    case KeyRole: return QVariant::fromValue(r.key);
    case SearchRole:
        return QString(r.key.text() + QLatin1Char('\n') + r.name + QLatin1Char('\n') + r.thisValue +
                       QLatin1Char('\n') + r.otherValue)
            .toLower();
    default: return QVariant();
    }
}

bool ParamCompare::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || index.column() != ColKoordinate || !isTickable(index.row()))
        return false;
    setTicked(index.row(), value.toInt() == Qt::Checked);
    return true;
}

Qt::ItemFlags ParamCompare::flags(const QModelIndex &index) const
{
    if (!index.isValid()) return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == ColKoordinate && isTickable(index.row())) f |= Qt::ItemIsUserCheckable;
    return f;
}

QVariant ParamCompare::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return QVariant();
    switch (section) {
    case ColKoordinate: return paramSetText(m_table, "ColKoordinate");
    case ColName: return paramSetText(m_table, "ColName");
    case ColThis: return m_thisCaption;
    case ColOther: return m_otherCaption;
    case ColUnit: return paramSetText(m_table, "ColUnit");
    }
    return QVariant();
}

// --- filter --------------------------------------------------------------------------------

ParamCompareFilter::ParamCompareFilter(QObject *parent) : QSortFilterProxyModel(parent) {}

void ParamCompareFilter::setOnlyDifferences(bool only)
{
    if (m_onlyDifferences == only) return;
    m_onlyDifferences = only;
    invalidateFilter();
}

void ParamCompareFilter::setSearchText(const QString &text)
{
    const QString lower = text.trimmed().toLower();
    if (m_search == lower) return;
    m_search = lower;
    invalidateFilter();
}

bool ParamCompareFilter::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    const QModelIndex i = sourceModel()->index(sourceRow, 0, sourceParent);
    if (m_onlyDifferences &&
        i.data(ParamCompare::StateRole).toInt() == int(ParamCompare::State::Same))
        return false;
    return m_search.isEmpty() || i.data(ParamCompare::SearchRole).toString().contains(m_search);
}

} // namespace drivewiz
