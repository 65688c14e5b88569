// The parameter table shows a value the library wrote on its own (reset, revert, undo,
// Apply) in the controls of its parameter. It lives beside the controls, as the table's
// other work on them does.

#include "paramtable/ParaTable_p.h"

#include "paramctrls/ParamCtrls.h"

namespace drivewiz {

// Shown as read values are: the controls do not write them back.
void TParaTable::showWrittenValue(quint32 address, const QString &value)
{
    const QPointer<TParaClass> control = FindParaControl(address);
    if (!control) return;
    ++m_refreshing;
    control->SetText(value);
    --m_refreshing;
    if (control) copyToMirrors(control);
    if (control) updateIndirectUnits(control->GetKoordinate());
}

} // namespace drivewiz
