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

class TParaTable : public drivewiz::TParaTable
{
    Q_OBJECT
public:
    using drivewiz::TParaTable::TParaTable;
};

class TParaClass : public drivewiz::TParaClass
{
    Q_OBJECT
public:
    using drivewiz::TParaClass::TParaClass;
};

class TwizPageControl : public drivewiz::TwizPageControl
{
    Q_OBJECT
public:
    using drivewiz::TwizPageControl::TwizPageControl;
};

class TwizTreeView : public drivewiz::TwizTreeView
{
    Q_OBJECT
public:
    using drivewiz::TwizTreeView::TwizTreeView;
};

class TwizEdit : public drivewiz::TwizEdit
{
    Q_OBJECT
public:
    using drivewiz::TwizEdit::TwizEdit;
};

class TwizComboBox : public drivewiz::TwizComboBox
{
    Q_OBJECT
public:
    using drivewiz::TwizComboBox::TwizComboBox;
};

class TwizLabel : public drivewiz::TwizLabel
{
    Q_OBJECT
public:
    using drivewiz::TwizLabel::TwizLabel;
};

class TwizButton : public drivewiz::TwizButton
{
    Q_OBJECT
public:
    using drivewiz::TwizButton::TwizButton;
};

class TMyRadioGroup : public drivewiz::TMyRadioGroup
{
    Q_OBJECT
public:
    using drivewiz::TMyRadioGroup::TMyRadioGroup;
};

#endif // DRIVEWIZ_DESIGNER_DESIGNERALIASES_H
