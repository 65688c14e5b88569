// Undo and redo on a shown wizard form: 100 parameter controls on a form with its editing
// session (change marks, accessible descriptions), 1,000 steps undone and redone. Each
// step writes the table, refreshes the control that shows the value and its mark; a step
// must stay well under one frame (16 ms).

#include "bench_support.h"
#include "paramctrls/ParamCtrls.h"
#include "paramctrls/ParamEditSession.h"
#include "paramtable/ParaTable.h"
#include "paramtable/ParamUndo.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QUndoStack>
#include <QWidget>

#include <chrono>
#include <memory>

using namespace drivewiz;

namespace {

constexpr int kControls = 100;
constexpr int kSteps = 1000;

QString descriptionFile()
{
    const QString path = QDir(bench::dataDir()).filePath(QStringLiteral("paramviews.csv"));
    QByteArray csv = "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Datentyp;Einheit;"
                     "Write-Level;Read-Level;Defaultwert;OGW;UGW;Nachkommastellen;"
                     "Skalierungsfunktion;Skalierung BUS\r\n";
    for (int i = 0; i < kControls; ++i) {
        const QString address =
            QStringLiteral("%1h").arg(0x01000000u + quint32(i) * 0x4000u, 8, 16, QLatin1Char('0'));
        csv += QStringLiteral("Wert %1;A%1;1;%1;0;%2;I16;ms;1;1;0;30000;-30000;0;0;\r\n")
                   .arg(i + 10) // coordinates have two digits at least
                   .arg(address.toUpper().replace(QLatin1Char('H'), QLatin1Char('h')))
                   .toLatin1();
    }
    QFile f(path);
    if (f.open(QIODevice::WriteOnly)) f.write(csv);
    return path;
}

struct ShownForm
{
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    TParaTable *table = nullptr;
    ParamEditSession *session = nullptr;

    ShownForm()
    {
        form->resize(1200, 900);
        table = new TParaTable(form.get());
        table->SetParamFileName(descriptionFile());
        table->ReloadCSVFile();
        for (int i = 0; i < kControls; ++i) {
            auto *c = new TParaClass(form.get());
            c->setObjectName(QStringLiteral("P_A%1").arg(i + 10));
            c->SetwizParaSource(table);
            c->SetKoordinate(QStringLiteral("A%1").arg(i + 10));
            c->move((i % 5) * 230, (i / 5) * 44);
        }
        form->show();
        QApplication::processEvents();
        session = ParamEditSession::install(form.get(), table);
        for (int s = 0; s < kSteps; ++s) {
            const ParamKey key(QStringLiteral("A%1").arg(s % kControls + 10), QStringLiteral("1"));
            session->undo()->writeValues({ParamChange{key, QString(), QString::number(s + 1000)}},
                                         WriteOrigin::Apply, QStringLiteral("step"));
        }
    }
};

void BM_UndoRedo1000_ShownForm(benchmark::State &state)
{
    ShownForm f;
    QUndoStack *stack = f.session->undo()->undoStack();
    if (stack->count() != kSteps) {
        state.SkipWithError(QStringLiteral("%1 steps made of %2")
                                .arg(stack->count())
                                .arg(kSteps)
                                .toUtf8()
                                .constData());
        return;
    }
    double seconds = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < kSteps; ++i)
            f.session->undo()->undo();
        for (int i = 0; i < kSteps; ++i)
            f.session->undo()->redo();
        QApplication::processEvents(); // the repaints the steps asked for
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    state.counters["ms_per_step"] = seconds * 1000.0 / (double(state.iterations()) * 2 * kSteps);
}
BENCHMARK(BM_UndoRedo1000_ShownForm)->Unit(benchmark::kMillisecond)->MinTime(1.0);

} // namespace

int main(int argc, char **argv)
{
    return drivewiz::bench::runBenchmarks(argc, argv, true);
}
