#include "platform/screen.h"

#include <QGuiApplication>
#include <QScreen>

#include <atomic>

namespace drivewiz {

namespace {
std::atomic<int> g_override{0};
}

int ScreenPixelsPerInch()
{
    if (const int fixed = g_override.load(); fixed > 0) return fixed;
    // A QCoreApplication has no screens, and asking QGuiApplication then would abort.
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())) return 96;
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen) return 96;
    const int dpi = qRound(screen->logicalDotsPerInch());
    return dpi > 0 ? dpi : 96;
}

void SetScreenPixelsPerInchOverride(int pixelsPerInch)
{
    g_override.store(pixelsPerInch > 0 ? pixelsPerInch : 0);
}

} // namespace drivewiz
