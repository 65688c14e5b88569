#include "session_fixture.h"

#include "lang/wizSprache.h"

#include <QCoreApplication>
#include <QFile>

using namespace drivewiz;

void HostSessionTest::SetUp()
{
    for (const char *name : {"wizling.1", "wizling.2"})
        QFile::copy(test::sourcePath(QStringLiteral("data/sample/") + QLatin1String(name)),
                    dir.filePath(QLatin1String(name)));
    SetConfigFolder(dir.path());
    options.dataDir = test::sourcePath(QStringLiteral("data/sample"));
    options.formsDir = test::sourcePath(QStringLiteral("apps/wizhost/forms"));
    options.logFile = dir.filePath(QStringLiteral("host.log"));
    session = std::make_unique<wizhost::HostSession>(options);
    QString error;
    ASSERT_TRUE(session->start(error)) << error.toStdString();
}

void HostSessionTest::TearDown()
{
    session.reset();
    SetConfigFolder(QString());
    ResetCommonStrings();
}

void HostSessionTest::settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}
