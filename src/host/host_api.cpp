// The C entry points of host_api.h that need no component: messages and the application.

#include "drivewiz/host_api.h"

#include "host/host_api_p.h"

#include "lang/wizDLLDefs.h"
#include "lang/wizSprache.h"
#include "platform/messages.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QList>
#include <QPointer>

#include <utility>

namespace drivewiz::hostapi {

namespace {

QList<QPointer<QObject>> &pending()
{
    static thread_local QList<QPointer<QObject>> objects;
    return objects;
}

} // namespace

void freeWhenDone(QObject *object)
{
    pending() << object;
    object->deleteLater();
}

void freeFinished()
{
    if (HostCallScope::depth() > 0) return;
    const QList<QPointer<QObject>> objects = std::exchange(pending(), {});
    for (const QPointer<QObject> &o : objects)
        delete o.data();
}

} // namespace drivewiz::hostapi

extern "C" {

int dwz_post_message(uintptr_t window, uint32_t message, uintptr_t wParam, intptr_t lParam)
{
    return drivewiz::PostMessage(quintptr(window), message, quintptr(wParam), qintptr(lParam)) ? 1
                                                                                               : 0;
}

int dwz_init(int *argc, char **argv)
{
    if (QCoreApplication::instance()) return 0;
    // The application object lives as long as the host process.
    static int fallbackArgc = 1;
    static char name[] = "drivewiz-host";
    static char *fallbackArgv[] = {name, nullptr};
    new QApplication(argc ? *argc : fallbackArgc, argc ? argv : fallbackArgv);
    return 1;
}

void dwz_set_config_folder(const char *folder)
{
    drivewiz::SetConfigFolder(folder ? QString::fromUtf8(folder) : QString());
}

void dwz_process_events(int milliseconds)
{
    if (!QCoreApplication::instance()) return;
    QDeadlineTimer deadline(milliseconds < 0 ? 0 : milliseconds);
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    } while (!deadline.hasExpired());
    // Forms and tables the host freed while the library used them go now, unless this
    // runs inside a callback (then the library may still be using them).
    drivewiz::hostapi::freeFinished();
}

} // extern "C"
