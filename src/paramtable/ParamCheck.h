#ifndef DRIVEWIZ_PARAMTABLE_PARAMCHECK_H
#define DRIVEWIZ_PARAMTABLE_PARAMCHECK_H

#include "drivewiz_global.h"

#include <QString>

namespace drivewiz {

class TParaTable;

/// A value checked against its parameter's description as a typed value is: numbers
/// must be numbers and are brought into "UGW".."OGW", a selection must name an entry of
/// its list, a text must fit its "STRn" length, and the parameter must be writable at
/// the user's level in the current mode.
struct DRIVEWIZ_EXPORT ParamValueCheck
{
    enum Outcome { Accepted, Limited, Refused };
    Outcome outcome = Refused;
    QString value;  ///< what to write (the selection entry, the limited number)
    QString reason; ///< why refused or limited, in the user's language

    bool writable() const { return outcome != Refused; }
};

/// Checks a value for the table row `row` (a position in the main index). With
/// `valueCheck` false only writability is checked (the value is the table's own, as in
/// undo or revert).
DRIVEWIZ_EXPORT ParamValueCheck CheckParamValue(TParaTable &table, int row, const QString &value,
                                                bool valueCheck = true);

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_PARAMCHECK_H
