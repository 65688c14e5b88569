#ifndef DRIVEWIZ_TABLES_BUSUTILS_H
#define DRIVEWIZ_TABLES_BUSUTILS_H

// Lengths of process-data telegrams on the fieldbus.

#include "drivewiz_global.h"

#include <QString>

class QLabel;

namespace drivewiz {

class TParaTable;

/// The bytes a value of a data type ("U16", "i32" ...) occupies on the fieldbus: B, I8,
/// U8 1; I16, U16 2; I32, U32 and P64 4 (a P64 is sent as 32 bits); STR8 8; STR16 16;
/// U8A64 64; any other type (and the empty text) 0, so it adds nothing to a telegram.
DRIVEWIZ_EXPORT int GetTypeLengthOnFieldBus(const QString &type);

/// The bytes the parameters of a list ("A10,B20", runs of commas count as one) occupy on
/// the bus, from their data types on the table's current axis. Coordinates the table
/// does not know add nothing.
DRIVEWIZ_EXPORT int GetPDOLength(TParaTable *table, const QString &list);

/// Shows the telegram length of a list on a label: "<s_ResTlgrLength>: <n> Byte", in
/// navy while it fits the maximum, else in red with " (<s_MaxLen>:<max> Byte)" appended.
/// Returns the length.
DRIVEWIZ_EXPORT int CheckLength(QLabel *label, TParaTable *table, const QString &list,
                                int maximum);

} // namespace drivewiz

#endif // DRIVEWIZ_TABLES_BUSUTILS_H
