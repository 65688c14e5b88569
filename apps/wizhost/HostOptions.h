#ifndef DRIVEWIZ_WIZHOST_HOSTOPTIONS_H
#define DRIVEWIZ_WIZHOST_HOSTOPTIONS_H

#include <QString>
#include <QStringList>

#include "WizardCatalog.h"

namespace drivewiz::wizhost {

/// What the demo host was started with.
///
///     wizhost [language] [--data <dir>] [--forms <dir>] [--log <file>]
///             [--open <wizard>] [--tour <dir>] [--help]
///
/// The first argument, when it is a number, is the language (1 German, 2 English), as
/// the drive tool passes it to its wizards. The wizards are those of the catalog.
struct HostOptions
{
    bool help = false; ///< --help: print helpText and do nothing else
    QString helpText;
    QString dataDir;  ///< Parameter.csv, Auswahlen.csv, wizling.<n>
    QString formsDir; ///< DriveSetup.ui
    QString logFile;  ///< every log line is appended here too
    QString open;     ///< "setup", "overview" or "inputs": opened once the window shows
    QString tourDir;  ///< run the scripted tour and write its pictures here
    int language = 1;
};

/// Parses the arguments (the program's name first). False, with a message in `error`,
/// for an unknown option or a bad value. With --help (-h) it only fills `helpText`.
bool parseOptions(const QStringList &arguments, HostOptions &options, QString &error);

/// The folder of the sample data (or forms): beside the program as the build placed it,
/// else where the sources were.
QString defaultDataDir();
QString defaultFormsDir();

} // namespace drivewiz::wizhost

#endif // DRIVEWIZ_WIZHOST_HOSTOPTIONS_H
