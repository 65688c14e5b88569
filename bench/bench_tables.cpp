// Array groups and measurements: export, import and checksum of 10 arrays of 16,000
// elements, loading a measurement of 1,000,000 rows x 8 channels, and one repaint of its
// plot. Each is run beside its baseline (the plain file work it cannot avoid):
//
//   BM_ArrayExportCSV     vs BM_ArrayExportQFileBaseline  (writing the same bytes, QFile)
//   BM_ArrayImportCSV     vs BM_ArrayReadSplitBaseline    (reading and splitting that file)
//   BM_ArrayCalcCRC32     vs BM_ArrayZlibCrc32Baseline    (zlib's crc32, same buffer)
//   BM_MeasurementLoad    vs BM_MeasurementReadSplitBaseline (reading, splitting lines
//                                                          and fields)
//   BM_PlotRepaint1M      (reported)
//
// bench/python_measurement_peer.py reads the same measurement with Python's csv module.

#include "bench_support.h"
#include "paramtable/ParaTable.h"
#include "paramtable/coordinates.h"
#include "platform/textcodec.h"
#include "tables/ArrayGroups.h"
#include "tables/ImportOM_CSV.h"
#include "tables/MeasurementPlot.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPainter>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <zlib.h>

using namespace drivewiz;

namespace {

constexpr int kArrays = 10;
constexpr int kElements = 16000;
constexpr int kRows = 1000000;
constexpr int kChannels = 8;

QString dataFile(const char *name)
{
    return QDir(bench::dataDir()).filePath(QLatin1String(name));
}

// A description file with ten I32 arrays K10..K19 of 16,000 elements each.
const QString &arraysFile()
{
    static const QString path = [] {
        const QString p = dataFile("arrays10x16000.csv");
        QByteArray csv = "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Datentyp;Einheit;"
                         "Write-Level;Read-Level;Defaultwert;OGW;UGW;Nachkommastellen\r\n";
        char line[256];
        for (int a = 0; a < kArrays; ++a) {
            for (int i = 0; i < kElements; ++i) {
                const QString k = QStringLiteral("K%1.%2").arg(10 + a).arg(i);
                const int value = (i * 7919 + a * 104729) % 200001 - 100000;
                std::snprintf(line, sizeof line, "Kurve %d;%s;1;%d;0;%08Xh;I32;mm;1;1;0;100000;-100000;0\r\n",
                              a, k.toLatin1().constData(), value, GetQ7Addresse(k, 1));
                csv += line;
            }
        }
        QFile f(p);
        f.open(QIODevice::WriteOnly);
        f.write(csv);
        return p;
    }();
    return path;
}

struct ArrayForm
{
    QWidget form;
    TParaTable *table = nullptr;
    TArrayGroup *group = nullptr; // all ten arrays
    TArrayGroup *one = nullptr;   // K10 alone

    ArrayForm()
    {
        table = new TParaTable(&form);
        table->SetParamFileName(arraysFile());
        table->ReloadCSVFile();
        QStringList names;
        for (int a = 0; a < kArrays; ++a)
            names << QStringLiteral("K%1").arg(10 + a);
        group = new TArrayGroup(&form);
        group->SetParamList(names.join(QLatin1Char(',')));
        group->SetwizParaSource(table);
        group->Loaded();
        one = new TArrayGroup(&form);
        one->SetParamList(QStringLiteral("K10"));
        one->SetwizParaSource(table);
        one->Loaded();
    }
};

ArrayForm &arrays()
{
    static ArrayForm f;
    return f;
}

// The export of the loaded group, and a second file with every value changed, so that
// each import really writes every element.
const QString &exportedFile()
{
    static const QString path = [] {
        const QString p = dataFile("arrays_export.csv");
        arrays().group->ExportCSV(p);
        return p;
    }();
    return path;
}

const QString &changedFile()
{
    static const QString path = [] {
        const QString p = dataFile("arrays_changed.csv");
        QFile in(exportedFile());
        in.open(QIODevice::ReadOnly);
        QByteArray bytes = in.readAll();
        bytes.replace(";-", ";"); // every negative value turns positive: still within limits
        QFile out(p);
        out.open(QIODevice::WriteOnly);
        out.write(bytes);
        return p;
    }();
    return path;
}

// 1,000,000 rows: time in ms and eight channels with three decimals.
const QString &measurementFile()
{
    static const QString path = [] {
        const QString p = dataFile("measurement1Mx8.csv");
        if (QFileInfo::exists(p) && QFileInfo(p).size() > 50000000) return p;
        QFile f(p);
        f.open(QIODevice::WriteOnly);
        f.write("Abtastzeit: 1 ms\r\nZeit [ms];E08;E02;E03;E10;E11;E74;I330;I331\r\n");
        QByteArray chunk;
        char cell[32];
        for (int i = 0; i < kRows; ++i) {
            chunk += QByteArray::number(i);
            for (int c = 0; c < kChannels; ++c) {
                const double v = 1000 * std::sin(i / (200.0 + 37 * c)) * (c + 1) / 8;
                std::snprintf(cell, sizeof cell, ";%.3f", v);
                chunk += cell;
            }
            chunk += "\r\n";
            if (chunk.size() > (1 << 20)) {
                f.write(chunk);
                chunk.clear();
            }
        }
        f.write(chunk);
        return p;
    }();
    return path;
}

} // namespace

// --- arrays ----------------------------------------------------------------------------------

static void BM_ArrayExportCSV(benchmark::State &state)
{
    ArrayForm &f = arrays();
    const QString out = dataFile("arrays_out.csv");
    for (auto _ : state)
        benchmark::DoNotOptimize(f.group->ExportCSV(out));
    state.SetItemsProcessed(state.iterations() * kArrays * kElements);
    state.SetBytesProcessed(state.iterations() * QFileInfo(out).size());
}
BENCHMARK(BM_ArrayExportCSV)->Unit(benchmark::kMillisecond);

static void BM_ArrayExportQFileBaseline(benchmark::State &state)
{
    QFile in(exportedFile());
    in.open(QIODevice::ReadOnly);
    const QByteArray bytes = in.readAll();
    const QString out = dataFile("arrays_baseline.csv");
    for (auto _ : state) {
        QFile f(out);
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        benchmark::DoNotOptimize(f.write(bytes));
        f.close();
    }
    state.SetItemsProcessed(state.iterations() * kArrays * kElements);
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(BM_ArrayExportQFileBaseline)->Unit(benchmark::kMillisecond);

static void BM_ArrayImportCSV(benchmark::State &state)
{
    ArrayForm &f = arrays();
    const QString files[2] = {changedFile(), exportedFile()};
    int n = 0;
    bool ok = true;
    for (auto _ : state)
        ok = f.group->ImportCSV(files[n++ % 2]) && ok;
    if (!ok) state.SkipWithError("an import failed");
    state.SetItemsProcessed(state.iterations() * kArrays * kElements);
}
BENCHMARK(BM_ArrayImportCSV)->Unit(benchmark::kMillisecond);

static void BM_ArrayReadSplitBaseline(benchmark::State &state)
{
    const QString files[2] = {changedFile(), exportedFile()};
    int n = 0;
    for (auto _ : state) {
        QFile f(files[n++ % 2]);
        f.open(QIODevice::ReadOnly);
        const QString text = decodeText(f.readAll());
        qsizetype fields = 0;
        for (const QString &line : text.split(QLatin1Char('\n')))
            fields += line.split(QLatin1Char(';')).size();
        benchmark::DoNotOptimize(fields);
    }
    state.SetItemsProcessed(state.iterations() * kArrays * kElements);
}
BENCHMARK(BM_ArrayReadSplitBaseline)->Unit(benchmark::kMillisecond);

static void BM_ArrayCalcCRC32(benchmark::State &state)
{
    ArrayForm &f = arrays();
    for (auto _ : state)
        benchmark::DoNotOptimize(f.one->CalcCRC32(kElements));
    state.SetItemsProcessed(state.iterations() * kElements);
}
BENCHMARK(BM_ArrayCalcCRC32)->Unit(benchmark::kMicrosecond);

static void BM_ArrayZlibCrc32Baseline(benchmark::State &state)
{
    QByteArray buffer(kElements * 4, Qt::Uninitialized);
    for (int i = 0; i < kElements; ++i) {
        const quint32 v = quint32((i * 7919) % 200001 - 100000);
        std::memcpy(buffer.data() + 4 * i, &v, 4);
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(
            crc32(0, reinterpret_cast<const Bytef *>(buffer.constData()), uInt(buffer.size())));
    state.SetItemsProcessed(state.iterations() * kElements);
}
BENCHMARK(BM_ArrayZlibCrc32Baseline)->Unit(benchmark::kMicrosecond);

// --- measurements ------------------------------------------------------------------------------

static void BM_MeasurementLoad(benchmark::State &state)
{
    const QString file = measurementFile();
    for (auto _ : state) {
        TImportOM_CSV m;
        if (!m.LoadFromFile(file) || m.SampleCount() != kRows) state.SkipWithError("not loaded");
        benchmark::DoNotOptimize(m.SampleCount());
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_MeasurementLoad)->Unit(benchmark::kMillisecond);

static void BM_MeasurementReadSplitBaseline(benchmark::State &state)
{
    const QString file = measurementFile();
    for (auto _ : state) {
        QFile f(file);
        f.open(QIODevice::ReadOnly);
        const QByteArray bytes = f.readAll();
        const char *p = bytes.constData();
        const char *end = p + bytes.size();
        qsizetype fields = 0;
        while (p < end) {
            const char *nl = static_cast<const char *>(std::memchr(p, '\n', size_t(end - p)));
            const char *lineEnd = nl ? nl : end;
            for (const char *q = p; q < lineEnd;) {
                const char *sep = static_cast<const char *>(std::memchr(q, ';', size_t(lineEnd - q)));
                ++fields;
                q = sep ? sep + 1 : lineEnd;
            }
            p = lineEnd + 1;
        }
        benchmark::DoNotOptimize(fields);
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_MeasurementReadSplitBaseline)->Unit(benchmark::kMillisecond);

static void BM_PlotRepaint1M(benchmark::State &state)
{
    static TImportOM_CSV m;
    if (m.SampleCount() == 0) m.LoadFromFile(measurementFile());
    TMeasurementPlot plot;
    plot.SetMeasurement(&m);
    plot.resize(1200, 600);
    QImage image(plot.size(), QImage::Format_ARGB32_Premultiplied);
    QElapsedTimer clock;
    clock.start();
    for (auto _ : state) {
        plot.render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.counters["repaint_ms"] = double(clock.nsecsElapsed()) / 1e6 / double(state.iterations());
    state.counters["samples"] = double(m.SampleCount()) * m.ChannelCount();
}
BENCHMARK(BM_PlotRepaint1M)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return bench::runBenchmarks(argc, argv, true, [] {
        arrays();
        exportedFile();
        changedFile();
        // The first import makes the arrays' length records; every later one finds them.
        arrays().group->ImportCSV(exportedFile());
        measurementFile();
    });
}
