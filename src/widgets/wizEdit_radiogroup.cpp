#include "widgets/wizEdit.h"
#include "widgets/wizEdit_p.h"

#include <QApplication>
#include <QButtonGroup>
#include <QGridLayout>
#include <QKeyEvent>

namespace drivewiz {

namespace {
constexpr int kMaxColumns = 16;
}

TGroupButton::TGroupButton(const QString &text, TMyRadioGroup *group) : QRadioButton(text, group) {}

TMyRadioGroup *TGroupButton::group() const
{
    return qobject_cast<TMyRadioGroup *>(parentWidget());
}

void TGroupButton::keyPressEvent(QKeyEvent *event)
{
    TMyRadioGroup *owner = group();
    if (owner && owner->forwardKeyPress(event)) {
        event->accept();
        return;
    }
    QRadioButton::keyPressEvent(event);
    // Qt now hands the ignored event to the group box, which must not report it again.
    if (owner && !event->isAccepted()) owner->m_reported = event;
}

void TGroupButton::keyReleaseEvent(QKeyEvent *event)
{
    TMyRadioGroup *owner = group();
    if (owner && owner->forwardKeyRelease(event)) {
        event->accept();
        return;
    }
    QRadioButton::keyReleaseEvent(event);
    if (owner && !event->isAccepted()) owner->m_reported = event;
}

void TGroupButton::focusInEvent(QFocusEvent *event)
{
    QRadioButton::focusInEvent(event);
    if (TMyRadioGroup *owner = group()) owner->buttonFocusIn(event);
}

void TGroupButton::focusOutEvent(QFocusEvent *event)
{
    QRadioButton::focusOutEvent(event);
    if (TMyRadioGroup *owner = group()) owner->buttonFocusOut(event);
}

TMyRadioGroup::TMyRadioGroup(QWidget *parent)
    : QGroupBox(parent), m_group(new QButtonGroup(this)), m_layout(new QGridLayout(this))
{
    m_group->setExclusive(true);
    connect(m_group, &QButtonGroup::idClicked, this, &TMyRadioGroup::buttonClicked);
}

TMyRadioGroup::~TMyRadioGroup() = default;

void TMyRadioGroup::SetItems(const QStringList &items)
{
    if (items == m_items) return;
    clearButtons();
    m_items = items;
    for (int i = 0; i < m_items.size(); ++i) {
        auto *button = new TGroupButton(m_items.at(i), this);
        m_group->addButton(button, i);
        m_buttons.append(button);
    }
    arrangeButtons();
    const int index = qMin(m_itemIndex, int(m_items.size()) - 1);
    checkButton(index);
    if (index != m_itemIndex) {
        m_itemIndex = index;
        Q_EMIT itemIndexChanged(m_itemIndex);
    }
}

void TMyRadioGroup::SetItemIndex(int index)
{
    index = qBound(-1, index, int(m_items.size()) - 1);
    if (index == m_itemIndex) return;
    m_itemIndex = index;
    checkButton(index);
    Q_EMIT itemIndexChanged(m_itemIndex);
}

void TMyRadioGroup::SetColumns(int columns)
{
    columns = qBound(1, columns, kMaxColumns);
    if (columns == m_columns) return;
    m_columns = columns;
    arrangeButtons();
}

QRadioButton *TMyRadioGroup::button(int index) const
{
    return index >= 0 && index < m_buttons.size() ? m_buttons.at(index) : nullptr;
}

void TMyRadioGroup::keyPressEvent(QKeyEvent *event)
{
    if (event == m_reported) {
        m_reported = nullptr;
    } else if (forwardKeyPress(event)) {
        event->accept();
        return;
    }
    QGroupBox::keyPressEvent(event);
}

void TMyRadioGroup::keyReleaseEvent(QKeyEvent *event)
{
    if (event == m_reported) {
        m_reported = nullptr;
    } else if (forwardKeyRelease(event)) {
        event->accept();
        return;
    }
    QGroupBox::keyReleaseEvent(event);
}

void TMyRadioGroup::buttonFocusIn(QFocusEvent *event)
{
    if (m_focusInside || event->reason() == Qt::PopupFocusReason) return;
    m_focusInside = true;
    if (OnEnter) OnEnter(this);
    Q_EMIT entered();
}

// When the focus moves on, Qt already names the widget that gets it.
void TMyRadioGroup::buttonFocusOut(QFocusEvent *event)
{
    if (!m_focusInside || event->reason() == Qt::PopupFocusReason) return;
    const QWidget *next = QApplication::focusWidget();
    if (next && isAncestorOf(next)) return;
    m_focusInside = false;
    if (OnExit) OnExit(this);
    Q_EMIT left();
}

bool TMyRadioGroup::forwardKeyPress(QKeyEvent *event)
{
    bool swallowed = false;
    if (OnKeyDown) {
        int key = event->key();
        OnKeyDown(this, key, event->modifiers());
        swallowed = key == 0;
    }
    // Like the platform, a key swallowed on its way down still reports its character.
    if (OnKeyPress && !event->text().isEmpty()) {
        QChar ch = event->text().at(0);
        OnKeyPress(this, ch);
        swallowed = swallowed || ch.isNull();
    }
    return swallowed;
}

bool TMyRadioGroup::forwardKeyRelease(QKeyEvent *event)
{
    if (!OnKeyUp || event->isAutoRepeat()) return false;
    int key = event->key();
    OnKeyUp(this, key, event->modifiers());
    return key == 0;
}

void TMyRadioGroup::buttonClicked(int index)
{
    if (index == m_itemIndex) return;
    m_itemIndex = index;
    Q_EMIT itemIndexChanged(m_itemIndex);
    if (OnClick) OnClick(this);
}

void TMyRadioGroup::checkButton(int index)
{
    if (index >= 0) {
        m_buttons.at(index)->setChecked(true);
        return;
    }
    // An exclusive group keeps one button checked; lift that for a moment to clear it.
    if (QAbstractButton *checked = m_group->checkedButton()) {
        m_group->setExclusive(false);
        checked->setChecked(false);
        m_group->setExclusive(true);
    }
}

void TMyRadioGroup::clearButtons()
{
    // A handler of a button's click may set new items: delete the old buttons later.
    for (TGroupButton *button : std::as_const(m_buttons)) {
        m_group->removeButton(button);
        m_layout->removeWidget(button);
        button->hide();
        button->deleteLater();
    }
    m_buttons.clear();
}

void TMyRadioGroup::arrangeButtons()
{
    for (TGroupButton *button : std::as_const(m_buttons))
        m_layout->removeWidget(button);
    const int count = int(m_buttons.size());
    const int rows = qMax(1, (count + m_columns - 1) / m_columns);
    for (int i = 0; i < count; ++i)
        m_layout->addWidget(m_buttons.at(i), i % rows, i / rows);
    // The columns share the width equally, as the platform's radio group does.
    for (int c = 0; c < m_layout->columnCount(); ++c)
        m_layout->setColumnStretch(c, c < m_columns ? 1 : 0);
}

} // namespace drivewiz
