#ifndef DRIVEWIZ_WIZARD_WIZPAGECONTROL_P_H
#define DRIVEWIZ_WIZARD_WIZPAGECONTROL_P_H

#include <QObject>
#include <QPointer>
#include <QSize>

class QLineEdit;
class QTabWidget;
class QWidget;

namespace drivewiz {

class TwizPageControl;

namespace pagectl {

/// The form's key preview: an application event filter that hands the key presses meant
/// for the focused widget of one form to the page control before the widget sees them.
class KeyPreview : public QObject
{
    Q_OBJECT

public:
    KeyPreview(TwizPageControl *pageControl, QWidget *form);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    TwizPageControl *m_pageControl;
    QPointer<QWidget> m_form;
};

/// Completes a click that a message ate: a press on a button of the form moves the focus
/// first, and leaving a field may show a message (a limit, a bad number); the user lets go
/// while it is up, so the button never sees the release. Such a press clicks the button
/// once the message has closed.
class ClickKeeper : public QObject
{
    Q_OBJECT

public:
    ClickKeeper(QObject *parent, QWidget *form);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPointer<QWidget> m_form;
};

/// Where the buttons of the wizard's row go: their common size, the back button's x, the
/// next button's distance from it, Cancel's and OK's x (coordinates of OK's parent).
struct ButtonRow
{
    QSize size;
    int backX = 0;
    int nextOffset = 0;
    int cancelX = 0;
    int okX = 0;
};

/// The tab widget a widget is a page of, and its index there; null when it is no page.
QTabWidget *tabWidgetOf(const QWidget *page, int *index = nullptr);
/// The edit field behind a focused widget: a line edit, or an editable combo box's.
QLineEdit *editOf(QWidget *focused);
/// Whether the widget itself can take the focus now.
bool acceptsFocus(const QWidget *w);
/// The widget that takes the focus for a container: itself, its focus proxy or its first
/// descendant (depth first) that can; null when none can.
QWidget *focusTarget(QWidget *w);

} // namespace pagectl
} // namespace drivewiz

#endif // DRIVEWIZ_WIZARD_WIZPAGECONTROL_P_H
