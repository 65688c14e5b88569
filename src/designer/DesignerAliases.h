#ifndef DRIVEWIZ_DESIGNER_DESIGNERALIASES_H
#define DRIVEWIZ_DESIGNER_DESIGNERALIASES_H

// Classes under the plain names of forms written without the namespace ("TParaClass").
// Designer makes a widget of exactly the class a form names, so each plain name is a
// class of its own, derived from the library's: such forms open with the real widgets
// and are saved under the names they came with. (Global names on purpose; only the
// plugin sees them.)

#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
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

#endif // DRIVEWIZ_DESIGNER_DESIGNERALIASES_H
