// Parameter sets: made from a table, its defaults or the drive.

#include "paramtable/ParamSet.h"

#include "paramtable/ParaTable.h"
#include "paramtable/para_import.h"

namespace drivewiz {

int ParamSet::indexOf(const ParamKey &key) const
{
    return m_index.value(key.hashText(), -1);
}

const ParamSet::Entry *ParamSet::find(const ParamKey &key) const
{
    const int i = indexOf(key);
    return i < 0 ? nullptr : &m_entries.at(i);
}

void ParamSet::insert(const Entry &entry)
{
    const QString hash = entry.key.hashText();
    const auto it = m_index.constFind(hash);
    if (it != m_index.cend()) {
        m_entries[*it] = entry;
        return;
    }
    m_index.insert(hash, int(m_entries.size()));
    m_entries.append(entry);
}

QList<ParamKey> ParamSet::keys() const
{
    QList<ParamKey> out;
    out.reserve(m_entries.size());
    for (const Entry &e : m_entries)
        out << e.key;
    return out;
}

int FindParamKey(const TImportTable &table, const ParamKey &key)
{
    if (key.koordinate.isEmpty()) return -1;
    int p = table.FindParAxUnknown(key.koordinate, key.achse);
    static const QString firstAxes[] = {QStringLiteral("1"), QStringLiteral("0"), QString()};
    if (p >= 0 || key.hashText() != key.koordinate) return p;
    for (const QString &axis : firstAxes) {
        if (axis != key.achse && (p = table.FindParAxUnknown(key.koordinate, axis)) >= 0) return p;
    }
    return -1;
}

namespace {

// The positions of a table that a set takes: all rows with a coordinate in index order,
// or the rows of the given parameters in their order (unknown ones are left out).
std::vector<int> positionsOf(const TImportTable &table, const QList<ParamKey> &only)
{
    std::vector<int> out;
    const int koord = table.FindColumn(QStringLiteral("Koordinate"));
    if (koord < 0) return out;
    if (only.isEmpty()) {
        out.reserve(size_t(table.RowCount()));
        for (int p = 0; p < table.RowCount(); ++p) {
            if (!table.CellAt(p, koord).isEmpty()) out.push_back(p);
        }
        return out;
    }
    for (const ParamKey &key : only) {
        const int p = FindParamKey(table, key);
        if (p >= 0) out.push_back(p);
    }
    return out;
}

ParamSet fromColumn(const TImportTable &table, const QList<ParamKey> &only, const char *column)
{
    ParamSet set;
    const int cKoord = table.FindColumn(QStringLiteral("Koordinate"));
    const int cAchse = table.FindColumn(QStringLiteral("Achse"));
    const int cName = table.FindColumn(QStringLiteral("Name"));
    const int cUnit = table.FindColumn(QStringLiteral("Einheit"));
    const int cValue = table.FindColumn(QLatin1String(column));
    for (const int p : positionsOf(table, only)) {
        ParamSet::Entry e;
        e.key = ParamKey(table.CellAt(p, cKoord), table.CellAt(p, cAchse));
        e.value = table.CellAt(p, cValue);
        e.name = table.CellAt(p, cName);
        e.unit = table.CellAt(p, cUnit);
        set.insert(e);
    }
    const int family = FindParamKey(table, ParamKey(QStringLiteral("E50"), QString()));
    if (family >= 0)
        set.meta().family = table.CellAt(family, table.FindColumn(QStringLiteral("Wert"))).trimmed();
    set.meta().date = QDateTime::currentDateTime();
    set.meta().libraryVersion = libraryVersion();
    return set;
}

} // namespace

ParamSet ParamSet::fromTable(const TImportTable &table, const QList<ParamKey> &only)
{
    return fromColumn(table, only, "Wert");
}

ParamSet ParamSet::fromWizard(const TParaTable &table, const QList<ParamKey> &only)
{
    ParamSet set = fromTable(table, only);
    set.meta().wizardId = table.wizIdString();
    return set;
}

ParamSet ParamSet::defaultsOf(const TImportTable &table, const QList<ParamKey> &only)
{
    return fromColumn(table, only, "Defaultwert");
}

// The table is asked for rows again after each read: a host may describe parameters
// meanwhile, which moves rows.
ParamSet ParamSet::fromDrive(TParaTable &table, const QList<ParamKey> &only)
{
    const ParamSet rows = fromWizard(table, only);
    ParamSet set;
    set.meta() = rows.meta();
    for (const Entry &r : rows.entries()) {
        Entry e = r;
        e.value.clear();
        const int row = table.FindKey(r.key);
        quint8 status = 0;
        e.read = row >= 0 && table.ReadHostValue(table.AddressOfRow(row), e.value, status) &&
                 status == 0;
        if (!e.read) e.value.clear();
        set.insert(e);
    }
    return set;
}

} // namespace drivewiz
