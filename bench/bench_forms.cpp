// Form benchmarks: building a form of 1,000 parameter controls against the same form of
// plain widgets; the cost of one pushed change (message 0x8006) on a form of 10 and of
// 1,000 controls; switching a form of 1,000 controls online (message 0x8007) against
// building it; and a burst of pushes from another thread on a shown form.

#include "bench_support.h"
#include "host/wizFormLoader.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "platform/messages.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QLayout>
#include <QTimer>
#include <QUiLoader>

#include <QHash>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

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

namespace {

int g_subscriptions = 0;

void benchSubscribe(uint32_t, uint32_t, int32_t cycleMs)
{
    if (cycleMs >= 0) ++g_subscriptions;
}

} // namespace

// Message 0x8007 switches a built form of 1,000 controls online: the controls are rebuilt
// for the mode and their parameters subscribed at the host.
static void BM_OnlineSwitch1000(benchmark::State &state)
{
    const QString path = writeUi(QStringLiteral("form1000.ui"), uiFile(1000, true));
    TwizFormLoader loader;
    std::unique_ptr<QWidget> form(loader.loadForm(path));
    firstLayout(form.get());
    auto *table = form->findChild<TParaTable *>();
    dwz_callbacks cb{};
    cb.get_para_value = benchGetValue;
    cb.subscribe = benchSubscribe;
    table->SetCallbacks(cb);
    for (auto _ : state) {
        g_subscriptions = 0;
        PostMessage(table->WindowHandle(), wmToolOnlineMode, omOnline, 0);
        QCoreApplication::sendPostedEvents();
        state.PauseTiming();
        state.counters["subscriptions"] = g_subscriptions;
        PostMessage(table->WindowHandle(), wmToolOnlineMode, omOffline, 0);
        QCoreApplication::sendPostedEvents();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_OnlineSwitch1000)->Unit(benchmark::kMillisecond);

namespace {

// The drive's side of a push burst: the value of each of the form's parameters, set by
// the pushing thread before it posts, and how many values the form has read.
constexpr int kBurstControls = 100;
constexpr int kPushes = 10000;
std::atomic<int> g_burstValue[kBurstControls];
std::atomic<int> g_valuesRead{0};
int g_lastRead[kBurstControls]; // the value each control read last
QHash<quint32, int> g_burstIndex; // address -> control

int32_t burstGetValue(char *buffer, int32_t size, uint32_t, uint32_t address, uint8_t *status)
{
    *status = 0;
    char text[16];
    const int index = g_burstIndex.value(address);
    const int value = g_burstValue[index].load();
    const int n = std::snprintf(text, sizeof text, "%d", value);
    if (buffer && size > n) {
        std::memcpy(buffer, text, size_t(n) + 1);
        g_lastRead[index] = value;
        g_valuesRead.fetch_add(1);
    }
    return n;
}

} // namespace

// 10,000 pushed changes (message 0x8006) posted from another thread for the 100 controls
// of a shown form, until every push is handled and the form has repainted.
static void BM_PushBurst(benchmark::State &state)
{
    const QString path = writeUi(QStringLiteral("burst100.ui"), uiFile(kBurstControls, true));
    TwizFormLoader loader;
    std::unique_ptr<QWidget> form(loader.loadForm(path));
    auto *table = form->findChild<TParaTable *>();
    const QList<TParaClass *> controls = form->findChildren<TParaClass *>();
    std::vector<quint32> addresses;
    for (int i = 0; i < kBurstControls; ++i) {
        addresses.push_back(controls.at(i)->Q7adr());
        g_burstIndex.insert(addresses.back(), i);
    }
    dwz_callbacks cb{};
    cb.get_para_value = burstGetValue;
    cb.subscribe = benchSubscribe; // the drive pushes: the table need not ask by itself
    table->SetCallbacks(cb);
    table->SetOnline(omOnline);
    form->show();
    QCoreApplication::processEvents();
    const quintptr window = table->WindowHandle();
    QTimer wakeUp; // a lost push must not leave the wait below waiting for ever
    wakeUp.start(100);
    int round = 0;
    for (auto _ : state) {
        const int base = ++round * kPushes;
        g_valuesRead = 0;
        std::thread drive([&] {
            for (int i = 0; i < kPushes; ++i) {
                g_burstValue[i % kBurstControls] = base + i;
                PostMessage(window, wmToolMessage, addresses[size_t(i % kBurstControls)], 1);
            }
        });
        QElapsedTimer waited;
        waited.start();
        while (g_valuesRead.load() < kPushes && waited.elapsed() < 30000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::processEvents(); // the repaint
        drive.join();
        state.PauseTiming();
        bool last = true; // each control got the value of its last push
        for (int i = 0; i < kBurstControls; ++i)
            last = last && g_lastRead[i] == base + kPushes - kBurstControls + i;
        if (!last || g_valuesRead.load() < kPushes) {
            state.SkipWithError("a control did not get its last value");
            break;
        }
        state.ResumeTiming();
    }
    state.counters["pushes_per_second"] =
        benchmark::Counter(double(kPushes) * double(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_PushBurst)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char **argv)
{
    return drivewiz::bench::runBenchmarks(argc, argv, true);
}
