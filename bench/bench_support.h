#ifndef DRIVEWIZ_BENCH_SUPPORT_H
#define DRIVEWIZ_BENCH_SUPPORT_H

// Shared by the benchmarks: where generated input files go, making them once, and counting
// allocations and page faults.

#include "gendesc.h"

#include <QDir>
#include <QString>

#include <functional>

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

/// Counts heap allocations (malloc, calloc, realloc) and minor page faults (fresh memory
/// touched) from its construction on; one at a time.
class HeapCount
{
public:
    HeapCount();
    ~HeapCount();
    HeapCount(const HeapCount &) = delete;
    HeapCount &operator=(const HeapCount &) = delete;
    long allocations() const;
    long faults() const;

private:
    long m_faults;
};

/// Minor page faults of the process so far.
long pageFaults();

/// The main of a benchmark program: a (widget) application on the offscreen platform, a
/// dialog recorder in place of message boxes, `prepare`, then the benchmarks.
int runBenchmarks(int argc, char **argv, bool widgets, const std::function<void()> &prepare = {});

/// Writes a generated description file into the data folder; returns its path.
inline QString generatedFile(const QString &name, const gendesc::Options &options)
{
    const QString path = QDir(dataDir()).filePath(name);
    gendesc::writeFile(path.toStdString(), options);
    return path;
}

} // namespace drivewiz::bench

#endif // DRIVEWIZ_BENCH_SUPPORT_H
