// The parameter table's writes as the library reports them (valueWritten, for the
// journal, the undo stack and the changed marks), and the writes the library makes on
// its own: reset, revert, undo, Apply.

#include "paramtable/ParaTable_p.h"

#include "paramtable/ParamSet.h"
#include "paramtable/coordinates.h"
#include "platform/convert.h"
#include "platform/textcodec.h"
#include "util/Divers.h"

#include <QMetaMethod>

namespace drivewiz {

TParaTable::OriginScope::OriginScope(TParaTable *table, WriteOrigin origin)
    : m_table(table), m_outer(table ? table->m_origin : WriteOrigin::Typed)
{
    if (table) table->m_origin = origin;
}

TParaTable::OriginScope::~OriginScope()
{
    if (m_table) m_table->m_origin = m_outer;
}

int TParaTable::FindKey(const ParamKey &key) const
{
    return FindParamKey(*this, key);
}

ParamKey TParaTable::KeyOfRow(int row) const
{
    return ParamKey(CellAt(row, koordinateColumn()), CellAt(row, achseColumn()));
}

quint32 TParaTable::AddressOfRow(int row) const
{
    const QString hex = Cell(row, QStringLiteral("USS-Adresse /hex")).trimmed();
    if (!hex.isEmpty()) return quint32(HexToInt(hex));
    const ParamKey key = KeyOfRow(row);
    if (!IsKoordinate(key.koordinate)) return 0;
    int axis = 0;
    if (!TryStrToInt(key.achse, axis)) axis = 0;
    return GetQ7Addresse(key.koordinate, axis);
}

// Building a report costs a clock read and a few texts: only when someone listens.
bool TParaTable::reportsWrites() const
{
    static const QMetaMethod signal = QMetaMethod::fromSignal(&TParaTable::valueWritten);
    return isSignalConnected(signal);
}

void TParaTable::reportWrite(ParamWrite &write)
{
    if (!reportsWrites() || m_hostDetached) return;
    write.time = QDateTime::currentDateTime();
    write.mode = m_online;
    Q_EMIT valueWritten(write);
}

// A value kept in "Wert" without asking the host (offline, read-back).
void TParaTable::reportTableWrite(int row, const QString &oldValue, const QString &newValue)
{
    if (oldValue == newValue || !reportsWrites()) return;
    ParamWrite w;
    w.key = KeyOfRow(row);
    w.address = AddressOfRow(row);
    w.oldValue = oldValue;
    w.newValue = newValue;
    w.origin = m_origin;
    reportWrite(w);
}

// The first offline edit of a parameter remembers the value before it: OK's write of
// it is reported with that as its old value. An edit (an undo, a revert) that brings
// the value back to it leaves nothing for OK to write.
void TParaTable::markPending(quint32 address, int row, const QString &before,
                             const QString &value)
{
    if (address == 0) return;
    const auto it = m_pendingEdits.constFind(address);
    if (it == m_pendingEdits.cend())
        m_pendingEdits.insert(address, PendingEdit{KeyOfRow(row), before, m_origin});
    else if (it->before == value)
        m_pendingEdits.remove(address);
}

// The controls are rebuilt from "Wert" next: they show what was there before the edits
// until the drive's values come.
void TParaTable::holdPendingEdits()
{
    m_heldEdits.clear();
    for (auto it = m_pendingEdits.cbegin(); it != m_pendingEdits.cend(); ++it) {
        const int row = FindKey(it->key);
        if (row < 0) continue;
        m_heldEdits << ParamChange{it->key, it->before, Cell(row, QStringLiteral("Wert"))};
        SetCell(row, QStringLiteral("Wert"), it->before); // until the drive's value is read
    }
    m_pendingEdits.clear();
}

// Values written offline for parameters no control of the form shows (an Apply, a
// reset from a list) go to the host with the controls' values: at OK, or going online.
void TParaTable::postPendingValues(const QHash<quint32, PendingEdit> &pending)
{
    for (auto it = pending.cbegin(); it != pending.cend() && !m_hostDetached; ++it) {
        const int row = FindKey(it->key);
        if (row < 0) continue;
        const bool known = m_pendingEdits.contains(it.key());
        if (!known) m_pendingEdits.insert(it.key(), *it); // reported with its old value
        SetParaValue(it.key(), it->key.koordinate, Cell(row, QStringLiteral("Wert")));
        if (!known) m_pendingEdits.remove(it.key());
    }
}

ParamWrite TParaTable::WriteValue(const ParamKey &key, const QString &value, WriteOrigin origin)
{
    const OriginScope scope(this, origin);
    const int row = FindKey(key);
    ParamWrite result;
    if (row < 0 || m_hostDetached) return result;
    const quint32 address = AddressOfRow(row);
    const QString old = Cell(row, QStringLiteral("Wert"));
    result.key = KeyOfRow(row);
    result.address = address;
    result.oldValue = old;
    result.newValue = value;
    result.origin = origin;
    result.mode = m_online;
    const bool toHost = m_online == omOnline && m_cb.set_para_value && address != 0;
    if (toHost) {
        m_writeOld = &old;
        m_quietWrite = true;
        const char status = SetParaValue(address, result.key.koordinate, value);
        m_writeOld = nullptr;
        m_quietWrite = false;
        result.answer = quint8(status);
        if (status != 0 || m_hostDetached) return result;
    } else {
        if (m_online == omRueckdoku) return result; // never written, not even here
        markPending(address, row, old, value);
    }
    // Found again: the host may have had rows described meanwhile.
    const int now = FindKey(result.key);
    if (now >= 0) SetCell(now, QStringLiteral("Wert"), value);
    if (!toHost) reportTableWrite(now >= 0 ? now : row, old, value);
    showWrittenValue(address, value);
    return result;
}

bool TParaTable::ReadHostValue(quint32 address, QString &value, quint8 &status)
{
    value.clear();
    status = 0;
    if (!m_cb.get_para_value || address == 0 || m_hostDetached) return false;
    const fcbtGetParaValue get = m_cb.get_para_value;
    bool ok = false;
    const QByteArray text = readHostText(
        "fcbtGetParaValue",
        [&](char *buf, qint32 size) { return get(buf, size, m_wizardId, address, &status); },
        [&](bool) { return status == 0; }, ok);
    if (!ok) return false;
    value = decodeText(text);
    return true;
}

} // namespace drivewiz
