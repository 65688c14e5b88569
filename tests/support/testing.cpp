#include "testing.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace drivewiz::test {

DialogRecorder *g_recorder = nullptr; // set by the test main for every test

DialogRecorder &recorder()
{
    return *g_recorder;
}

QString sourcePath(const QString &relative)
{
    return QDir(QStringLiteral(DRIVEWIZ_SOURCE_DIR)).filePath(relative);
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
    return f.write(bytes) == bytes.size();
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace drivewiz::test
