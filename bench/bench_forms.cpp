// Form benchmarks: building a form of 1,000 parameter controls against the same form of
// plain widgets, and the cost of one pushed change (message 0x8006) on a form of 10 and of
// 1,000 controls.

#include "bench_support.h"
#include "host/wizFormLoader.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "platform/dialogrecorder.h"
#include "platform/messages.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLayout>
#include <QUiLoader>

#include <cstring>
#include <memory>

using namespace drivewiz;
using drivewiz::bench::dataDir;
using drivewiz::bench::generatedFile;

namespace {

constexpr int kColumns = 20;

const QString &descriptionFile()
{
    static const QString path = [] {
        gendesc::Options o;
        o.rows = 3000;
        o.maxAxes = 1;
        return generatedFile(QStringLiteral("desc_forms.csv"), o);
    }();
    return path;
}

// Coordinates of the generated file's parameters, in file order.
const QStringList &coordinates()
{
    static const QStringList list = [] {
        TImportTable t;
        t.ImportTable(descriptionFile());
        QStringList out;
        for (int p = 0; p < t.RowCount(); ++p)
            out << t.fGetKoord(p);
        return out;
    }();
    return list;
}

QString cell(int i, const QString &widget)
{
    return QStringLiteral("<item row=\"%1\" column=\"%2\">%3</item>\n")
        .arg(i / kColumns)
        .arg(i % kColumns)
        .arg(widget);
}

// A form in a grid layout, written as Qt Designer writes it.
QByteArray uiFile(int count, bool parameterControls)
{
    QString items;
    for (int i = 0; i < count; ++i) {
        const QString k = coordinates().at(i % coordinates().size());
        if (parameterControls) {
            items += cell(i, QStringLiteral("<widget class=\"TParaClass\" name=\"P_%1\">"
                                            "<property name=\"wizKoordinate\" stdset=\"0\">"
                                            "<string notr=\"true\">%2</string></property>"
                                            "</widget>")
                                 .arg(i)
                                 .arg(k));
        } else {
            const QString input =
                i % 4 == 0 ? QStringLiteral("QComboBox") : QStringLiteral("QLineEdit");
            items += cell(i, QStringLiteral("<widget class=\"QFrame\" name=\"F_%1\">"
                                            "<widget class=\"QLabel\" name=\"L_%1\"><property "
                                            "name=\"text\"><string>%2</string></property></widget>"
                                            "<widget class=\"%3\" name=\"E_%1\"/></widget>")
                                 .arg(i)
                                 .arg(k, input));
        }
    }
    const QString table = parameterControls
                              ? QStringLiteral("<widget class=\"TParaTable\" name=\"ParaTable\">"
                                               "<property name=\"FileNameParams\" stdset=\"0\">"
                                               "<string notr=\"true\">%1</string></property>"
                                               "</widget>\n")
                                    .arg(descriptionFile())
                              : QString();
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">"
                          "<class>Form</class><widget class=\"QWidget\" name=\"Form\">"
                          "%1<layout class=\"QGridLayout\" name=\"grid\">\n%2</layout>"
                          "</widget></ui>\n")
        .arg(table, items)
        .toUtf8();
}

QString writeUi(const QString &name, const QByteArray &bytes)
{
    const QString path = QDir(dataDir()).filePath(name);
    QFile f(path);
    f.open(QIODevice::WriteOnly | QIODevice::Truncate);
    f.write(bytes);
    return path;
}

void firstLayout(QWidget *form)
{
    form->ensurePolished();
    if (form->layout()) form->layout()->activate();
}

} // namespace

static void BM_BuildForm1000(benchmark::State &state)
{
    const QString path = writeUi(QStringLiteral("form1000.ui"), uiFile(1000, true));
    TwizFormLoader loader;
    for (auto _ : state) {
        std::unique_ptr<QWidget> form(loader.loadForm(path));
        firstLayout(form.get());
        benchmark::DoNotOptimize(form.get());
        state.PauseTiming();
        form.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_BuildForm1000)->Unit(benchmark::kMillisecond);

static void BM_BareWidgets1000(benchmark::State &state)
{
    const QString path = writeUi(QStringLiteral("bare1000.ui"), uiFile(1000, false));
    QUiLoader loader;
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        std::unique_ptr<QWidget> form(loader.load(&file));
        firstLayout(form.get());
        benchmark::DoNotOptimize(form.get());
        state.PauseTiming();
        form.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_BareWidgets1000)->Unit(benchmark::kMillisecond);

namespace {

// The host's value fetch: every call answers a new value, so every message changes the
// control's text.
int g_counter = 0;

int32_t benchGetValue(char *buffer, int32_t size, uint32_t, uint32_t, uint8_t *status)
{
    *status = 0;
    char text[16];
    const int n = std::snprintf(text, sizeof text, "%d", g_counter % 1000);
    if (buffer && size > n) std::memcpy(buffer, text, size_t(n) + 1);
    return n;
}

} // namespace

// One pushed change handled, for a form of N controls (not shown: no repaint).
static void BM_ToolMsg(benchmark::State &state)
{
    const int n = int(state.range(0));
    const QString path = writeUi(QStringLiteral("toolmsg%1.ui").arg(n), uiFile(n, true));
    TwizFormLoader loader;
    std::unique_ptr<QWidget> form(loader.loadForm(path));
    auto *table = form->findChild<TParaTable *>();
    dwz_callbacks cb{};
    cb.get_para_value = benchGetValue;
    table->SetCallbacks(cb);
    table->SetOnline(omOnline);
    const QList<TParaClass *> controls = form->findChildren<TParaClass *>();
    int i = 0;
    for (auto _ : state) {
        ++g_counter;
        TParaClass *c = controls.at(i++ % controls.size());
        PostMessage(table->WindowHandle(), wmToolMessage, c->Q7adr(), 1);
        QCoreApplication::sendPostedEvents();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ToolMsg)->Arg(10)->Arg(1000);

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    setDialogService(std::make_unique<DialogRecorder>());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
