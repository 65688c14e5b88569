// The values at opening and which parameters differ from them now.

#include "paramtable/ParamChanges.h"

#include "paramtable/ParaTable.h"

namespace drivewiz {

ParamChanges::ParamChanges(TParaTable *table, QObject *parent) : QObject(parent), m_table(table)
{
    if (!table) return;
    // A refused value is put back after the write was reported: looked at once it is.
    connect(table, &TParaTable::valueWritten, this, [this](const ParamWrite &w) {
        if (w.accepted())
            update(w.key, true);
        else
            QMetaObject::invokeMethod(this, [this, key = w.key] { update(key, true); },
                                      Qt::QueuedConnection);
    });
    connect(table, &TParaTable::valueRead, this, [this](int row) {
        if (m_table) update(m_table->KeyOfRow(row), true);
    });
}

void ParamChanges::takeOpeningValues()
{
    if (!m_table) return;
    m_opening = ParamSet::fromWizard(*m_table);
    m_taken = true;
    const bool had = !m_changed.isEmpty();
    const QSet<ParamKey> before = m_changed;
    m_changed.clear();
    for (const ParamKey &key : before)
        Q_EMIT changedStateChanged(key, false);
    if (had) Q_EMIT changesChanged();
}

QString ParamChanges::openingValue(const ParamKey &key) const
{
    const ParamSet::Entry *e = m_opening.find(key);
    return e ? e->value : QString();
}

bool ParamChanges::differs(const ParamKey &key) const
{
    if (!m_taken || !m_table) return false;
    const ParamSet::Entry *e = m_opening.find(key);
    const int row = m_table->FindKey(key);
    if (!e || row < 0) return false;
    return m_table->Cell(row, QStringLiteral("Wert")) != e->value;
}

bool ParamChanges::isChanged(const ParamKey &key) const
{
    return m_changed.contains(key);
}

QList<ParamKey> ParamChanges::changed(const QList<ParamKey> &among) const
{
    QList<ParamKey> out;
    if (among.isEmpty()) {
        for (const ParamSet::Entry &e : m_opening.entries()) {
            if (m_changed.contains(e.key)) out << e.key;
        }
        return out;
    }
    for (const ParamKey &k : among) {
        if (m_changed.contains(k)) out << k;
    }
    return out;
}

int ParamChanges::changedCount(const QList<ParamKey> &among) const
{
    return among.isEmpty() ? int(m_changed.size()) : int(changed(among).size());
}

void ParamChanges::update(const ParamKey &key, bool emitCount)
{
    if (!m_taken) return;
    const bool now = differs(key);
    if (now == m_changed.contains(key)) return;
    if (now)
        m_changed.insert(key);
    else
        m_changed.remove(key);
    Q_EMIT changedStateChanged(key, now);
    if (emitCount) Q_EMIT changesChanged();
}

void ParamChanges::recheck(const ParamKey &key)
{
    update(key, true);
}

void ParamChanges::recheck()
{
    if (!m_taken) return;
    const int before = int(m_changed.size());
    const QSet<ParamKey> old = m_changed;
    for (const ParamSet::Entry &e : m_opening.entries())
        update(e.key, false);
    if (old != m_changed || before != int(m_changed.size())) Q_EMIT changesChanged();
}

} // namespace drivewiz
