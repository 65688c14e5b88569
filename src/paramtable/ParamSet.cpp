// Parameter sets: made from a table, its defaults or the drive.

#include "paramtable/ParamSet.h"

#include "paramtable/ParaTable.h"
#include "paramtable/para_import.h"

#include <numeric>

namespace drivewiz {

void ParamSet::ensureIndex() const
{
    if (m_indexed) return;
    m_indexed = true;
    m_index.clear();
    m_index.reserve(m_entries.size());
    for (qsizetype i = 0; i < m_entries.size(); ++i)
        m_index.insert(m_entries.at(i).key, int(i));
}

int ParamSet::indexOf(const ParamKey &key) const
{
    ensureIndex();
    return m_index.value(key, -1);
}

const ParamSet::Entry *ParamSet::find(const ParamKey &key) const
{
    const int i = indexOf(key);
    return i < 0 ? nullptr : &m_entries.at(i);
}

void ParamSet::insert(const Entry &entry)
{
    insert(Entry(entry));
}

void ParamSet::insert(Entry &&entry)
{
    ensureIndex();
    const auto it = m_index.constFind(entry.key);
    if (it != m_index.cend()) {
        m_entries[*it] = std::move(entry);
        return;
    }
    m_index.insert(entry.key, int(m_entries.size()));
    m_entries.append(std::move(entry));
}

void ParamSet::reserve(int n)
{
    m_entries.reserve(n);
    m_index.reserve(n);
}

QList<ParamKey> ParamSet::keys() const
{
    ensureIndex();
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
    if (p >= 0 || key.axisNumber() != 1) return p;
    for (const QString &axis : firstAxes) {
        if (axis != key.achse && (p = table.FindParAxUnknown(key.koordinate, axis)) >= 0) return p;
    }
    return -1;
}

// Fills a set from a table's main index, where the rows of one parameter are next to
// each other: a row of the parameter before replaces it, as insert() does, without a
// look-up; the set's index is made when first needed.
class ParamSetBuilder
{
public:
    explicit ParamSetBuilder(ParamSet &set) : m_set(set) { m_set.ensureIndex(); }
    void reserve(int n) { m_set.m_entries.reserve(n); }
    void append(ParamSet::Entry &&e)
    {
        if (!m_set.m_entries.isEmpty() && m_set.m_entries.constLast().key == e.key) {
            m_set.m_entries.last() = std::move(e);
            return;
        }
        m_set.m_entries.append(std::move(e));
        m_set.m_indexed = false;
    }

private:
    ParamSet &m_set;
};

namespace {

// The positions of a table that a set takes: all rows in index order (those without a
// coordinate are skipped later), or the rows of the given parameters in their order
// (unknown ones are left out).
std::vector<int> positionsOf(const TImportTable &table, const QList<ParamKey> &only)
{
    std::vector<int> out;
    if (only.isEmpty()) {
        out.resize(size_t(table.RowCount()));
        std::iota(out.begin(), out.end(), 0);
        return out;
    }
    for (const ParamKey &key : only) {
        const int p = FindParamKey(table, key);
        if (p >= 0) out.push_back(p);
    }
    return out;
}

// The axes of one parameter follow each other and share coordinate, name and unit:
// a text like the one of the row before is that one, shared, not made again.
class SharedText
{
public:
    QString operator()(const QByteArray &bytes)
    {
        if (bytes != m_bytes) {
            m_bytes = bytes; // the table's storage, as it is not changed meanwhile
            m_text = QString::fromUtf8(bytes);
        }
        return m_text;
    }

private:
    QByteArray m_bytes;
    QString m_text;
};

ParamSet fromColumn(const TImportTable &table, const QList<ParamKey> &only, const char *column)
{
    ParamSet set;
    const int cKoord = table.FindColumn(QStringLiteral("Koordinate"));
    if (cKoord < 0) return set;
    const int cAchse = table.FindColumn(QStringLiteral("Achse"));
    const int cName = table.FindColumn(QStringLiteral("Name"));
    const int cUnit = table.FindColumn(QStringLiteral("Einheit"));
    const int cValue = table.FindColumn(QLatin1String(column));
    const std::vector<int> positions = positionsOf(table, only);
    ParamSetBuilder builder(set);
    builder.reserve(int(positions.size()));
    SharedText koordinaten, achsen, names, units;
    for (const int p : positions) {
        const QString koordinate = koordinaten(table.CellUtf8At(p, cKoord));
        if (koordinate.isEmpty()) continue;
        ParamSet::Entry e;
        e.key = ParamKey(koordinate, achsen(table.CellUtf8At(p, cAchse)));
        e.value = table.CellAt(p, cValue);
        e.name = names(table.CellUtf8At(p, cName));
        e.unit = units(table.CellUtf8At(p, cUnit));
        if (only.isEmpty())
            builder.append(std::move(e));
        else
            set.insert(std::move(e)); // a list may name a parameter twice
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
