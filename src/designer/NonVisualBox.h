#ifndef DRIVEWIZ_DESIGNER_NONVISUALBOX_H
#define DRIVEWIZ_DESIGNER_NONVISUALBOX_H

#include <QIcon>
#include <QObject>

class QWidget;

namespace drivewiz::designer {

/// Shows a component that has no looks at run time (the parameter table, say) as a small
/// labelled box in the form: its icon, its name and its class. The box paints over the
/// widget from an event filter, so the component itself stays as it is.
class NonVisualBox : public QObject
{
    Q_OBJECT

public:
    /// Makes `widget` visible in its form and paints it as a box from now on.
    static void decorate(QWidget *widget, const QIcon &icon);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    NonVisualBox(QWidget *widget, const QIcon &icon);
    void paint(QWidget *widget) const;

    QIcon m_icon;
};

} // namespace drivewiz::designer

#endif // DRIVEWIZ_DESIGNER_NONVISUALBOX_H
