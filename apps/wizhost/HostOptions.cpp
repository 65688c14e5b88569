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

bool parseOptions(const QStringList &arguments, HostOptions &options, QString &error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("drivewiz demo host with a simulated drive"));
    const QCommandLineOption data(
        QStringLiteral("data"), QStringLiteral("Folder of the drive data."), QStringLiteral("dir"));
    const QCommandLineOption forms(QStringLiteral("forms"), QStringLiteral("Folder of the forms."),
                                   QStringLiteral("dir"));
    const QCommandLineOption log(QStringLiteral("log"), QStringLiteral("Append the log to a file."),
                                 QStringLiteral("file"));
    const QCommandLineOption open(
        QStringLiteral("open"),
        QStringLiteral("Open a wizard at start: setup, overview or outputs."),
        QStringLiteral("wizard"));
    const QCommandLineOption tour(QStringLiteral("tour"),
                                  QStringLiteral("Run the scripted tour, pictures into dir."),
                                  QStringLiteral("dir"));
    parser.addOptions({data, forms, log, open, tour});
    parser.addPositionalArgument(QStringLiteral("language"), QStringLiteral("1 German, 2 English"));
    if (!parser.parse(arguments)) {
        error = parser.errorText();
        return false;
    }
    options.dataDir = parser.isSet(data) ? parser.value(data) : defaultDataDir();
    options.formsDir = parser.isSet(forms) ? parser.value(forms) : defaultFormsDir();
    options.logFile = parser.value(log);
    options.open = parser.value(open);
    options.tourDir = parser.value(tour);
    if (!options.open.isEmpty() && options.open != QLatin1String("setup") &&
        options.open != QLatin1String("overview") && options.open != QLatin1String("outputs")) {
        error = QStringLiteral("--open takes \"setup\", \"overview\" or \"outputs\", not \"%1\"")
                    .arg(options.open);
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
