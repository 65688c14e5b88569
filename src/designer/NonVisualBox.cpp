// Non-visual components as labelled boxes in a form.

#include "designer/NonVisualBox.h"

#include <QEvent>
#include <QPainter>
#include <QWidget>

namespace drivewiz::designer {

NonVisualBox::NonVisualBox(QWidget *widget, const QIcon &icon) : QObject(widget), m_icon(icon)
{
    setObjectName(QStringLiteral("_drivewiz_box"));
}

void NonVisualBox::decorate(QWidget *widget, const QIcon &icon)
{
    if (!widget) return;
    widget->installEventFilter(new NonVisualBox(widget, icon));
    widget->setToolTip(QString::fromLatin1(widget->metaObject()->className()));
    widget->setVisible(true); // shown with its form
}

bool NonVisualBox::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Paint || !watched->isWidgetType())
        return QObject::eventFilter(watched, event);
    paint(static_cast<QWidget *>(watched));
    return true;
}

// Icon at the left; the component's name above its class, both cut with "..." when the
// box is too narrow.
void NonVisualBox::paint(QWidget *widget) const
{
    QPainter p(widget);
    const QPalette &pal = widget->palette();
    const QRect r = widget->rect().adjusted(0, 0, -1, -1);
    p.fillRect(r, pal.color(QPalette::Base));
    p.setPen(pal.color(QPalette::Mid));
    p.drawRect(r);
    const int icon = qMin(16, qMax(0, r.height() - 6));
    const QRect iconRect(r.left() + 4, r.top() + (r.height() - icon) / 2, icon, icon);
    m_icon.paint(&p, iconRect);
    const QRect text = r.adjusted(iconRect.right() + 4, 2, -3, -2);
    if (text.width() <= 0) return;
    const QFontMetrics fm(widget->font());
    const QString cls =
        QString::fromLatin1(widget->metaObject()->className()).remove(QStringLiteral("drivewiz::"));
    QFont bold = widget->font();
    bold.setBold(true);
    p.setPen(pal.color(QPalette::Text));
    p.setFont(bold);
    const QRect upper(text.left(), text.top(), text.width(), text.height() / 2);
    p.drawText(upper, Qt::AlignLeft | Qt::AlignBottom,
               QFontMetrics(bold).elidedText(widget->objectName(), Qt::ElideRight, text.width()));
    p.setFont(widget->font());
    p.setPen(pal.color(QPalette::PlaceholderText));
    const QRect lower(text.left(), upper.bottom() + 1, text.width(),
                      text.height() - upper.height());
    p.drawText(lower, Qt::AlignLeft | Qt::AlignTop,
               fm.elidedText(cls, Qt::ElideRight, text.width()));
}

} // namespace drivewiz::designer
