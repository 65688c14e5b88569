// The parameter control: reading and setting the text, keys, leaving the field (checks,
// corrections, posting), mirrors, enable levels and colours.

#include "paramctrls/ParamCtrls.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls_p.h"
#include "platform/colors.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "platform/messages.h"
#include "util/Divers.h"
#include "widgets/wizCombo.h"
#include "widgets/wizEdit.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QScopedValueRollback>
#include <QToolButton>

#include <cmath>

namespace drivewiz {

// --- text ------------------------------------------------------------------------------------

QString TParaClass::GetText() const
{
    if (!m_input) return QString();
    if (auto *edit = qobject_cast<QLineEdit *>(m_input)) return edit->text();
    if (auto *combo = qobject_cast<QComboBox *>(m_input)) return combo->currentText();
    if (auto *box = qobject_cast<QCheckBox *>(m_input))
        return box->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    if (auto *group = qobject_cast<TMyRadioGroup *>(m_input)) {
        const int i = group->ItemIndex();
        return i >= 0 && i < group->Items().size() ? group->Items().at(i) : QString();
    }
    ShowMessage(QStringLiteral("GetText für ") + objectName() +
                QStringLiteral(" nicht definiert!\r") + GetKoordinate());
    return QString();
}

void TParaClass::SetText(const QString &text)
{
    m_previousText = text;
    if (qobject_cast<QLineEdit *>(m_input))
        setEditText(text);
    else if (qobject_cast<QComboBox *>(m_input))
        setComboText(text);
    else if (auto *box = qobject_cast<QCheckBox *>(m_input))
        box->setChecked(StrToBool(text));
    else if (qobject_cast<TMyRadioGroup *>(m_input))
        setRadioText(text);
    if (mayPostFromProgram()) PostValue();
}

void TParaClass::setEditText(const QString &text)
{
    auto *edit = static_cast<QLineEdit *>(m_input);
    QString shown = text;
    int value = 0;
    if (m_kind == 4 && TryStrToInt(text.trimmed(), value))
        shown = DecToBin(quint32(value), std::max(0, int(Round(std::log2(m_ogw + 1)))));
    if (edit->text() != shown) edit->setText(shown);
}

// The item is looked up by its whole text, then by the key before ":"; a list of fewer
// than two items takes the text as its item. A drop-down list that still lacks the text
// is filled from the selection list; a text missing even then is reported.
bool TParaClass::setComboText(const QString &text)
{
    auto *combo = static_cast<TwizComboBox *>(m_input);
    const auto find = [combo, &text] {
        int index = combo->findText(text, Qt::MatchFixedString);
        const QString key = LExtractWord(1, text, TCharSet(":"), ewMultipleDelim);
        for (int i = 0; index < 0 && i < combo->count(); ++i) {
            if (LExtractWord(1, combo->itemText(i), TCharSet(":"), ewMultipleDelim) == key)
                index = i;
        }
        return index;
    };
    int index = find();
    if (index < 0 && combo->count() < 2) {
        if (combo->count() == 0)
            combo->addItem(text);
        else
            combo->setItemText(0, text);
        index = 0;
    }
    if (index < 0 && !combo->isEditable() && !isDesigning()) {
        InitAuswahlListe(true);
        index = find();
        if (index < 0)
            ShowMessage(GetKoordinate() + QLatin1Char(' ') + GetParamName() +
                        QStringLiteral(":\r\"") + text +
                        QStringLiteral("\"\rist in der Auswahlliste nicht vorhanden!"));
    }
    if (index >= 0)
        combo->setCurrentIndex(index);
    else if (combo->isEditable())
        combo->setEditText(text);
    SetCtrlColor();
    return index >= 0;
}

// A key that is no item index leaves the selection as it is.
void TParaClass::setRadioText(const QString &text)
{
    auto *group = static_cast<TMyRadioGroup *>(m_input);
    QString key = text.trimmed();
    if (key.contains(QLatin1Char(':')))
        key = LExtractWord(1, key, TCharSet(":"), ewSingleDelim).trimmed();
    int index = 0;
    if (TryStrToInt(key, index) && index >= 0 && index < group->Items().size())
        group->SetItemIndex(index);
}

bool TParaClass::mayPostFromProgram() const
{
    // Values the table itself has just read or copied are not written back.
    return m_table && m_table->Online() == omOnline && !m_building && !m_fromMirror &&
           !m_table->Refreshing() && !m_exiting && !Focused() && window() &&
           window()->isVisible() && componentState() == ComponentState() &&
           !m_table->TextRestoring();
}

// --- posting ---------------------------------------------------------------------------------

void TParaClass::StoreInParaTable()
{
    if (!m_table) return;
    quint32 address = 0;
    const int record = m_table->FindRecord(GetKoordinate(), m_achse, address);
    if (record >= 0) m_table->SetCell(record, QStringLiteral("Wert"), GetText());
}

void TParaClass::PostValue()
{
    if (!m_table) return;
    StoreInParaTable();
    m_table->PostParaControl(this);
}

void TParaClass::RefreshValue()
{
    if (m_table) m_table->RefreshParaControl(this, false);
}

void TParaClass::BroadcastToSameParams()
{
    const QString text = GetText();
    for (const QPointer<TParaClass> &other : std::as_const(m_same)) {
        if (!other) continue;
        other->m_fromMirror = true;
        other->SetText(text);
        other->m_fromMirror = false;
    }
}

void TParaClass::SucheGleicheParameter()
{
    if (!m_table || m_table->TextRestoring() || GetKoordinate().isEmpty()) return;
    const QString key = paractl::koordinateKey(GetKoordinate());
    m_same.erase(std::remove_if(m_same.begin(), m_same.end(),
                                [&key](const QPointer<TParaClass> &c) {
                                    return !c || paractl::koordinateKey(c->GetKoordinate()) != key;
                                }),
                 m_same.end());
    QWidget *form = window();
    QList<TParaClass *> found = paractl::Registry::instance().byKoordinate(key);
    found.removeIf([this, form](TParaClass *c) { return c == this || c->window() != form; });
    std::sort(found.begin(), found.end(), [form](TParaClass *a, TParaClass *b) {
        return paractl::depthFirstBefore(form, a, b);
    });
    for (TParaClass *other : found) {
        if (!m_same.contains(QPointer<TParaClass>(other))) m_same << other;
        if (!other->m_same.contains(QPointer<TParaClass>(this))) other->m_same << this;
    }
}

void TParaClass::RefreshVisible()
{
    if (m_table) m_table->RefreshVisibleParaControl(this);
}

// --- change, enter, exit -------------------------------------------------------------------------

void TParaClass::MyOnChange(QObject *sender)
{
    if (m_info && m_infoButton) updateInfoButton();
    if (m_input) {
        if (!m_fromMirror && !m_building && (Focused() || sender == m_input || !sender))
            BroadcastToSameParams();
        for (const quintptr handle : std::as_const(m_notify))
            PostMessage(handle, wmParaChanged, quintptr(this), 0);
        SetCtrlColor();
        m_input->update();
        // A value that comes from the program or a choice is shown in full; typing
        // scrolls the field instead of growing it.
        if (!Focused() || !qobject_cast<QLineEdit *>(m_input)) fitInput();
        if (m_controlType == wctBinaryCheckBoxes && !m_bitBoxes.isEmpty()) {
            int value = 0;
            try {
                value = GetASInteger();
            } catch (const ConvertError &) {
                // GetASInteger has told the user; the boxes keep their state
            }
            const quint32 v = quint32(value);
            const int n = int(m_bitBoxes.size());
            for (int i = 0; i < n; ++i)
                m_bitBoxes[i]->setChecked((v & (1u << (n - 1 - i))) != 0);
        }
    }
    if (OnChange) OnChange(this);
    Q_EMIT valueChanged(GetText());
}

void TParaClass::MyEnter(QObject *sender)
{
    Q_UNUSED(sender)
    m_entryText = GetText();
    if (m_table) {
        ShowSelfRTFHelpText();
        if (m_table->TextRestoring() && Focused()) m_table->ClearTextRestore();
    }
    if (OnEnter) OnEnter(this);
    Q_EMIT entered();
}

void TParaClass::validateNumber()
{
    const bool sel = m_table && qobject_cast<TwizComboBox *>(m_input) &&
                     m_table->IstAuswahlParameter(m_table->GetRecNo(GetKoordinate(), false));
    const QString v = sel ? LExtractWord(1, GetText(), TCharSet(":"), ewMultipleDelim).trimmed()
                          : TrimFloat(GetText());
    double value = 0;
    if (!IsFloat(v) || !TryStrToFloat(v.trimmed(), value)) {
        ShowMessage(GetKoordinate() + QStringLiteral(": ") + s_MustBeANumber + QLatin1Char('\r') +
                    s_SetToDefault);
        SetText(m_default);
        return;
    }
    if (value >= m_ugw && value <= m_ogw) return;
    const QString unit = GetEinheit();
    MessageDlg(GetKoordinate() + QStringLiteral(":\r") + s_ValOutOfLims + QLatin1Char('\r') +
                   FloatToStr(m_ugw) + QLatin1Char(' ') + unit + QStringLiteral(" .. ") +
                   FloatToStr(m_ogw) + QLatin1Char(' ') + unit + QStringLiteral(" !\r") +
                   s_ValAdjusted,
               MsgDlgType::Warning, mbOK);
    SetText(FloatToStr(value < m_ugw ? m_ugw : m_ogw));
}

void TParaClass::MyExit(QObject *sender)
{
    Q_UNUSED(sender)
    if (!m_input || !m_table) return;
    {
        // A corrected value is written once, below, not also by the correction itself.
        const QScopedValueRollback<bool> exiting(m_exiting, true);
        if (BeforeExit) BeforeExit(this); // the first part: typed coordinates
        if (m_numeric && !qobject_cast<QCheckBox *>(m_input) &&
            !qobject_cast<TMyRadioGroup *>(m_input))
            validateNumber();
    }
    auto *combo = qobject_cast<TwizComboBox *>(m_input);
    if (combo && m_kind == 6) {
        const QStringList items = [combo] {
            QStringList l;
            for (int i = 0; i < combo->count(); ++i)
                l << combo->itemText(i);
            return l;
        }();
        const QString text = GetText().toUpper();
        int index = GetIndexOfValue(items, text);
        if (index < 0 && text.size() > 2 && text.at(1) == QLatin1Char('.'))
            index = GetIndexOfValue(items, text.mid(2));
        // A text the list lacks stays as typed: an index of -1 would blank it.
        if (index >= 0) combo->setCurrentIndex(index);
    }
    // Leaving a combo box by the keyboard or after the wheel posts a changed choice like
    // an edit; closing its list posts in any case.
    if (m_table->Online() == omOnline && (m_closingUp || GetText() != m_entryText)) {
        PostValue();
        m_entryText = GetText();
    } else if (m_table->Online() != omOnline && GetText() != m_entryText) {
        m_table->UserEdited(this); // kept until OK or Cancel, whatever the host answers
    }
    if (OnExit) OnExit(this);
    Q_EMIT left();
}

// A selection combo box holds only its current entry until its list opens. Entering it
// fills the list, so that the arrow keys, a typed key and the wheel can choose too.
void TParaClass::fillSelectionList()
{
    auto *combo = qobject_cast<TwizComboBox *>(m_input);
    if (combo && combo->count() < 2 && m_table &&
        m_table->IstAuswahlParameter(m_table->GetRecNo(GetKoordinate(), false)))
        InitAuswahlListe(true);
}

bool TParaClass::Focused() const
{
    if (m_controlType == wctBinaryCheckBoxes && !m_bitBoxes.isEmpty())
        return std::any_of(m_bitBoxes.begin(), m_bitBoxes.end(),
                           [](const QCheckBox *b) { return b->hasFocus(); });
    return m_input && (m_input->hasFocus() || m_input->isAncestorOf(QApplication::focusWidget()));
}

// --- keys ----------------------------------------------------------------------------------------

void TParaClass::MyKeyDown(QObject *sender, int &key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_F2)
        PostValue();
    else if (key == Qt::Key_F6)
        RefreshValue();
    if (OnKeyDown) OnKeyDown(sender, key, modifiers);
}

void TParaClass::MyKeyPress(QObject *sender, QChar &key)
{
    const bool backspace = key == QChar(8);
    if (m_table && m_table->Online() == omOnline && key == QChar(13)) {
        PostValue();
        m_entryText = GetText();
        key = QChar();
        return;
    }
    if (m_numeric && !backspace && !key.isNull()) {
        const QString allowed = QStringLiteral("0123456789,-.");
        if (!allowed.contains(key))
            key = QChar();
        else if (key == QLatin1Char(',') || key == QLatin1Char('.'))
            key = DecimalSeparator();
    }
    auto *edit = qobject_cast<QLineEdit *>(m_input);
    if (m_maxTextLength >= 1 && edit && !backspace && !key.isNull() &&
        edit->text().size() >= m_maxTextLength && !edit->hasSelectedText()) {
        key = QChar();
        Beep();
    }
    if (OnKeyPress && !key.isNull()) OnKeyPress(sender, key);
}

void TParaClass::MyKeyUp(QObject *sender, int &key, Qt::KeyboardModifiers modifiers)
{
    auto *edit = qobject_cast<QLineEdit *>(m_input);
    if (m_numeric && edit) {
        const QString text = edit->text();
        if (!text.isEmpty() && !IsFloat(text) && text != QLatin1String("-")) {
            Beep();
            edit->undo();
            // Undo only goes back one step; a text still not a number is put back to the
            // value the field had when it was entered.
            if (!edit->text().isEmpty() && !IsFloat(edit->text()) &&
                edit->text() != QLatin1String("-"))
                edit->setText(m_entryText);
        }
    }
    if (OnKeyUp) OnKeyUp(sender, key, modifiers);
}

namespace {

// Tab and Shift+Tab belong to the form: they move the focus and are no input.
bool isNavigationKey(const QKeyEvent *ke)
{
    return (ke->key() == Qt::Key_Tab || ke->key() == Qt::Key_Backtab) &&
           !(ke->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
}

} // namespace

// The edit field reports its keys down, its characters and its keys up; a selection
// combo box its keys down; check boxes and radio groups nothing, so Space and the arrows
// work there as everywhere. Returns true when a handler swallowed the key.
bool TParaClass::keyPressed(QObject *watched, QKeyEvent *ke)
{
    if (watched != m_input || !(qobject_cast<QLineEdit *>(m_input) || qobject_cast<QComboBox *>(m_input)))
        return false;
    int key = ke->key();
    MyKeyDown(watched, key, ke->modifiers());
    if (key == 0) return true;
    if (!qobject_cast<QLineEdit *>(m_input) || ke->text().isEmpty() || ke->modifiers() & (Qt::ControlModifier | Qt::AltModifier))
        return false;
    QChar c = ke->key() == Qt::Key_Return || ke->key() == Qt::Key_Enter ? QChar(13)
              : ke->key() == Qt::Key_Backspace                          ? QChar(8)
                                                                        : ke->text().at(0);
    const QChar typed = c;
    MyKeyPress(watched, c);
    if (c.isNull()) return true;
    if (c != typed) {
        if (auto *edit = qobject_cast<QLineEdit *>(m_input)) {
            edit->insert(QString(c));
            return true;
        }
    }
    return false;
}

bool TParaClass::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_lblKoordinate && event->type() == QEvent::MouseButtonRelease) {
        ShowSelfRTFHelpText(); // a click on the coordinate shows the parameter's help
        return false;
    }
    if (!m_input || (watched != m_input && !m_bitBoxes.contains(watched)))
        return QFrame::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::FocusIn:
        // Coming back from the open list must keep the list: the choice is still pending.
        if (static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason)
            fillSelectionList();
        MyEnter(watched);
        break;
    case QEvent::FocusOut:
        if (static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason)
            MyExit(watched);
        break;
    case QEvent::KeyPress: {
        auto *ke = static_cast<QKeyEvent *>(event);
        if (!isNavigationKey(ke) && keyPressed(watched, ke)) return true;
        break;
    }
    case QEvent::KeyRelease: {
        auto *ke = static_cast<QKeyEvent *>(event);
        if (ke->isAutoRepeat() || isNavigationKey(ke) || !qobject_cast<QLineEdit *>(m_input))
            break;
        int key = ke->key();
        MyKeyUp(watched, key, ke->modifiers());
        break;
    }
    default:
        break;
    }
    return QFrame::eventFilter(watched, event);
}

void TParaClass::connectInput()
{
    if (!m_input) return;
    m_input->installEventFilter(this);
    if (auto *edit = qobject_cast<QLineEdit *>(m_input))
        connect(edit, &QLineEdit::textChanged, this, [this, edit] { MyOnChange(edit); });
    else if (auto *combo = qobject_cast<QComboBox *>(m_input))
        connect(combo, &QComboBox::currentTextChanged, this, [this, combo] { MyOnChange(combo); });
    else if (auto *box = qobject_cast<QCheckBox *>(m_input))
        connect(box, &QCheckBox::toggled, this, [this, box] { MyOnChange(box); });
    else if (auto *group = qobject_cast<TMyRadioGroup *>(m_input)) {
        connect(group, &TMyRadioGroup::itemIndexChanged, this,
                [this, group] { MyOnChange(group); });
        // The focus sits on the group's buttons: the group reports entering and leaving.
        connect(group, &TMyRadioGroup::entered, this, [this, group] { MyEnter(group); });
        connect(group, &TMyRadioGroup::left, this, [this, group] { MyExit(group); });
    }
    for (QCheckBox *box : std::as_const(m_bitBoxes))
        box->installEventFilter(this);
}

void TParaClass::MyCheckBoxOnClick(QObject *sender)
{
    Q_UNUSED(sender)
    const int n = int(m_bitBoxes.size());
    quint32 value = 0;
    for (int i = 0; i < n; ++i) {
        if (m_bitBoxes[i]->isChecked()) value |= 1u << (n - 1 - i);
    }
    if (auto *edit = qobject_cast<QLineEdit *>(m_input))
        edit->setText(DecToBin(value, std::max(0, int(Round(std::log2(m_ogw + 1))))));
    if (OnClick) OnClick(this);
    PostValue();
    m_entryText = GetText(); // posted: moving on to the next bit posts nothing more
}

void TParaClass::mousePressEvent(QMouseEvent *event)
{
    QFrame::mousePressEvent(event);
    if (OnClick) OnClick(this);
}

// --- enable levels, colours, visibility --------------------------------------------------------

tParaEnabled TParaClass::GetInitialEnableLevel() const
{
    if (m_writeLevel == 6 || m_wizEnabled == pDisabled) return pDisabled;
    if (m_table && m_table->Online() == omRueckdoku) return pReadOnly;
    if (isDesigning() || m_wizEnabled == pReadOnly) return pReadOnly;
    // A parameter above the user's level can be seen but not changed.
    if (m_table && m_writeLevel > m_table->UserLevel()) return pReadOnly;
    return pEnabled;
}

void TParaClass::SetEnabled(tParaEnabled level)
{
    if (m_table) {
        m_enableLevel = std::max(level, GetInitialEnableLevel());
        setInputEnabled(m_enableLevel == pEnabled);
        SetCtrlColor();
    }
    if (OnEnabledChange) OnEnabledChange(this);
    Q_EMIT enabledChanged(m_enableLevel);
}

void TParaClass::setInputEnabled(bool enabled)
{
    if (m_input) m_input->setEnabled(enabled);
    for (QCheckBox *box : std::as_const(m_bitBoxes))
        box->setEnabled(enabled);
}

void TParaClass::SetwizEnabled(tParaEnabled level)
{
    m_wizEnabled = level;
    SetEnabled(level);
}

void TParaClass::SetToolHidden(bool hidden)
{
    if (m_toolInvisible == tiDisable)
        SetEnabled(hidden ? pDisabled : m_wizEnabled);
    else if (m_toolInvisible == tiInvisible)
        setVisible(!hidden && m_wizVisible);
}

void TParaClass::SetCtrlColor()
{
    if (!m_table || !m_input || qobject_cast<QCheckBox *>(m_input) ||
        qobject_cast<TMyRadioGroup *>(m_input))
        return;
    const bool rueck = m_table->Online() == omRueckdoku;
    if (m_enableLevel != pDisabled && !rueck) {
        const TColor colour = !IsDefault() && m_input->isEnabled() ? clInfoBk : clWindow;
        const QColor base = ColorToQColor(colour);
        if (m_input->palette().color(QPalette::Base) != base) { // a palette change repolishes
            QPalette pal = m_input->palette();
            pal.setColor(QPalette::Base, base);
            m_input->setPalette(pal);
        }
    } else if (rueck && m_writeLevel < 6) {
        if (auto *edit = qobject_cast<TwizEdit *>(m_input))
            edit->SetDisabledTextColor(IsDefault() ? m_table->RueckDokuFontColor() : 255);
    }
}

} // namespace drivewiz
