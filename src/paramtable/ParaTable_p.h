#ifndef DRIVEWIZ_PARAMTABLE_PARATABLE_P_H
#define DRIVEWIZ_PARAMTABLE_PARATABLE_P_H

// Constants and the host-call wrapper of the parameter table, shared by its files here
// and in paramctrls/.

#include "lang/wizDLLDefs.h"
#include "paramtable/ParaTable.h"

#include <QtGlobal>

namespace drivewiz {

namespace paratable {

/// A push for the address the table wrote last, less than this many milliseconds after
/// the write, is the echo of our own write and is dropped.
constexpr qint64 kEchoWindowMs = 250;
/// A898 and its elements up to A899 are never looked up.
constexpr quint32 kReservedFirst = 0x01E08000u;
constexpr quint32 kReservedLast = 0x01E0C000u;
/// Longer texts from the host are taken for a broken answer.
constexpr qint32 kMaxHostText = 16 * 1024 * 1024;

inline bool reservedAddress(quint32 address)
{
    return address >= kReservedFirst && address <= kReservedLast;
}

} // namespace paratable

// Every call into the host goes through here: it is counted (so that a host freeing the
// table meanwhile is noticed, see DetachHost) and named for the report.
template <class Call> auto TParaTable::hostCall(const char *callback, Call &&call)
{
    const HostCallScope scope;
    struct Restore
    {
        TParaTable *table;
        const char *outer;
        ~Restore()
        {
            --table->m_hostCalls;
            table->m_hostCallName = outer;
        }
    } restore{this, m_hostCallName};
    m_hostCallName = callback;
    ++m_hostCalls;
    return call();
}

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_PARATABLE_P_H
