// The drivewiz demo host: a configuration tool's main window with a simulated drive
// behind the library's C host interface, or, with --tour, a scripted walk through its
// wizards that needs no display.

#include "HostOptions.h"
#include "HostSession.h"
#include "HostWindow.h"
#include "Tour.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <cstring>

using namespace drivewiz::wizhost;

namespace {

// Help needs no display: it is answered before a window system is asked for.
bool asksForHelp(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--help") || !std::strcmp(argv[i], "-h") ||
            !std::strcmp(argv[i], "-?") || !std::strcmp(argv[i], "--help-all"))
            return true;
    }
    return false;
}

int printHelp(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("wizhost"));
    HostOptions options;
    QString error;
    if (!parseOptions(QCoreApplication::arguments(), options, error) || !options.help) {
        std::fprintf(stderr, "wizhost: %s\n", qPrintable(error));
        return 2;
    }
    std::fputs(options.helpText.toUtf8().constData(), stdout);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (asksForHelp(argc, argv)) return printHelp(argc, argv);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("wizhost"));
    HostOptions options;
    QString error;
    if (!parseOptions(QApplication::arguments(), options, error)) {
        std::fprintf(stderr, "wizhost: %s\n", qPrintable(error));
        return 2;
    }
    HostSession session(options);
    if (!session.start(error)) {
        std::fprintf(stderr, "wizhost: %s\n", qPrintable(error));
        return 1;
    }
    HostWindow window(session);
    if (!options.tourDir.isEmpty()) return Tour(session, window, options.tourDir).run();

    window.show();
    if (const WizardInfo *open = findWizard(options.open)) {
        const Wizard which = open->id;
        QTimer::singleShot(0, &window, [&window, which] { window.openWizard(which); });
    }
    return QApplication::exec();
}
