// Import and values table benchmarks on generated 100,000-row description files.
//
// BM_ImportTable is compared with BM_ReadDecodeAndSplitLines (reading, decoding and
// splitting the same file: the practical limit), BM_AddCSVFileMerge with BM_ImportTable,
// BM_FindParam with BM_LowerBoundBaseline (std::lower_bound over ready-made keys).
// "faults" counts minor page faults per iteration: fresh memory a run touches costs more
// than its instructions on many machines, so it is shown beside the times.

#include "bench_support.h"
#include "paramtable/para_import_werte.h"
#include "platform/textcodec.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringView>

#include <algorithm>
#include <fstream>
#include <malloc.h>
#include <random>
#include <unistd.h>

using namespace drivewiz;
using drivewiz::bench::generatedFile;
using drivewiz::bench::HeapCount;
using drivewiz::bench::pageFaults;

namespace {

constexpr long kRows = 100000;

// The files are made once per run: the main file and a second one of which half the
// rows are new.
const QString &mainFile()
{
    static const QString path = [] {
        gendesc::Options o;
        o.rows = kRows;
        return generatedFile(QStringLiteral("desc100k.csv"), o);
    }();
    return path;
}

const QString &mergeFile()
{
    static const QString path = [] {
        gendesc::Options o;
        o.rows = kRows;
        o.skip = kRows / 2;
        return generatedFile(QStringLiteral("desc100k_merge.csv"), o);
    }();
    return path;
}

long residentBytes()
{
    std::ifstream statm("/proc/self/statm");
    long size = 0, resident = 0;
    statm >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

struct Lookups
{
    std::vector<std::pair<QString, QString>> queries;
    std::vector<std::string> keys;   // the table's sort strings, ready made and sorted
    std::vector<std::string> wanted; // the sort strings of the queries
};

const Lookups &lookups(const TImportTable &t)
{
    static Lookups l = [&t] {
        Lookups out;
        for (int p = 0; p < t.RowCount(); ++p)
            out.keys.push_back(t.fGetSortFullKoord(p).toStdString());
        std::mt19937 rng(7);
        for (int i = 0; i < 1000; ++i) {
            const int p = int(rng() % unsigned(t.RowCount()));
            out.queries.emplace_back(t.fGetKoord(p), t.fGetAchse(p));
            out.wanted.push_back(out.keys[size_t(p)]);
        }
        return out;
    }();
    return l;
}

// Page faults per iteration, as a counter.
class FaultCounter
{
public:
    explicit FaultCounter(benchmark::State &state) : m_state(state), m_start(pageFaults()) {}
    ~FaultCounter()
    {
        m_state.counters["faults"] = benchmark::Counter(double(pageFaults() - m_start),
                                                        benchmark::Counter::kAvgIterations);
    }

private:
    benchmark::State &m_state;
    long m_start;
};

const TImportTable &loadedTable()
{
    static TImportTable t;
    if (t.RowCount() == 0) t.ImportTable(mainFile());
    return t;
}

} // namespace

static void BM_ReadDecodeAndSplitLines(benchmark::State &state)
{
    const FaultCounter faults(state);
    for (auto _ : state) {
        QFile f(mainFile());
        f.open(QIODevice::ReadOnly);
        const QString text = decodeText(f.readAll());
        // The lines as strings, as a line-based reader has them.
        const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        benchmark::DoNotOptimize(lines.size());
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_ReadDecodeAndSplitLines)->Unit(benchmark::kMillisecond);

static void BM_ImportTable(benchmark::State &state)
{
    const FaultCounter faults(state);
    for (auto _ : state) {
        TImportTable t;
        t.ImportTable(mainFile());
        benchmark::DoNotOptimize(t.RowCount());
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_ImportTable)->Unit(benchmark::kMillisecond);

static void BM_AddCSVFileMerge(benchmark::State &state)
{
    const FaultCounter faults(state);
    for (auto _ : state) {
        state.PauseTiming();
        auto t = std::make_unique<TImportTable>();
        t->ImportTable(mainFile());
        state.ResumeTiming();
        t->AddCSVFile(mergeFile());
        benchmark::DoNotOptimize(t->RowCount());
        state.PauseTiming();
        state.counters["rows"] = double(t->RowCount());
        t.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_AddCSVFileMerge)->Unit(benchmark::kMillisecond);

static void BM_FindParam(benchmark::State &state)
{
    const TImportTable &t = loadedTable();
    const Lookups &l = lookups(t);
    for (auto _ : state) {
        for (const auto &[koord, axis] : l.queries)
            benchmark::DoNotOptimize(t.FindParam(koord, axis));
    }
    state.SetItemsProcessed(state.iterations() * qint64(l.queries.size()));
}
BENCHMARK(BM_FindParam);

static void BM_LowerBoundBaseline(benchmark::State &state)
{
    const Lookups &l = lookups(loadedTable());
    for (auto _ : state) {
        for (const std::string &key : l.wanted)
            benchmark::DoNotOptimize(std::lower_bound(l.keys.begin(), l.keys.end(), key));
    }
    state.SetItemsProcessed(state.iterations() * qint64(l.wanted.size()));
}
BENCHMARK(BM_LowerBoundBaseline);

static void BM_GetVisibleParamCount(benchmark::State &state)
{
    static TWerteTable t;
    if (t.RowCount() == 0) t.ImportTable(mainFile());
    t.SetFilter(QStringLiteral("(Datentyp=i16) or (Einheit=rpm)"));
    int visible = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(visible = t.GetVisibleParamCount());
    state.counters["visible"] = visible;
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_GetVisibleParamCount)->Unit(benchmark::kMillisecond);

// Resident memory of a loaded table against the size of its file.
static void BM_ImportTableMemory(benchmark::State &state)
{
    const double fileBytes = double(QFileInfo(mainFile()).size());
    double tableBytes = 0;
    for (auto _ : state) {
        malloc_trim(0);
        const long before = residentBytes();
        auto t = std::make_unique<TImportTable>();
        t->ImportTable(mainFile());
        malloc_trim(0);
        tableBytes = double(residentBytes() - before);
        benchmark::DoNotOptimize(t->RowCount());
    }
    state.counters["file_MB"] = fileBytes / 1e6;
    state.counters["table_MB"] = tableBytes / 1e6;
    state.counters["ratio"] = tableBytes / fileBytes;
}
BENCHMARK(BM_ImportTableMemory)->Iterations(1)->Unit(benchmark::kMillisecond);

// Heap allocations and page faults of one import, one merge and one read of the baseline.
static void BM_ImportHeapUse(benchmark::State &state)
{
    for (auto _ : state) {
        const auto measure = [&state](const char *name, const auto &work) {
            const HeapCount count;
            work();
            state.counters[std::string(name) + "_allocs"] = double(count.allocations());
            state.counters[std::string(name) + "_faults"] = double(count.faults());
        };
        auto t = std::make_unique<TImportTable>();
        measure("import", [&] { t->ImportTable(mainFile()); });
        measure("merge", [&] { t->AddCSVFile(mergeFile()); });
        t.reset();
        measure("read", [] {
            QFile f(mainFile());
            f.open(QIODevice::ReadOnly);
            const QString text = decodeText(f.readAll());
            benchmark::DoNotOptimize(text.split(QLatin1Char('\n'), Qt::SkipEmptyParts).size());
        });
    }
}
BENCHMARK(BM_ImportHeapUse)->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return drivewiz::bench::runBenchmarks(argc, argv, false, [] {
        mainFile();
        mergeFile();
    });
}
