#ifndef DRIVEWIZ_ENUMS_H
#define DRIVEWIZ_ENUMS_H

// Enumerations shared by the components and used as property types in form files.

#include "drivewiz_global.h"

#include <QObject>

namespace drivewiz {

Q_NAMESPACE_EXPORT(DRIVEWIZ_EXPORT)

/// The mode of the link to the drive: offline (values are kept and written when the wizard
/// closes with OK), online (every change is written at once) or documentation read-back
/// (values are shown, nothing is written).
enum tOnlineModus { omOffline = 0, omOnline = 1, omRueckdoku = 2 };
Q_ENUM_NS(tOnlineModus)

/// The widget a form author wishes for a parameter control.
enum TwizCtrlType {
    wctDefault,
    wctRadioButtons,
    wctCheckBox,
    wctComboDropDown,
    wctBinaryCheckBoxes
};
Q_ENUM_NS(TwizCtrlType)

/// Where a parameter control puts its input field: below or right of the name.
enum TwizControlAlign { caBottom, caRight };
Q_ENUM_NS(TwizControlAlign)

/// What a parameter control does when the host asks for it to be hidden.
enum TwizToolInvisible { tiShow, tiDisable, tiInvisible };
Q_ENUM_NS(TwizToolInvisible)

/// The enable level of a parameter control.
enum tParaEnabled { pEnabled, pReadOnly, pDisabled };
Q_ENUM_NS(tParaEnabled)

/// Direction of a fieldbus process-data mapping.
enum TPDOReadWrite { PDOread, PDOwrite };
Q_ENUM_NS(TPDOReadWrite)

/// The kind of a signal-input frame: none, binary input, analog input.
enum TInputKind { ikNone, ikBE, ikAE };
Q_ENUM_NS(TInputKind)
/// Which analog output a TAnalogAus frame edits; inactive hides the frame.
enum TAnalogAusgang { AnalogAus_inaktiv, AnalogAus1, AnalogAus2 };
Q_ENUM_NS(TAnalogAusgang)

/// The kind of encoder a TEncoderFrame's page and selections describe.
enum TEncoderType {
    ttnone,
    ttIncIn,
    ttIncOut,
    ttStepIn,
    ttStepOut,
    ttSSIin,
    ttSSIout,
    ttSSIslave,
    ttEndatIn,
    ttResolverIn,
    ttSinCosIn
};
Q_ENUM_NS(TEncoderType)

} // namespace drivewiz

#endif // DRIVEWIZ_ENUMS_H
