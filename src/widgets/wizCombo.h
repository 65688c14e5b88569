#ifndef DRIVEWIZ_WIDGETS_WIZCOMBO_H
#define DRIVEWIZ_WIDGETS_WIZCOMBO_H

#include "drivewiz_global.h"
#include "platform/colors.h"

#include <QComboBox>

#include <functional>

namespace drivewiz {

/// The combo box of the parameter controls: a QComboBox that reports the opening and
/// closing of its list.
///
/// - Opening: showPopup() fires OnDropDown and emits droppedDown() once per opening,
///   before the list is shown, so a handler can still fill the items. Calling showPopup()
///   while the list is open repositions it and reports nothing. Qt shows no list for an
///   empty combo box; when the list stays closed no close-up follows.
/// - Closing: however the list closes (hidePopup(), a choice, Escape, a click outside, the
///   window losing the popup), DoCloseup() runs once per opening. It runs from the event
///   loop right after the closing, because Qt applies a choice made in the list only
///   after closing it: the handler sees the chosen item. Opening the list again first
///   delivers a close-up still pending. hidePopup() with no list open reports nothing.
///
/// DisabledColor and DisabledTextColor are kept (a changed value repaints a disabled
/// combo box) for the parameter controls to read; the combo box paints as QComboBox.
class DRIVEWIZ_EXPORT TwizComboBox : public QComboBox
{
    Q_OBJECT
    /// Background colour meant for the disabled state; clWindow by default.
    Q_PROPERTY(int DisabledColor READ DisabledColor WRITE SetDisabledColor)
    /// Text colour meant for the disabled state; clGrayText by default.
    Q_PROPERTY(int DisabledTextColor READ DisabledTextColor WRITE SetDisabledTextColor)

public:
    explicit TwizComboBox(QWidget *parent = nullptr);
    ~TwizComboBox() override;

    TColor DisabledColor() const { return m_disabledColor; }
    TColor DisabledTextColor() const { return m_disabledTextColor; }
    /// Stores a changed colour and repaints, but only a disabled combo box.
    virtual void SetDisabledColor(TColor color);
    virtual void SetDisabledTextColor(TColor color);

    void showPopup() override;
    void hidePopup() override;

    /// The list has closed (sender: this combo box).
    std::function<void(QObject *sender)> OnCloseUp;
    /// The list is about to open (sender: this combo box).
    std::function<void(QObject *sender)> OnDropDown;

Q_SIGNALS:
    void closedUp();
    void droppedDown();

protected:
    /// Fires OnCloseUp when assigned, then emits closedUp().
    virtual void DoCloseup();
    /// Fires OnDropDown when assigned, then emits droppedDown().
    virtual void DropDown();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool listVisible() const;
    void listClosed();
    void deliverCloseUp();

    TColor m_disabledColor = clWindow;
    TColor m_disabledTextColor = clGrayText;
    bool m_open = false;
    bool m_closeUpPending = false;
};

} // namespace drivewiz

#endif // DRIVEWIZ_WIDGETS_WIZCOMBO_H
