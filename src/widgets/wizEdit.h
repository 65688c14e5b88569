#ifndef DRIVEWIZ_WIDGETS_WIZEDIT_H
#define DRIVEWIZ_WIDGETS_WIZEDIT_H

#include "drivewiz_global.h"
#include "platform/colors.h"

#include <QChar>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QList>
#include <QPushButton>
#include <QStringList>

#include <functional>

class QButtonGroup;
class QGridLayout;
class QRadioButton;

namespace drivewiz {

class TGroupButton;

/// The edit field of the parameter controls: a QLineEdit that stays readable while
/// disabled. Enabled, it paints exactly as QLineEdit. Disabled, it paints itself: the
/// frame as the style draws it, the client area (clientRect(), inside the frame) filled
/// with DisabledColor, and the whole text (displayText(), never the placeholder) in the
/// edit's own font and DisabledTextColor with a transparent background, its top-left at
/// client (1, 1), i.e. the baseline at 1 + ascent, clipped to the client area.
///
/// Colours are TColor values (platform/colors.h); a colour without a QColor (clDefault)
/// falls back to the disabled palette's Base and Text.
class DRIVEWIZ_EXPORT TwizEdit : public QLineEdit
{
    Q_OBJECT
    /// Background while disabled; clWindow by default.
    Q_PROPERTY(int DisabledColor READ DisabledColor WRITE SetDisabledColor)
    /// Text colour while disabled; clGrayText by default.
    Q_PROPERTY(int DisabledTextColor READ DisabledTextColor WRITE SetDisabledTextColor)

public:
    explicit TwizEdit(QWidget *parent = nullptr);
    explicit TwizEdit(const QString &text, QWidget *parent = nullptr);

    TColor DisabledColor() const { return m_disabledColor; }
    TColor DisabledTextColor() const { return m_disabledTextColor; }
    /// Stores a changed colour and repaints, but only a disabled edit.
    virtual void SetDisabledColor(TColor color);
    virtual void SetDisabledTextColor(TColor color);

    /// The client area: the widget inside the line edit's frame (all of it without a
    /// frame). The disabled text starts at its (1, 1).
    QRect clientRect() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintDisabled();

    TColor m_disabledColor = clWindow;
    TColor m_disabledTextColor = clGrayText;
};

/// The label of the wizards. Nothing of its own: the class exists so that forms and the
/// form loader can name it.
class DRIVEWIZ_EXPORT TwizLabel : public QLabel
{
    Q_OBJECT

public:
    explicit TwizLabel(QWidget *parent = nullptr);
    explicit TwizLabel(const QString &text, QWidget *parent = nullptr);
};

/// The push button of the wizards. Nothing of its own, like TwizLabel.
class DRIVEWIZ_EXPORT TwizButton : public QPushButton
{
    Q_OBJECT

public:
    explicit TwizButton(QWidget *parent = nullptr);
    explicit TwizButton(const QString &text, QWidget *parent = nullptr);
};

/// A radio group: a group box (its title is the caption) holding one radio button per
/// item, exclusive, in `Columns` columns filled top to bottom, then left to right (item i
/// is in column i / rows, row i % rows, rows = ceil(count / columns)). The buttons have
/// no object names; button(i) reaches them.
///
/// Keyboard: every key event of the group box and of its buttons is reported with the
/// group as sender, before the button handles it:
/// - a key press calls OnKeyDown(sender, key, modifiers) with key = QKeyEvent::key()
///   (a Qt::Key), auto-repeats included; then, when the event carries text, OnKeyPress
///   (sender, ch) with its first character ('\r' for Return, '\b' for Backspace). A
///   handler swallows the key by setting key to 0 or ch to QChar(): the event is then
///   accepted and not handed to the button (both handlers still run). Another value is
///   not passed on: the button sees the original event.
/// - a key release calls OnKeyUp(sender, key, modifiers); key = 0 swallows it. Releases
///   of auto-repeat are not reported, so a held key gives many key downs and one key up.
/// Tab and Backtab move the focus before any key handling and are not reported.
///
/// Focus: the group is entered when the focus comes to one of its buttons from outside
/// the group, and left when it goes from a button to a widget outside; OnEnter and
/// entered(), OnExit and left() report it (moving between its own buttons reports
/// nothing; nor does the focus going to a popup and coming back).
///
/// A user's choice (click, Space, arrow keys) sets ItemIndex, then emits
/// itemIndexChanged and fires OnClick; clicking the checked button does nothing.
/// Setting ItemIndex in code emits itemIndexChanged but does not fire OnClick.
class DRIVEWIZ_EXPORT TMyRadioGroup : public QGroupBox
{
    Q_OBJECT
    /// One text per radio button; setting a different list rebuilds the buttons.
    Q_PROPERTY(QStringList Items READ Items WRITE SetItems)
    /// The checked item, -1 for none.
    Q_PROPERTY(int ItemIndex READ ItemIndex WRITE SetItemIndex NOTIFY itemIndexChanged)
    /// Number of button columns, 1 to 16.
    Q_PROPERTY(int Columns READ Columns WRITE SetColumns)

public:
    using KeyEvent = std::function<void(QObject *sender, int &key, Qt::KeyboardModifiers)>;
    using KeyPressEvent = std::function<void(QObject *sender, QChar &key)>;

    explicit TMyRadioGroup(QWidget *parent = nullptr);
    ~TMyRadioGroup() override;

    QStringList Items() const { return m_items; }
    /// Rebuilds the buttons. ItemIndex is kept when still valid, else it becomes the last
    /// item (-1 for an empty list).
    void SetItems(const QStringList &items);
    int ItemIndex() const { return m_itemIndex; }
    /// Checks item `index`; values below -1 count as -1, values past the end as the last
    /// item.
    void SetItemIndex(int index);
    int Columns() const { return m_columns; }
    /// Clamped to 1..16.
    void SetColumns(int columns);

    /// The radio button of item `index`; null when there is none.
    QRadioButton *button(int index) const;

    std::function<void(QObject *sender)> OnClick;
    std::function<void(QObject *sender)> OnEnter;
    std::function<void(QObject *sender)> OnExit;
    KeyEvent OnKeyDown;
    KeyEvent OnKeyUp;
    KeyPressEvent OnKeyPress;

Q_SIGNALS:
    void itemIndexChanged(int index);
    /// The focus came into the group.
    void entered();
    /// The focus left the group.
    void left();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    friend class TGroupButton;

    void buttonFocusIn(QFocusEvent *event);
    void buttonFocusOut(QFocusEvent *event);
    bool forwardKeyPress(QKeyEvent *event);
    bool forwardKeyRelease(QKeyEvent *event);
    void buttonClicked(int index);
    void checkButton(int index);
    void clearButtons();
    void arrangeButtons();

    QStringList m_items;
    int m_itemIndex = -1;
    int m_columns = 1;
    QButtonGroup *m_group = nullptr;
    QGridLayout *m_layout = nullptr;
    QList<TGroupButton *> m_buttons;
    // A key event a button did not accept, which Qt hands to this group next; it was
    // reported already. Only compared, never dereferenced.
    const QKeyEvent *m_reported = nullptr;
    bool m_focusInside = false;
};

} // namespace drivewiz

#endif // DRIVEWIZ_WIDGETS_WIZEDIT_H
