#include "HostOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace drivewiz::wizhost {

namespace {

QString firstExisting(const char *relative, const char *absolute)
{
    const QString beside =
        QDir(QCoreApplication::applicationDirPath()).filePath(QLatin1String(relative));
    return QFileInfo(beside).isDir() ? QDir::cleanPath(beside) : QString::fromUtf8(absolute);
}

} // namespace

QString defaultDataDir()
{
    return firstExisting(WIZHOST_DATA_REL, WIZHOST_DATA_ABS);
}

QString defaultFormsDir()
{
    return firstExisting(WIZHOST_FORMS_REL, WIZHOST_FORMS_ABS);
}

namespace {

// What --help adds below Qt's list of options.
QString helpDetails()
{
    QStringList wizards;
    for (const WizardInfo &w : wizardCatalog())
        wizards << QStringLiteral("  %1  %2").arg(w.name, -10).arg(w.caption);
    return QStringLiteral(
               "\nWizards (--open):\n%1\n\n"
               "The window opens the wizards and switches the simulated drive: online, offline\n"
               "or read-back, its enable (writes are then refused), the user level and the\n"
               "language. Its log lists every value that reached the drive.\n\n"
               "Files: the drive's Parameter.csv and Auswahlen.csv in the data folder, the\n"
               "language files wizling.1 (German) and wizling.2 (English) there or beside the\n"
               "program; wiz.cfg (the wizards' sizes) beside the language files.\n\n"
               "Without a display, --tour walks every wizard on Qt's offscreen platform and\n"
               "writes a picture per page (what `make demo` does). QT_SCALE_FACTOR=2 doubles\n"
               "everything for a high-resolution screen.\n\n"
               "Examples:\n"
               "  wizhost 2 --open setup              English, the set-up wizard at once\n"
               "  wizhost --log /tmp/drive.log        German, the log also into a file\n"
               "  QT_QPA_PLATFORM=offscreen wizhost --tour /tmp/pictures\n")
        .arg(wizards.join(QLatin1Char('\n')));
}

QString wizardNames()
{
    QStringList names;
    for (const WizardInfo &w : wizardCatalog())
        names << w.name;
    return names.join(QStringLiteral(", "));
}

} // namespace

bool parseOptions(const QStringList &arguments, HostOptions &options, QString &error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("drivewiz demo host: a configuration tool for a simulated two-axis servo "
                       "drive, with the library's parameter wizards."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption data(
        QStringLiteral("data"), QStringLiteral("Folder of the drive data: Parameter.csv, Auswahlen.csv, wizling.<n> "
                       "(default: the sample drive)."),
        QStringLiteral("dir"));
    const QCommandLineOption forms(QStringLiteral("forms"), QStringLiteral("Folder of the wizard forms (.ui)."),
                                   QStringLiteral("dir"));
    const QCommandLineOption log(QStringLiteral("log"), QStringLiteral("Append the log to a file as well."),
                                 QStringLiteral("file"));
    const QCommandLineOption open(QStringLiteral("open"),
                                  QStringLiteral("Open a wizard at start: %1.").arg(wizardNames()),
                                  QStringLiteral("wizard"));
    const QCommandLineOption tour(QStringLiteral("tour"),
                                  QStringLiteral("Walk every wizard as a user would, write a picture per page into dir, "
                       "print what reached the drive, and exit."),
                                  QStringLiteral("dir"));
    parser.addOptions({data, forms, log, open, tour});
    parser.addPositionalArgument(QStringLiteral("language"),
                                 QStringLiteral("1 German (default), 2 English."),
                                 QStringLiteral("[language]"));
    if (!parser.parse(arguments)) {
        error = parser.errorText() + QStringLiteral(" (wizhost --help lists the options)");
        return false;
    }
    if (parser.isSet(help) || parser.isSet(QStringLiteral("help-all"))) {
        options.help = true;
        options.helpText = parser.helpText() + helpDetails();
        return true;
    }
    options.dataDir = parser.isSet(data) ? parser.value(data) : defaultDataDir();
    options.formsDir = parser.isSet(forms) ? parser.value(forms) : defaultFormsDir();
    options.logFile = parser.value(log);
    options.open = parser.value(open);
    options.tourDir = parser.value(tour);
    if (!options.open.isEmpty() && !findWizard(options.open)) {
        error = QStringLiteral("--open takes one of %1, not \"%2\"").arg(wizardNames(), options.open);
        return false;
    }
    const QStringList rest = parser.positionalArguments();
    if (!rest.isEmpty()) {
        bool ok = false;
        options.language = rest.first().toInt(&ok);
        if (!ok || options.language < 1) {
            error = QStringLiteral("the language is a number (1 German, 2 English), not \"%1\"")
                        .arg(rest.first());
            return false;
        }
    }
    return true;
}

} // namespace drivewiz::wizhost
