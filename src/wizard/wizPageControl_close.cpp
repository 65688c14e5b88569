// The wizard page control: OK and Cancel, the form's close, show and keys, and the
// online indicator.

#include "wizard/wizPageControl.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramctrls/ParamEditSession.h"
#include "paramtable/ParaTable.h"
#include "platform/dialogs.h"
#include "platform/screen.h"
#include "widgets/wizEdit.h"
#include "wizard/wizPageControl_p.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTextEdit>
#include <QTimer>

namespace drivewiz {

namespace {

// a * b / c rounded, as form sizes are scaled between screens.
int mulDiv(int a, int b, int c)
{
    return c == 0 ? a : int((qint64(a) * b + c / 2) / c);
}

} // namespace

namespace pagectl {

KeyPreview::KeyPreview(TwizPageControl *pageControl, QWidget *form)
    : QObject(pageControl), m_pageControl(pageControl), m_form(form)
{
    qApp->installEventFilter(this);
}

// Key events travel from the focused widget up to the form; only the first delivery,
// to the focused widget (or to the form when nothing has the focus), is previewed.
bool KeyPreview::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !m_form || !watched->isWidgetType()) return false;
    auto *w = static_cast<QWidget *>(watched);
    if (w->window() != m_form) return false;
    QWidget *focus = QApplication::focusWidget();
    if (w != (focus && focus->window() == m_form ? focus : m_form.data())) return false;
    if (!m_pageControl->OnFormKeyPress(static_cast<QKeyEvent *>(event))) return false;
    event->accept();
    return true;
}

ClickKeeper::ClickKeeper(QObject *parent, QWidget *form) : QObject(parent), m_form(form)
{
    qApp->installEventFilter(this);
}

// The press reaches the button only after the focus has moved, so a message shown by the
// field left behind has already run its own loop; the release went to it, and the mouse
// state says so.
bool ClickKeeper::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::MouseButtonPress || !event->spontaneous() || !m_form) return false;
    auto *button = qobject_cast<QAbstractButton *>(watched);
    if (!button || button->window() != m_form) return false;
    if (static_cast<QMouseEvent *>(event)->button() != Qt::LeftButton) return false;
    if (QGuiApplication::mouseButtons() & Qt::LeftButton) return false; // still held: normal
    QTimer::singleShot(0, button, [button] {
        if (button->isEnabled() && button->isVisible()) button->click();
    });
    return true;
}

QLineEdit *editOf(QWidget *focused)
{
    if (auto *edit = qobject_cast<QLineEdit *>(focused)) return edit;
    if (auto *combo = qobject_cast<QComboBox *>(focused)) return combo->lineEdit();
    return nullptr;
}

} // namespace pagectl

void TwizPageControl::watchForm()
{
    QWidget *form = window();
    if (m_form == form) return;
    if (m_form) m_form->removeEventFilter(this);
    delete m_keyPreview;
    m_keyPreview = nullptr;
    delete m_clickKeeper;
    m_clickKeeper = nullptr;
    m_form = form;
    if (form == this) return; // a page control without a form has nothing to watch
    form->installEventFilter(this);
    m_keyPreview = new pagectl::KeyPreview(this, form);
    m_clickKeeper = new pagectl::ClickKeeper(this, form);
}

// --- OK and Cancel ---------------------------------------------------------------------------

// OK pressed by a key leaves the focused field where it is: what the user typed or chose
// there is checked and, online, posted now, as leaving the field would.
void TwizPageControl::commitFocusedControl()
{
    QWidget *focus = QApplication::focusWidget();
    for (QWidget *w = focus; w && w != window(); w = w->parentWidget()) {
        auto *control = qobject_cast<TParaClass *>(w);
        if (!control) continue;
        if (control->Focused()) control->MyExit(focus);
        return;
    }
}

void TwizPageControl::SaveAndClose()
{
    commitFocusedControl();
    if (m_table) {
        const bool wasBusy = m_table->Busy();
        m_table->SetBusy(true);
        if (OnBeforeSave) OnBeforeSave(this);
        Q_EMIT beforeSave();
        m_saved = true;
        if (m_table && m_table->Online() == omOffline) m_table->PostAllParams();
        if (m_table) m_table->SetBusy(wasBusy);
    }
    closeForm(mrOk);
}

void TwizPageControl::CancelWizard()
{
    closeForm(mrCancel);
}

// A QDialog closes with accept() for OK, as its host's exec() expects; Qt sends no close
// event then, so the close handling runs here. Everything else closes through close().
void TwizPageControl::closeForm(int result)
{
    QWidget *form = window();
    form->setProperty(ModalResultProperty, result);
    auto *dialog = qobject_cast<QDialog *>(form);
    if (dialog && result == mrOk) {
        if (MyOnClose()) {
            dialog->accept();
            return;
        }
    } else if (form->close()) {
        if (result == mrCancel) {
            // Cancelled: the values go back, and so do the steps that led to them.
            if (ParamEditSession *session = ParamEditSession::find(form)) session->discard();
        }
        return;
    }
    form->setProperty(ModalResultProperty, int(mrNone));
}

bool TwizPageControl::MyOnClose()
{
    if (!m_saved && m_table && m_table->Online() == omOffline) {
        const QString question =
            s_Cancel + QStringLiteral("?\r(") + s_ModifWillBeLost + QStringLiteral(")");
        if (MessageDlg(question, MsgDlgType::Confirmation, mbYesNo) != mrYes) return false;
    }
    if (!m_table) return true;
    m_table->ClearUpdateList();
    storeFormSize();
    return true;
}

// wiz.cfg holds sizes at 96 pixels per inch, whatever screen the wizard ran on.
void TwizPageControl::storeFormSize()
{
    const QWidget *form = window();
    const int ppi = ScreenPixelsPerInch();
    m_table->WriteCFGInteger(QStringLiteral("FormHeight"), mulDiv(form->height(), 96, ppi));
    m_table->WriteCFGInteger(QStringLiteral("FormWidth"), mulDiv(form->width(), 96, ppi));
}

void TwizPageControl::MyOnShow()
{
    if (!m_table) return;
    QWidget *form = window();
    const int ppi = ScreenPixelsPerInch();
    const int height = m_table->ReadCFGInteger(QStringLiteral("FormHeight"), 0);
    const int width = m_table->ReadCFGInteger(QStringLiteral("FormWidth"), 0);
    QSize size = form->size();
    if (height > 0 && height < QWIDGETSIZE_MAX) size.setHeight(mulDiv(height, ppi, 96));
    if (width > 0 && width < QWIDGETSIZE_MAX) size.setWidth(mulDiv(width, ppi, 96));
    // A size stored where the screen was small (or the scale large) would cut the form's
    // contents here: the form opens at least as large as it was built. A size stored on a
    // larger screen must not push the buttons off this one.
    size = size.expandedTo(form->size());
    if (const QScreen *screen = form->screen())
        size = size.boundedTo(screen->availableGeometry().size());
    if (size != form->size()) form->resize(size);
}

void TwizPageControl::SetBtnCalcelVisible(bool visible)
{
    if (m_btnCancel) m_btnCancel->setVisible(visible);
}

bool TwizPageControl::GetBtnCalcelVisible() const
{
    return m_btnCancel && !m_btnCancel->isHidden();
}

// --- keys ------------------------------------------------------------------------------------

bool TwizPageControl::OnFormKeyPress(QKeyEvent *event)
{
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return false;
    QWidget *focus = QApplication::focusWidget();
    QLineEdit *edit = pagectl::editOf(focus);
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && edit && edit == m_searchEdit) return false; // SearchKeyPress takes it
    if (!m_btnCancel) return false;
    const bool undoable = edit && edit->isUndoAvailable();
    switch (event->key()) {
    case Qt::Key_Escape:
        if (undoable) {
            edit->undo();
            edit->setText(edit->text()); // forgets the undo steps: the next Escape cancels
        } else {
            CancelWizard();
        }
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        // The edit takes its own Enter, and so do text boxes; a focused push button is
        // pressed, as in any dialog of the desktop.
        if (undoable || qobject_cast<QTextEdit *>(focus) || qobject_cast<QPlainTextEdit *>(focus))
            return false;
        if (auto *button = qobject_cast<QPushButton *>(focus)) {
            button->click();
            return true;
        }
        QString question =
            s_TerminateWiz + QStringLiteral("?\r(") + s_ModifWillRetain + QStringLiteral(")");
        if (const ParamEditSession *session = ParamEditSession::find(this)) {
            const QString changed = session->changedSummary();
            if (!changed.isEmpty()) question += QStringLiteral("\r\r") + changed;
        }
        if (MessageDlg(question, MsgDlgType::Confirmation, mbYesNo) == mrYes) {
            commitFocusedControl(); // the changes are kept: the focused field's too
            CancelWizard();
        }
        return true;
    }
    default:
        return false;
    }
}

// --- online indicator ------------------------------------------------------------------------

void TwizPageControl::CheckOnlineMode()
{
    if (isDesigning() || !m_table) return;
    const tOnlineModus mode = m_table->Online();
    if (mode == omOnline)
        m_onlineTimer->start();
    else
        m_onlineTimer->stop();
    if (m_onlinePanel) {
        m_onlinePanel->setVisible(mode != omOffline);
        m_onlinePanel->setText(mode == omRueckdoku ? s_RuckDoku : QStringLiteral("Online"));
        placePanel(); // as wide as its text
        if (mode != omOffline) setPanelColor(mode == omOnline ? clLime : clYellow);
    }
    if (mode == omOnline && m_e48) m_table->SubscribeParaControlUpdate(m_e48);
    updateOkHint();
    if (m_btnCancel) m_btnCancel->setVisible(mode == omOffline);
}

void TwizPageControl::updateOkHint()
{
    if (!m_btnOK) return;
    const bool rueckDoku = m_table && m_table->Online() == omRueckdoku;
    m_btnOK->setToolTip(rueckDoku ? s_TerminateWiz
                                  : s_TerminateWiz + QStringLiteral(" (") + s_ModifWillRetain +
                                        QStringLiteral(")"));
}

// The table switched its mode: it rebuilt the controls; the live page needs its
// subscriptions, which the table leaves to the page control.
void TwizPageControl::OnlineChangeMsg()
{
    CheckOnlineMode();
    if (!m_table || m_table->Online() != omOnline || isDesigning()) return;
    if (QWidget *page = currentWidget()) m_table->RegisterOnlineUpdatePars(page);
    if (m_e48) m_e48->RefreshValue();
}

void TwizPageControl::OnTimerOnline()
{
    if (!m_onlinePanel) return;
    const QString state = m_e48 ? m_e48->GetText() : QString();
    if (m_panelColor != clBtnFace) {
        setPanelColor(clBtnFace);
    } else {
        // E48 holds the drive state as a number or a selection entry "5: ..."; 5 is a fault.
        bool ok = false;
        const int key = state.section(QLatin1Char(':'), 0, 0).trimmed().toInt(&ok);
        setPanelColor(ok && key == 5 ? clRed : clLime);
    }
    m_onlinePanel->setToolTip(QStringLiteral("Online\n") + state);
}

void TwizPageControl::setPanelColor(TColor color)
{
    m_panelColor = color;
    if (!m_onlinePanel) return;
    QPalette pal = m_onlinePanel->palette();
    pal.setColor(QPalette::Window, ColorToQColor(color, pal));
    m_onlinePanel->setPalette(pal);
}

} // namespace drivewiz
