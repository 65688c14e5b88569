// The parameter control: coordinate, widget choice from the description row, layout.

#include "paramctrls/ParamCtrls.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls_p.h"
#include "paramtable/coordinates.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "util/Divers.h"
#include "widgets/wizCombo.h"
#include "widgets/wizEdit.h"

#include <QCheckBox>
#include <QHash>
#include <QLabel>
#include <QToolButton>

#include <cmath>
#include <limits>

namespace drivewiz {

namespace {

double limitOf(const QString &text)
{
    double v = 0;
    const QString t = TrimFloat(text.trimmed());
    // An empty (or unreadable) limit counts as minus infinity, for either limit.
    return !t.isEmpty() && TryStrToFloat(t, v) ? v : -std::numeric_limits<double>::infinity();
}

int leadingNumber(const QString &text)
{
    int n = 0;
    for (const QChar c : text) {
        if (!c.isDigit() || c.unicode() >= 0x80 || n > 1000) break;
        n = n * 10 + (c.unicode() - '0');
    }
    return n;
}

// A field that has the focus is left while it dies: it must no longer be the control's
// input then, or MyExit would read a half-destroyed widget.
void dropInput(QWidget *&input, QObject *filter)
{
    QWidget *old = input;
    input = nullptr;
    if (old) old->removeEventFilter(filter);
    delete old;
}

} // namespace

void TParaClass::Loaded()
{
    Component::Loaded();
    if (!m_table && !m_tableName.isEmpty() && window())
        m_table = window()->findChild<TParaTable *>(m_tableName);
    if (isDesigning()) {
        designTimeLoaded();
        return;
    }
    if (!m_table) return;
    RebuildParaControl();
    SucheGleicheParameter();
    takeOverPartnerText();
    if (AfterCreate) AfterCreate(this);
}

// Two controls of one parameter start equal: a new one takes the text of the first
// partner that already shows a value.
void TParaClass::takeOverPartnerText()
{
    for (const QPointer<TParaClass> &partner : std::as_const(m_same)) {
        if (partner && partner->GetEditControl()) {
            SetText(partner->GetText());
            return;
        }
    }
}

void TParaClass::SetKoordinate(const QString &koordinate)
{
    if (koordinate == GetKoordinate()) return;
    FreeCustomCtrls();
    if (m_table && !m_table->TextRestoring()) leaveSameParameterLists();
    const QString before = GetKoordinate();
    m_lblKoordinate->setText(koordinate);
    SetEditCtrlPosition();
    paractl::Registry::instance().setKoordinate(this, before, koordinate);
    const bool isKoord = IsKoordinate(koordinate);
    if (!takeAutomaticName()) return;
    if (isKoord) {
        buildForCoordinate();
    } else if (isDesigning()) {
        SetParamName(QStringLiteral("Unknown Parameter"));
    }
}

void TParaClass::buildForCoordinate()
{
    RebuildParaControl();
    if (!isDesigning()) SucheGleicheParameter();
    if (!isLoading()) takeOverPartnerText();
}

// In the form designer the control is named after its coordinate: "P_" + the coordinate
// with dots as underscores. When another component of the form has that name already,
// the form author is asked for another coordinate, and the answer is set instead: false
// then, as that SetKoordinate has done everything.
bool TParaClass::takeAutomaticName()
{
    const QString koordinate = GetKoordinate();
    if (!isDesigning() || !m_table || m_noAutomNameChange || !IsKoordinate(koordinate)) return true;
    QString name = QStringLiteral("P_") + koordinate;
    name.replace(QLatin1Char('.'), QLatin1Char('_'));
    if (objectName() == name) return true;
    QWidget *form = window();
    if (form && form->findChild<QWidget *>(name)) {
        SetKoordinate(InputKoordinate(QString()));
        return false;
    }
    setObjectName(name);
    return true;
}

// In the form designer a control shows its parameter as soon as it is in the form. A
// control dropped without a table joins the form's parameter table and takes its name
// from its coordinate; one read from a form file keeps its name.
void TParaClass::designTimeLoaded()
{
    const bool joins = !m_table && m_tableName.isEmpty() && window();
    if (joins) SetwizParaSource(window()->findChild<TParaTable *>());
    if (!m_table || (joins && !takeAutomaticName())) return;
    RebuildParaControl();
}

void TParaClass::FreeCustomCtrls()
{
    qDeleteAll(m_bitBoxes);
    qDeleteAll(m_bitLabels);
    m_bitBoxes.clear();
    m_bitLabels.clear();
    delete m_unit;
    m_unit = nullptr;
    delete m_infoButton;
    m_infoButton = nullptr;
}

void TParaClass::RebuildParaControl()
{
    if (isLoading() || componentState().testFlag(csReading) ||
        componentState().testFlag(csDestroying) || !IsKoordinate(GetKoordinate()))
        return;
    if (isHidden() == m_wizVisible) {
        setVisible(m_wizVisible);
        fireVisibleChange();
    }
    if (!m_table) return;
    const int record = m_table->GetRecNo(GetKoordinate(), false);
    FreeCustomCtrls();
    if (record < 0) {
        dropInput(m_input, this);
        if (!isDesigning()) {
            hide();
            fireVisibleChange();
        }
        return;
    }
    m_building = true;
    readRecord(record);
    buildInput(record);
    SetEditCtrlPosition();
    showBuiltWidgets();
    SetEnabled(GetInitialEnableLevel());
    applyHints(record);
    SetText(m_table->Cell(record, QStringLiteral("Wert")));
    m_building = false;
    SetCtrlColor();
}

void TParaClass::readRecord(int record)
{
    const QStringList c =
        m_table->Cells(record, {"Write-Level", "Datentyp", "USS-Adresse /hex", "Achse",
                                "Nachkommastellen", "Name", "Art", "UGW", "OGW", "Defaultwert"});
    m_writeLevel = StrToIntDef(c[0].trimmed(), 0);
    m_dataType = c[1].toUpper();
    SetQ7Adresse(c[2]);
    SetAchse(c[3]);
    m_maxTextLength = m_dataType.size() >= 4 && m_dataType.startsWith(QLatin1String("STR"))
                          ? leadingNumber(m_dataType.mid(3))
                          : 0;
    if (IsInteger(c[4])) m_decimals = std::clamp(StrToInt(c[4].trimmed()), 0, 18);
    QString name = c[5];
    if (name.contains(QChar(0x00A7)) && m_showElementNameOnly)
        name = LExtractWord(2, name, TCharSet("\xA7"), ewMultipleDelim);
    SetParamName(name);
    m_kind = StrToIntDef(c[6].trimmed(), 0);
    m_numeric = m_kind < 2 && !m_dataType.contains(QLatin1String("STR"));
    m_info = m_kind == 6;
    m_ugw = limitOf(c[7]);
    m_ogw = limitOf(c[8]);
    m_default = c[9];
    m_indirectUnit.clear();
}

void TParaClass::buildInput(int record)
{
    dropInput(m_input, this);
    const bool sel = m_table->IstAuswahlParameter(record);
    const bool rueck = m_table->Online() == omRueckdoku;
    if (rueck || (!sel && m_controlType != wctComboDropDown)) {
        if (m_dataType == QLatin1String("B") ||
            (m_controlType == wctCheckBox && m_dataType == QLatin1String("U8") && m_ogw == 1.0))
            buildCheckBox();
        else
            buildEdit(record);
    } else if (m_controlType == wctRadioButtons) {
        buildRadioGroup();
    } else if (m_controlType == wctCheckBox) {
        buildCheckBox();
    } else {
        buildCombo(record, m_controlType == wctComboDropDown);
    }
    if (m_info) buildInfoButton();
    connectInput();
}

void TParaClass::buildEdit(int record)
{
    auto *edit = new TwizEdit(this);
    edit->setObjectName(QStringLiteral("EditFeld"));
    edit->setFont(m_table->FontEditFeld());
    if (m_maxTextLength > 0) edit->setMaxLength(m_maxTextLength);
    m_input = edit;
    // A unit label only where there is a unit to show, or one another parameter gives.
    const QString einheit = m_table->Cell(record, QStringLiteral("Einheit")).trimmed();
    if (IsIndirekteEinheit(einheit)) m_indirectUnit = einheit.mid(1, einheit.size() - 2);
    if (!einheit.isEmpty()) {
        m_unit = new QLabel(this);
        m_unit->setObjectName(QStringLiteral("LblEinheit"));
        m_unit->setFont(m_table->FontDimension());
        UpdateEinheitString(record);
    }
    if (m_controlType == wctBinaryCheckBoxes &&
        (m_dataType.startsWith(QLatin1Char('I')) || m_dataType.startsWith(QLatin1Char('U'))))
        buildBitBoxes();
}

void TParaClass::buildBitBoxes()
{
    const int bits = std::clamp(leadingNumber(m_dataType.mid(1)), 0, 32);
    QFont small(QStringLiteral("Small Fonts"));
    small.setPixelSize(9);
    for (int i = bits - 1; i >= 0; --i) {
        auto *box = new QCheckBox(this);
        box->setObjectName(objectName() + QLatin1Char('_') + QString::number(i));
        connect(box, &QCheckBox::clicked, this, [this, box] { MyCheckBoxOnClick(box); });
        auto *label = new QLabel(QString::number(i), this);
        label->setFont(small);
        label->setAlignment(Qt::AlignCenter);
        m_bitBoxes << box;
        m_bitLabels << label;
    }
}

void TParaClass::buildCombo(int record, bool editable)
{
    auto *combo = new TwizComboBox(this);
    combo->setObjectName(QStringLiteral("ComboFeld"));
    combo->setEditable(editable);
    combo->setFont(m_table->FontEditFeld());
    combo->setMaxVisibleItems(20);
    m_input = combo;
    if (m_table->IstAuswahlParameter(record))
        combo->OnDropDown = [this](QObject *) { InitAuswahlListe(true); };
    combo->OnCloseUp = [this](QObject *sender) {
        m_closingUp = true; // closing the list posts even an unchanged choice
        MyExit(sender);
        m_closingUp = false;
    };
}

void TParaClass::buildRadioGroup()
{
    auto *group = new TMyRadioGroup(this);
    group->setObjectName(QStringLiteral("RadioFeld"));
    m_input = group;
    InitAuswahlListe(true);
}

void TParaClass::buildCheckBox()
{
    auto *box = new QCheckBox(this);
    box->setObjectName(QStringLiteral("CheckFeld"));
    m_input = box;
}

void TParaClass::buildInfoButton()
{
    m_infoButton = new QToolButton(this);
    m_infoButton->setObjectName(QStringLiteral("InfoButton"));
    m_infoButton->setText(QStringLiteral("i"));
    m_infoButton->setFont(QFont(QStringLiteral("Times New Roman")));
    m_infoButton->setAutoRaise(true);
    connect(m_infoButton, &QToolButton::clicked, this, [this] { myInfoButtonClick(); });
}

// Shown only once placed: a widget shown before it has a size works out its natural size.
void TParaClass::showBuiltWidgets()
{
    const bool bits = !m_bitBoxes.isEmpty();
    if (m_input) m_input->setVisible(!bits);
    if (m_unit) m_unit->setVisible(!bits);
    if (m_infoButton) m_infoButton->show();
    for (QCheckBox *box : std::as_const(m_bitBoxes))
        box->show();
    for (QLabel *label : std::as_const(m_bitLabels))
        label->show();
}

void TParaClass::InitAuswahlListe(bool flag)
{
    Q_UNUSED(flag)
    if (!m_table) return;
    const int record = m_table->GetRecNo(GetKoordinate(), false);
    if (record < 0) return;
    const QStringList entries = m_table->GetAuswahlListe(record);
    if (auto *combo = qobject_cast<TwizComboBox *>(m_input)) {
        const QString current = combo->currentText();
        const QSignalBlocker blocker(combo);
        combo->clear();
        combo->addItems(entries);
        int index = combo->findText(current, Qt::MatchFixedString);
        if (index < 0) {
            const QString key = LExtractWord(1, current, TCharSet(":"), ewMultipleDelim);
            for (int i = 0; i < entries.size() && index < 0; ++i) {
                if (LExtractWord(1, entries.at(i), TCharSet(":"), ewMultipleDelim) == key)
                    index = i;
            }
        }
        if (index < 0 && !current.isEmpty() && combo->isEditable())
            combo->setEditText(current);
        else
            combo->setCurrentIndex(index);
    } else if (auto *group = qobject_cast<TMyRadioGroup *>(m_input)) {
        group->SetItems(entries);
    }
}

QString TParaClass::InputKoordinate(const QString &defaultValue)
{
    return InputBox(QString(), QStringLiteral("Koordinate:"), defaultValue);
}

void TParaClass::leaveSameParameterLists()
{
    for (const QPointer<TParaClass> &other : std::as_const(m_same)) {
        if (other) other->m_same.removeAll(QPointer<TParaClass>(this));
    }
    m_same.clear();
}

} // namespace drivewiz
