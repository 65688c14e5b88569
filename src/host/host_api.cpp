// The C entry points of host_api.h that need no component: messages and the application.

#include "drivewiz/host_api.h"

#include "lang/wizDLLDefs.h"
#include "lang/wizSprache.h"
#include "platform/messages.h"

#include <QApplication>
#include <QDeadlineTimer>

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
    if (drivewiz::HostCallScope::depth() == 0)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // extern "C"
