// Input frame benchmarks: opening the demo's Inputs wizard against the same widget tree
// of bare Qt widgets, and a refresh of the input overview on a form of 500 inputs
// against a bare depth-first walk of the same form.

#include "SimulatedDrive.h"
#include "bench_support.h"
#include "drivewiz/host_api.h"
#include "ioframes/AllInputViewer.h"
#include "ioframes/BE.h"
#include "paramtable/ParaTable.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QUiLoader>

#include <map>
#include <memory>

using namespace drivewiz;
using drivewiz::bench::dataDir;

namespace {

const QString kSample = QStringLiteral(DRIVEWIZ_SOURCE_DIR "/data/sample/Parameter.csv");
const QString kInputsUi = QStringLiteral(DRIVEWIZ_SOURCE_DIR "/apps/wizhost/forms/Inputs.ui");

// The demo host's drive and callbacks: descriptions from the file, values from the drive.
const dwz_callbacks &hostCallbacks()
{
    static sim::SimulatedDrive drive;
    static const dwz_callbacks cb = [] {
        drive.load(kSample);
        sim::SimulatedDrive::setCurrent(&drive);
        dwz_callbacks c = sim::SimulatedDrive::callbacks();
        c.get_para_info = nullptr;
        c.get_auswahl_info = nullptr;
        return c;
    }();
    return cb;
}

// As the demo host opens it: values from the drive, texts from the language file.
dwz_form *openInputs()
{
    dwz_form *form = dwz_form_create(kInputsUi.toUtf8().constData(), &hostCallbacks(), 4, 2, 1,
                                     DWZ_OFFLINE, kSample.toUtf8().constData());
    if (form) dwz_form_show(form);
    QCoreApplication::processEvents(); // polish, lay out and paint the first page
    return form;
}

// The widgets of a form by kind: what the bare form is made of.
struct WidgetCounts
{
    int frames = 0, labels = 0, edits = 0, combos = 0, checks = 0;
};

WidgetCounts countWidgets(QWidget *form)
{
    WidgetCounts n;
    for (QWidget *w : form->findChildren<QWidget *>()) {
        if (qobject_cast<QLineEdit *>(w))
            ++n.edits;
        else if (qobject_cast<QComboBox *>(w))
            ++n.combos;
        else if (qobject_cast<QCheckBox *>(w))
            ++n.checks;
        else if (qobject_cast<QLabel *>(w))
            ++n.labels;
        else if (qobject_cast<QFrame *>(w))
            ++n.frames;
    }
    return n;
}

// The same numbers of frames, labels, edits, combo boxes and check boxes as a Designer
// form: the frames in a row, the other widgets spread over them.
QByteArray bareUi(const WidgetCounts &n)
{
    const int frames = std::max(1, n.frames);
    std::vector<QString> inside(static_cast<size_t>(frames), QString());
    int next = 0;
    const auto spread = [&](int count, const char *cls) {
        for (int i = 0; i < count; ++i, ++next)
            inside[size_t(next % frames)] += QStringLiteral("<widget class=\"%1\" name=\"W%2\"/>")
                                                  .arg(QLatin1String(cls))
                                                  .arg(next);
    };
    spread(n.labels, "QLabel");
    spread(n.edits, "QLineEdit");
    spread(n.combos, "QComboBox");
    spread(n.checks, "QCheckBox");
    QString body;
    for (int f = 0; f < frames; ++f)
        body += QStringLiteral("<widget class=\"QFrame\" name=\"F%1\"><property name=\"geometry\">"
                               "<rect><x>%2</x><y>0</y><width>40</width><height>30</height>"
                               "</rect></property>%3</widget>\n")
                    .arg(f)
                    .arg((f % 20) * 40)
                    .arg(inside[size_t(f)]);
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">"
                          "<class>Bare</class><widget class=\"QDialog\" name=\"Bare\">"
                          "<property name=\"geometry\"><rect><x>0</x><y>0</y><width>790</width>"
                          "<height>590</height></rect></property>%1</widget></ui>\n")
        .arg(body)
        .toUtf8();
}

} // namespace

static void BM_OpenInputsWizard(benchmark::State &state)
{
    for (auto _ : state) {
        dwz_form *form = openInputs();
        if (!form) {
            state.SkipWithError(dwz_last_error());
            return;
        }
        benchmark::DoNotOptimize(form);
        state.PauseTiming();
        dwz_form_destroy(form);
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_OpenInputsWizard)->Unit(benchmark::kMillisecond);

static void BM_InputsWizardBareWidgets(benchmark::State &state)
{
    dwz_form *wizard = openInputs();
    if (!wizard) {
        state.SkipWithError(dwz_last_error());
        return;
    }
    const WidgetCounts n = countWidgets(static_cast<QWidget *>(dwz_form_widget(wizard)));
    dwz_form_destroy(wizard);
    const QString path = QDir(dataDir()).filePath(QStringLiteral("inputs_bare.ui"));
    {
        QFile f(path);
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        f.write(bareUi(n));
    }
    QUiLoader loader;
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        std::unique_ptr<QWidget> form(loader.load(&file));
        form->show();
        QCoreApplication::processEvents();
        benchmark::DoNotOptimize(form.get());
        state.PauseTiming();
        form.reset();
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
    state.counters["frames"] = n.frames;
    state.counters["labels"] = n.labels;
    state.counters["edits"] = n.edits;
    state.counters["combos"] = n.combos;
    state.counters["checks"] = n.checks;
}
BENCHMARK(BM_InputsWizardBareWidgets)->Unit(benchmark::kMillisecond);

namespace {

// A form of `count` binary inputs over as many source parameters (every one a source
// of the 29-entry list, on inputs 1 to 13, plain and inverted), and an input overview.
struct InputsForm
{
    std::unique_ptr<QWidget> form;
    TAllInputViewer *viewer = nullptr;
};

QString writeSources(int count)
{
    QByteArray desc = "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Datentyp;Einheit;"
                      "Write-Level;Read-Level;Defaultwert;OGW;UGW;Nachkommastellen\r\n";
    QByteArray sel = "Koordinate;Nummer;Wert;Text\r\n";
    QList<QByteArray> texts = {"Low-Pegel (0V)", "High-Pegel (+24V)", "Feldbus-Bit"};
    for (int k = 1; k <= 13; ++k)
        texts << "BE" + QByteArray::number(k) << "BE" + QByteArray::number(k) + " invers";
    for (int i = 0; i < count; ++i) {
        const QByteArray k = "P" + QByteArray::number(100 + i);
        const int key = 3 + i % 26;
        const quint32 address = (quint32('P' - 64) << 24) | (quint32(100 + i) << 14);
        desc += "Funktion " + QByteArray::number(i) + " Quelle;" + k + ";1;" +
                QByteArray::number(key) + ": " + texts.at(key) + ";1;" +
                QByteArray::number(address, 16) + "h;U8;;2;1;0;28;0;0\r\n";
        for (int e = 0; e < texts.size(); ++e)
            sel += k + ';' + QByteArray::number(e) + ';' + QByteArray::number(e) + ';' +
                   texts.at(e) + "\r\n";
    }
    const QString dir = QDir(dataDir()).filePath(QStringLiteral("inputs%1").arg(count));
    QDir().mkpath(dir);
    const QString path = QDir(dir).filePath(QStringLiteral("Parameter.csv"));
    QFile d(path), s(QDir(dir).filePath(QStringLiteral("Auswahlen.csv")));
    d.open(QIODevice::WriteOnly | QIODevice::Truncate);
    d.write(desc);
    s.open(QIODevice::WriteOnly | QIODevice::Truncate);
    s.write(sel);
    return path;
}

const InputsForm &inputsForm(int count)
{
    // Widgets must go before the application does: freed by its destructor, not at exit.
    static std::map<int, InputsForm> *forms = [] {
        qAddPostRoutine([] { delete forms; });
        return new std::map<int, InputsForm>;
    }();
    InputsForm &f = (*forms)[count];
    if (f.form) return f;
    f.form = std::make_unique<QWidget>();
    auto *table = new TParaTable(f.form.get());
    table->SetParamFileName(writeSources(count));
    table->ReloadCSVFile();
    for (int i = 0; i < count; ++i) {
        auto *input = new TBEinput(f.form.get());
        input->SetwizParaSource(table);
        input->SetwizKoordinate(QStringLiteral("P%1").arg(100 + i));
    }
    f.viewer = new TAllInputViewer(f.form.get());
    f.viewer->SetwizParaSource(table);
    return f;
}

int walk(const QObject *o)
{
    int n = 1;
    for (const QObject *child : o->children()) {
        if (child->isWidgetType()) n += walk(child);
    }
    return n;
}

} // namespace

static void BM_InputViewerUpdate(benchmark::State &state)
{
    const InputsForm &f = inputsForm(int(state.range(0)));
    for (auto _ : state)
        f.viewer->MyUpdate();
    state.counters["inputs used"] = f.viewer->BinaryUses().size();
}
BENCHMARK(BM_InputViewerUpdate)->Arg(500)->Unit(benchmark::kMicrosecond);

static void BM_FormWalk(benchmark::State &state)
{
    const InputsForm &f = inputsForm(int(state.range(0)));
    int widgets = 0;
    for (auto _ : state) {
        widgets = walk(f.form.get());
        benchmark::DoNotOptimize(widgets);
    }
    state.counters["widgets"] = widgets;
}
BENCHMARK(BM_FormWalk)->Arg(500)->Unit(benchmark::kMicrosecond);

int main(int argc, char **argv)
{
    return drivewiz::bench::runBenchmarks(argc, argv, true);
}
