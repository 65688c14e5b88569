#include "platform/messages.h"

#include <QCoreApplication>
#include <QMutex>
#include <QMutexLocker>

#include <unordered_map>

namespace drivewiz {

namespace {

// Live windows by handle. Posting holds the lock while it queues the event, and a
// window leaves the registry under the same lock before it is destroyed, so a post from
// another thread never touches a deleted object.
struct Registry
{
    QMutex mutex;
    std::unordered_map<quintptr, MessageWindow *> windows;
    quintptr lastHandle = 0;
};

Registry &registry()
{
    // Never destroyed: windows that outlive main() must still be able to unregister.
    static Registry *r = new Registry;
    return *r;
}

} // namespace

ToolMessageEvent::ToolMessageEvent(uint msg, quintptr wParam, qintptr lParam)
    : QEvent(eventType()), m_message(msg), m_wParam(wParam), m_lParam(lParam)
{}

QEvent::Type ToolMessageEvent::eventType()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

MessageWindow::MessageWindow(QObject *parent) : QObject(parent)
{
    Registry &r = registry();
    QMutexLocker lock(&r.mutex);
    m_handle = ++r.lastHandle;
    r.windows.emplace(m_handle, this);
}

MessageWindow::~MessageWindow()
{
    closeHandle();
}

void MessageWindow::closeHandle()
{
    {
        Registry &r = registry();
        QMutexLocker lock(&r.mutex);
        const quintptr h = m_handle.exchange(0);
        if (h == 0) return;
        r.windows.erase(h);
    }
    QCoreApplication::removePostedEvents(this, ToolMessageEvent::eventType());
}

void MessageWindow::handleMessage(uint msg, quintptr wParam, qintptr lParam)
{
    if (onMessage) onMessage(msg, wParam, lParam);
}

bool MessageWindow::event(QEvent *e)
{
    if (e->type() != ToolMessageEvent::eventType()) return QObject::event(e);
    // A message queued before closeHandle() but already taken from the queue.
    if (m_handle == 0) return true;
    const auto *m = static_cast<ToolMessageEvent *>(e);
    handleMessage(m->message(), m->wParam(), m->lParam());
    return true;
}

bool PostMessage(quintptr handle, uint msg, quintptr wParam, qintptr lParam)
{
    Registry &r = registry();
    QMutexLocker lock(&r.mutex);
    const auto it = r.windows.find(handle);
    if (it == r.windows.end()) return false;
    QCoreApplication::postEvent(it->second, new ToolMessageEvent(msg, wParam, lParam));
    return true;
}

bool PostMessage(QObject *target, uint msg, quintptr wParam, qintptr lParam)
{
    if (!target) return false;
    QCoreApplication::postEvent(target, new ToolMessageEvent(msg, wParam, lParam));
    return true;
}

} // namespace drivewiz
