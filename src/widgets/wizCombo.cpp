#include "widgets/wizCombo.h"

#include <QAbstractItemView>
#include <QEvent>

namespace drivewiz {

TwizComboBox::TwizComboBox(QWidget *parent) : QComboBox(parent) {}

TwizComboBox::~TwizComboBox() = default;

void TwizComboBox::SetDisabledColor(TColor color)
{
    if (color == m_disabledColor) return;
    m_disabledColor = color;
    if (!isEnabled()) update();
}

void TwizComboBox::SetDisabledTextColor(TColor color)
{
    if (color == m_disabledTextColor) return;
    m_disabledTextColor = color;
    if (!isEnabled()) update();
}

void TwizComboBox::showPopup()
{
    if (!m_open) {
        // A close-up still queued belongs to the previous opening and goes first.
        if (m_closeUpPending) deliverCloseUp();
        DropDown();
    }
    QComboBox::showPopup();
    if (m_open || !listVisible()) return;
    m_open = true;
    // Qt itself closes the list in several ways that bypass hidePopup(); its hiding
    // catches them all. Installing twice keeps one filter.
    view()->window()->installEventFilter(this);
}

void TwizComboBox::hidePopup()
{
    QComboBox::hidePopup();
    if (m_open && !listVisible()) listClosed();
}

void TwizComboBox::DoCloseup()
{
    if (OnCloseUp) OnCloseUp(this);
    Q_EMIT closedUp();
}

void TwizComboBox::DropDown()
{
    if (OnDropDown) OnDropDown(this);
    Q_EMIT droppedDown();
}

bool TwizComboBox::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Hide && m_open && watched == view()->window()) listClosed();
    return QComboBox::eventFilter(watched, event);
}

bool TwizComboBox::listVisible() const
{
    return view()->window()->isVisible();
}

void TwizComboBox::listClosed()
{
    m_open = false;
    m_closeUpPending = true;
    // Qt applies a choice from the list after hiding it; report once that is done.
    QMetaObject::invokeMethod(this, &TwizComboBox::deliverCloseUp, Qt::QueuedConnection);
}

void TwizComboBox::deliverCloseUp()
{
    if (!m_closeUpPending) return;
    m_closeUpPending = false;
    DoCloseup();
}

} // namespace drivewiz
