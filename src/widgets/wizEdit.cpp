#include "widgets/wizEdit.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

namespace drivewiz {

TwizEdit::TwizEdit(QWidget *parent) : QLineEdit(parent) {}

TwizEdit::TwizEdit(const QString &text, QWidget *parent) : QLineEdit(text, parent) {}

void TwizEdit::SetDisabledColor(TColor color)
{
    if (color == m_disabledColor) return;
    m_disabledColor = color;
    // An enabled edit does not show these colours.
    if (!isEnabled()) update();
}

void TwizEdit::SetDisabledTextColor(TColor color)
{
    if (color == m_disabledTextColor) return;
    m_disabledTextColor = color;
    if (!isEnabled()) update();
}

QRect TwizEdit::clientRect() const
{
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    const int frame = panel.lineWidth;
    return rect().adjusted(frame, frame, -frame, -frame);
}

void TwizEdit::paintEvent(QPaintEvent *event)
{
    if (isEnabled()) {
        QLineEdit::paintEvent(event);
        return;
    }
    paintDisabled();
}

void TwizEdit::paintDisabled()
{
    QPainter painter(this);
    // The frame stays as the style draws a disabled edit; only the client area is ours,
    // just as the window system draws a border outside an edit's client area.
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &panel, &painter, this);

    const QPalette &pal = palette();
    QColor background = ColorToQColor(m_disabledColor, pal);
    if (!background.isValid()) background = pal.color(QPalette::Disabled, QPalette::Base);
    QColor textColor = ColorToQColor(m_disabledTextColor, pal);
    if (!textColor.isValid()) textColor = pal.color(QPalette::Disabled, QPalette::Text);

    const QRect client = clientRect();
    painter.fillRect(client, background);
    const QString text = displayText();
    if (text.isEmpty()) return;
    painter.setClipRect(client);
    painter.setBackgroundMode(Qt::TransparentMode);
    painter.setFont(font());
    painter.setPen(textColor);
    const QPoint origin = client.topLeft() + QPoint(1, 1);
    painter.drawText(origin + QPoint(0, QFontMetrics(font()).ascent()), text);
}

TwizLabel::TwizLabel(QWidget *parent) : QLabel(parent) {}

TwizLabel::TwizLabel(const QString &text, QWidget *parent) : QLabel(text, parent) {}

TwizButton::TwizButton(QWidget *parent) : QPushButton(parent) {}

TwizButton::TwizButton(const QString &text, QWidget *parent) : QPushButton(text, parent) {}

} // namespace drivewiz
