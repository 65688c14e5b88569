#ifndef DRIVEWIZ_PLATFORM_MESSAGES_H
#define DRIVEWIZ_PLATFORM_MESSAGES_H

#include "drivewiz_global.h"

#include <QEvent>
#include <QObject>

#include <atomic>
#include <functional>

namespace drivewiz {

// Message numbers of the protocol between the host, the parameter table and the
// controls. The numbers are fixed: hosts post them by value.

#ifndef WM_USER // windows.h defines it as a macro with the same value
/// First message number free for applications.
inline constexpr uint WM_USER = 1024;
#endif
/// A parameter control changed; posted to the windows on its notify list.
/// wParam: the control that changed.
inline constexpr uint wmParaChanged = 1025;
/// The parameter table switched its online mode; posted to every subscribed window.
/// wParam: the new mode, lParam: 0.
inline constexpr uint wmOnlineChanged = 1027;
/// From the host: a parameter of the drive was written or refreshed.
/// wParam: the parameter address, lParam bit 0: the value changed.
inline constexpr uint wmToolMessage = 0x8006;
/// From the host: switch the online mode. wParam low byte: the new mode.
inline constexpr uint wmToolOnlineMode = 0x8007;

/// A window message as a Qt event: message number and its two parameters.
class DRIVEWIZ_EXPORT ToolMessageEvent : public QEvent
{
public:
    ToolMessageEvent(uint msg, quintptr wParam, qintptr lParam);

    /// The event type, registered with Qt once.
    static QEvent::Type eventType();

    uint message() const { return m_message; }
    quintptr wParam() const { return m_wParam; }
    qintptr lParam() const { return m_lParam; }

private:
    uint m_message;
    quintptr m_wParam;
    qintptr m_lParam;
};

/// A hidden window that receives posted messages, as the parameter table's message
/// window does for the host. It has a handle, a number that hosts keep and post to from
/// any thread; a handle is never reused, so a message for a window that is gone is
/// dropped rather than delivered to another one.
///
/// Messages are delivered in the thread the window lives in, through handleMessage(),
/// whose default calls onMessage. A subclass that must not receive messages while its
/// own destructor runs calls closeHandle() first thing in that destructor.
class DRIVEWIZ_EXPORT MessageWindow : public QObject
{
    Q_OBJECT

public:
    explicit MessageWindow(QObject *parent = nullptr);
    ~MessageWindow() override;

    /// The handle to post to; 0 once the handle is closed.
    quintptr handle() const { return m_handle.load(); }

    /// Takes the window out of reach: later posts to its handle fail and messages that
    /// are still queued are dropped. Called by the destructor.
    void closeHandle();

    /// Called for every message unless handleMessage() is overridden.
    std::function<void(uint msg, quintptr wParam, qintptr lParam)> onMessage;

protected:
    virtual void handleMessage(uint msg, quintptr wParam, qintptr lParam);
    bool event(QEvent *e) override;

private:
    std::atomic<quintptr> m_handle{0};
};

/// Posts a message to the window with the given handle and returns at once. Safe from
/// any thread. Returns false, and does nothing, when no window has that handle (never
/// created, closed or destroyed).
DRIVEWIZ_EXPORT bool PostMessage(quintptr handle, uint msg, quintptr wParam, qintptr lParam);

/// Posts a message as a ToolMessageEvent to any object (false for null). The caller
/// guarantees that the object lives until the call returns, so use this from the
/// object's own thread; a MessageWindow handles it like a message posted to its handle.
DRIVEWIZ_EXPORT bool PostMessage(QObject *target, uint msg, quintptr wParam, qintptr lParam);

} // namespace drivewiz

#endif // DRIVEWIZ_PLATFORM_MESSAGES_H
