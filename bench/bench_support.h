#ifndef DRIVEWIZ_BENCH_SUPPORT_H
#define DRIVEWIZ_BENCH_SUPPORT_H

// Shared by the benchmarks: where generated input files go, and making them once.

#include "gendesc.h"

#include <QDir>
#include <QString>

namespace drivewiz::bench {

/// The folder for generated files: $DRIVEWIZ_BENCH_DATA, else a folder in the temp dir.
inline QString dataDir()
{
    const QByteArray env = qgetenv("DRIVEWIZ_BENCH_DATA");
    const QString dir = env.isEmpty() ? QDir::temp().filePath(QStringLiteral("drivewiz-bench"))
                                      : QString::fromLocal8Bit(env);
    QDir().mkpath(dir);
    return dir;
}

/// Writes a generated description file into the data folder; returns its path.
inline QString generatedFile(const QString &name, const gendesc::Options &options)
{
    const QString path = QDir(dataDir()).filePath(name);
    gendesc::writeFile(path.toStdString(), options);
    return path;
}

} // namespace drivewiz::bench

#endif // DRIVEWIZ_BENCH_SUPPORT_H
