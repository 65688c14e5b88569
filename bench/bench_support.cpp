#include "bench_support.h"

#include "platform/dialogrecorder.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCoreApplication>

#include <memory>

namespace drivewiz::bench {

int runBenchmarks(int argc, char **argv, bool widgets, const std::function<void()> &prepare)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    std::unique_ptr<QCoreApplication> app(widgets ? new QApplication(argc, argv)
                                                  : new QCoreApplication(argc, argv));
    setDialogService(std::make_unique<DialogRecorder>()); // no dialog may stop a run
    if (prepare) prepare();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

} // namespace drivewiz::bench
