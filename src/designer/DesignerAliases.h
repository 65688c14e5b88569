#ifndef DRIVEWIZ_DESIGNER_DESIGNERALIASES_H
#define DRIVEWIZ_DESIGNER_DESIGNERALIASES_H

// Classes under the plain names of forms written without the namespace ("TParaClass").
// Designer makes a widget of exactly the class a form names, so each plain name is a
// class of its own, derived from the library's: such forms open with the real widgets
// and are saved under the names they came with. (Global names on purpose; only the
// plugin sees them.)

#include "ioframes/AE.h"
#include "ioframes/AllInputViewer.h"
#include "ioframes/AnalogAusgang.h"
#include "ioframes/BE.h"
#include "ioframes/BitLeiste.h"
#include "ioframes/DigitalAusgang.h"
#include "ioframes/HEncoder.h"
#include "ioframes/QuellSelectIntro.h"
#include "ioframes/SystemBEs.h"
#include "paramctrls/ArrayPara.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "tables/ArrayGroups.h"
#include "tables/ImportOM_CSV.h"
#include "tables/MeasurementPlot.h"
#include "widgets/HList.h"
#include "widgets/wizCombo.h"
#include "widgets/wizEdit.h"
#include "wizard/wizPageControl.h"

// moc expands the macro, so each plain name is one line.
#define DRIVEWIZ_PLAIN_NAME(Name)                                                                  \
    class Name : public drivewiz::Name                                                             \
    {                                                                                              \
        Q_OBJECT                                                                                   \
    public:                                                                                        \
        using drivewiz::Name::Name;                                                                \
    };

DRIVEWIZ_PLAIN_NAME(TParaTable)
DRIVEWIZ_PLAIN_NAME(TParaClass)
DRIVEWIZ_PLAIN_NAME(TwizPageControl)
DRIVEWIZ_PLAIN_NAME(TwizTreeView)
DRIVEWIZ_PLAIN_NAME(TwizEdit)
DRIVEWIZ_PLAIN_NAME(TwizComboBox)
DRIVEWIZ_PLAIN_NAME(TwizLabel)
DRIVEWIZ_PLAIN_NAME(TwizButton)
DRIVEWIZ_PLAIN_NAME(TMyRadioGroup)
DRIVEWIZ_PLAIN_NAME(TBitLeiste)
DRIVEWIZ_PLAIN_NAME(TInput)
DRIVEWIZ_PLAIN_NAME(TBEinput)
DRIVEWIZ_PLAIN_NAME(TAEinput)
DRIVEWIZ_PLAIN_NAME(TAnalogEin)
DRIVEWIZ_PLAIN_NAME(TSystemBEsFrame)
DRIVEWIZ_PLAIN_NAME(TAllInputViewer)
DRIVEWIZ_PLAIN_NAME(TQuellSelektorIntro)
DRIVEWIZ_PLAIN_NAME(TAnalogAus)
DRIVEWIZ_PLAIN_NAME(TDigitalAus)
DRIVEWIZ_PLAIN_NAME(TEncoderFrame)
DRIVEWIZ_PLAIN_NAME(TArrayGroup)
DRIVEWIZ_PLAIN_NAME(TArrayPara)
DRIVEWIZ_PLAIN_NAME(THistoryCombo)
DRIVEWIZ_PLAIN_NAME(TImportOM_CSV)
DRIVEWIZ_PLAIN_NAME(TMeasurementPlot)

#endif // DRIVEWIZ_DESIGNER_DESIGNERALIASES_H
