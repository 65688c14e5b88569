#include "fuzz_support.h"

#include "platform/convert.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>

namespace drivewiz::fuzz {

DialogRecorder &setUp()
{
    static DialogRecorder *recorder = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "drivewiz-fuzz";
        static char *argv[] = {name, nullptr};
        new QGuiApplication(argc, argv); // lives as long as the fuzzer
        auto owned = std::make_unique<DialogRecorder>();
        DialogRecorder *r = owned.get();
        setDialogService(std::move(owned));
        SetDecimalSeparator(QLatin1Char('.'));
        return r;
    }();
    recorder->clear();
    return *recorder;
}

void fail(const char *check, const QString &detail)
{
    std::fprintf(stderr, "\n*** oracle failed: %s\n*** %s\n", check, detail.toUtf8().constData());
    std::abort();
}

QString scratchFolder()
{
    const QString shm = QStringLiteral("/dev/shm");
    const QString base = QFileInfo(shm).isWritable() ? shm : QDir::tempPath();
    return base + QStringLiteral("/drivewiz-fuzz-XXXXXX");
}

QString text(FuzzedDataProvider &data, size_t maxBytes)
{
    const std::string bytes = data.ConsumeRandomLengthString(maxBytes);
    return QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
}

} // namespace drivewiz::fuzz
