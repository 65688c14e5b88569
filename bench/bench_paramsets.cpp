// Parameter set benchmarks.
//
// BM_CompareParameterSet/N: compare a table of N parameters with a set file loaded
// before, and build the view's model (the table's side made anew each time); against
// BM_ReadParameterSetFileBaseline/N: read the same file, decode it and split it into
// lines and fields. BM_UndoRedo1000: 1,000 undo then 1,000 redo steps on a shown form
// of 100 parameter controls, each step writing one value into the table and its
// control; the counter ms_per_step must stay under one frame (16 ms).

#include "bench_support.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "paramtable/ParamCompare.h"
#include "paramtable/ParamSet.h"
#include "paramtable/ParamUndo.h"
#include "platform/textcodec.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QUndoStack>

#include <map>
#include <memory>

using namespace drivewiz;
using drivewiz::bench::dataDir;
using drivewiz::bench::generatedFile;

namespace {

struct Fixture
{
    std::unique_ptr<TParaTable> table;
    QString setFile;
    ParamSet loaded;
};

// A table of `rows` parameters and a set file of the same parameters with every tenth
// value changed, made once per size.
const Fixture &fixture(int rows)
{
    static std::map<int, Fixture> made;
    Fixture &f = made[rows];
    if (f.table) return f;
    gendesc::Options o;
    o.rows = rows;
    const QString desc = generatedFile(QStringLiteral("sets_desc%1.csv").arg(rows), o);
    f.table = std::make_unique<TParaTable>();
    f.table->ImportTable(desc);
    const ParamSet mine = ParamSet::fromTable(*f.table);
    ParamSet other;
    for (int i = 0; i < mine.size(); ++i) {
        ParamSet::Entry e = mine.at(i);
        if (i % 10 == 0) e.value += QStringLiteral("1");
        other.insert(e);
    }
    f.setFile = QDir(dataDir()).filePath(QStringLiteral("set%1.csv").arg(rows));
    other.save(f.setFile);
    f.loaded = ParamSet::load(f.setFile).set;
    return f;
}

} // namespace

static void BM_CompareParameterSet(benchmark::State &state)
{
    const Fixture &f = fixture(int(state.range(0)));
    for (auto _ : state) {
        ParamCompare model;
        model.compare(ParamSet::fromTable(*f.table), f.loaded);
        benchmark::DoNotOptimize(model.counts().different);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_CompareParameterSet)->Arg(10000)->Unit(benchmark::kMillisecond);

static void BM_ReadParameterSetFileBaseline(benchmark::State &state)
{
    const Fixture &f = fixture(int(state.range(0)));
    for (auto _ : state) {
        QFile file(f.setFile);
        file.open(QIODevice::ReadOnly);
        const QString text = decodeText(file.readAll());
        qsizetype fields = 0;
        for (const QStringView line : QStringView(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            const QStringList cells = line.toString().split(QLatin1Char(';'));
            fields += cells.size();
        }
        benchmark::DoNotOptimize(fields);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ReadParameterSetFileBaseline)->Arg(10000)->Unit(benchmark::kMillisecond);

// Loading the set file itself, for the record.
static void BM_LoadParameterSet(benchmark::State &state)
{
    const Fixture &f = fixture(int(state.range(0)));
    for (auto _ : state) {
        const ParamSetLoad loaded = ParamSet::load(f.setFile);
        benchmark::DoNotOptimize(loaded.set.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_LoadParameterSet)->Arg(10000)->Unit(benchmark::kMillisecond);

namespace {

constexpr int kShown = 100;
constexpr int kSteps = 1000;

// A shown form of 100 controls over writable parameters of a 10,000-row table.
struct UndoForm
{
    QWidget form;
    TParaTable *table = nullptr;
    QList<ParamKey> keys;

    UndoForm()
    {
        gendesc::Options o;
        o.rows = 10000;
        o.maxAxes = 1;
        table = new TParaTable(&form);
        table->SetParamFileName(generatedFile(QStringLiteral("sets_undo.csv"), o));
        table->ImportTable(table->FileNameParams());
        for (int p = 0; p < table->RowCount() && keys.size() < kShown; ++p) {
            const QStringList c = table->Cells(p, {"Write-Level", "Art", "Koordinate"});
            if (c[0].toInt() > 2 || c[1] != QLatin1String("0") || c[2].contains(QLatin1Char('.')))
                continue;
            auto *control = new TParaClass(&form);
            control->SetKoordinate(c[2]);
            control->move(10 + (keys.size() % 4) * 300, 10 + (keys.size() / 4) * 30);
            keys << table->KeyOfRow(p);
        }
        table->UpdateParaObjects(true);
        form.resize(1300, 800);
        form.show();
        QApplication::processEvents();
    }
};

} // namespace

static void BM_UndoRedo1000(benchmark::State &state)
{
    UndoForm f;
    ParamUndoStack undo(f.table);
    for (int i = 0; i < kSteps; ++i) {
        const ParamKey &key = f.keys.at(i % f.keys.size());
        undo.undoStack()->push(new ParamValueCommand(
            f.table, {ParamChange{key, f.table->Cell(f.table->FindKey(key), QStringLiteral("Wert")),
                                  QString::number(i)}},
            QStringLiteral("step"), false));
    }
    QApplication::processEvents();
    double worst = 0;
    qint64 total = 0;
    for (auto _ : state) {
        QElapsedTimer t;
        for (int i = 0; i < 2 * kSteps; ++i) {
            t.start();
            if (i < kSteps)
                undo.undo();
            else
                undo.redo();
            const qint64 ns = t.nsecsElapsed();
            total += ns;
            worst = std::max(worst, double(ns) / 1e6);
        }
        QApplication::processEvents(); // the repaint
    }
    state.counters["ms_per_step"] = double(total) / 1e6 / (double(state.iterations()) * 2 * kSteps);
    state.counters["worst_step_ms"] = worst;
}
BENCHMARK(BM_UndoRedo1000)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char **argv)
{
    return drivewiz::bench::runBenchmarks(argc, argv, true);
}
