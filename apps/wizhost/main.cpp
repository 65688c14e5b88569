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

using namespace drivewiz::wizhost;

int main(int argc, char **argv)
{
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
    if (!options.open.isEmpty()) {
        const Wizard which = options.open == QLatin1String("setup")     ? Wizard::Setup
                             : options.open == QLatin1String("outputs") ? Wizard::Outputs
                                                                        : Wizard::Overview;
        QTimer::singleShot(0, &window, [&window, which] { window.openWizard(which); });
    }
    return QApplication::exec();
}
