#include "SimulatedDrive.h"

#include "paramtable/para_import.h"
#include "platform/messages.h"
#include "platform/rtfreader.h"
#include "platform/textcodec.h"
#include "support/testing.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <atomic>
#include <thread>
#include <vector>

using namespace drivewiz;
using namespace drivewiz::sim;

namespace {

constexpr quint32 kRampe1 = 0x010A0001; // A40.1 axis 1: "Rampe§Rücklaufzeit", 500 ms
constexpr quint32 kUnknown = 0x1A3FC000;

// Delivers posted events until the predicate holds or the deadline passes.
template <typename Pred> bool processUntil(Pred done, int ms = 20000)
{
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return done();
}

struct Msg
{
    uint msg;
    quintptr wParam;
    qintptr lParam;
};

// The sample drive behind the C callbacks, with a clock the test moves.
class SimDrive : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(drive.load(test::sourcePath(QStringLiteral("data/sample/Parameter.csv"))));
        drive.setClock([this] { return now.load(); });
        SimulatedDrive::setCurrent(&drive);
        window.onMessage = [this](uint m, quintptr w, qintptr l) { got.push_back({m, w, l}); };
        drive.setMessageWindow(window.handle());
    }
    void TearDown() override { SimulatedDrive::setCurrent(nullptr); }

    // The two-call protocol as the library runs it.
    template <typename Fn> QByteArray fetch(Fn fn, quint32 address, uint8_t *status = nullptr)
    {
        uint8_t st = 0xEE;
        const int32_t n = fn(nullptr, 0, 7, address, &st);
        if (status) *status = st;
        if (n < 0) return QByteArray();
        QByteArray buffer(n + 1, '#');
        fn(buffer.data(), n + 1, 7, address, &st);
        return QByteArray(buffer.constData());
    }
    QByteArray value(quint32 address, uint8_t *status = nullptr)
    {
        return fetch(cb.get_para_value, address, status);
    }
    int messagesFor(quint32 address) const
    {
        int n = 0;
        for (const Msg &m : got)
            n += m.msg == DWZ_MSG_TOOL && m.wParam == address && m.lParam == 1;
        return n;
    }

    // Declared so that the window goes first and the clock outlives the drive's worker.
    std::atomic<qint64> now{0};
    std::vector<Msg> got;
    SimulatedDrive drive;
    dwz_callbacks cb = SimulatedDrive::callbacks();
    MessageWindow window;
};

} // namespace

// --- loading -------------------------------------------------------------------------

namespace {

// The sample file's parameter rows (every line but the titles has its own address).
int sampleRows()
{
    return int(test::readFile(test::sourcePath(QStringLiteral("data/sample/Parameter.csv")))
                   .count("\r\n")) -
           1;
}

} // namespace

TEST_F(SimDrive, LoadsEveryRowUnderItsAddress)
{
    EXPECT_GE(sampleRows(), 422);
    EXPECT_EQ(drive.parameterCount(), sampleRows());
    EXPECT_EQ(drive.addressOf(QStringLiteral("A40.1"), 1), kRampe1);
    EXPECT_EQ(drive.addressOf(QStringLiteral("b33.4"), 2), 0x42084004u);
    EXPECT_EQ(drive.value(0x41004000), QStringLiteral("Drehtisch"));
    EXPECT_EQ(drive.addressOf(QStringLiteral("Z99")), 0u);
}

TEST_F(SimDrive, DefaultFillsAnEmptyValueAndBadRowsAreSkippedSilently)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("p.csv"));
    ASSERT_TRUE(test::writeFile(file, "Koordinate;Achse;Wert;Defaultwert;USS-Adresse /hex\r\n"
                                      "A10;2;;42;\r\n"
                                      "B3.X3;1;1;1;\r\n"
                                      "C05;0;7;0;0A0B0C0Dh\r\n"));
    ASSERT_TRUE(drive.load(file));
    EXPECT_EQ(drive.parameterCount(), 2);
    EXPECT_EQ(drive.value(0x41028000), QStringLiteral("42"));
    EXPECT_EQ(drive.value(0x0A0B0C0D), QStringLiteral("7"));
    EXPECT_TRUE(test::recorder().takeMessages().isEmpty());
}

TEST_F(SimDrive, AMissingFileKeepsTheLoadedDrive)
{
    EXPECT_FALSE(drive.load(QStringLiteral("/nonexistent/Parameter.csv")));
    EXPECT_EQ(test::recorder().takeMessages().size(), 1);
    EXPECT_EQ(drive.parameterCount(), sampleRows());
}

// --- values ---------------------------------------------------------------------------

TEST_F(SimDrive, TwoCallProtocolAndTruncation)
{
    uint8_t status = 0xEE;
    EXPECT_EQ(cb.get_para_value(nullptr, 0, 1, kRampe1, &status), 3);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(value(kRampe1), QByteArray("500"));
    char small[3] = {'#', '#', '#'};
    EXPECT_EQ(cb.get_para_value(small, 3, 1, kRampe1, &status), 3);
    EXPECT_EQ(QByteArray(small), QByteArray("50"));
    EXPECT_EQ(value(kUnknown, &status), QByteArray());
    EXPECT_EQ(status, StatusUnknownParameter);
    EXPECT_EQ(cb.get_para_value(nullptr, 0, 1, kUnknown, &status), 0);
}

TEST_F(SimDrive, HostileAnswers)
{
    char buffer[64];
    drive.setHostility(Callback::GetValue, Hostility::LengthTooLarge);
    EXPECT_EQ(cb.get_para_value(buffer, 64, 1, kRampe1, nullptr), 3 + 64);
    EXPECT_EQ(QByteArray(buffer), QByteArray("500"));
    drive.setHostility(Callback::GetValue, Hostility::NegativeLength);
    EXPECT_EQ(cb.get_para_value(nullptr, 0, 1, kRampe1, nullptr), -1);
    EXPECT_EQ(cb.get_para_value(buffer, 64, 1, kRampe1, nullptr), -1);
    EXPECT_EQ(buffer[0], '\0');
    drive.setHostility(Callback::ParaInfo, Hostility::InvalidUtf8);
    const QByteArray info = fetch(cb.get_para_info, kRampe1);
    EXPECT_FALSE(isValidUtf8(info.constData(), info.size()));
    EXPECT_TRUE(decodeText(info).contains(QStringLiteral("Rampe§Rücklaufzeit")));
}

TEST_F(SimDrive, WritesAreStoredLoggedAndEchoed)
{
    QStringList seen;
    drive.onWrite = [&](const QString &line) { seen << line; };
    EXPECT_EQ(cb.set_para_value("900", 1, 0x410A0001, 0), char(StatusOk));
    EXPECT_EQ(drive.value(0x410A0001), QStringLiteral("900"));
    EXPECT_EQ(drive.log(), QStringList{QStringLiteral("A40.1 (2) = 900")});
    EXPECT_EQ(seen, drive.log());
    EXPECT_EQ(got.size(), 0u); // posted, not sent
    EXPECT_TRUE(processUntil([&] { return messagesFor(0x410A0001) == 1; }));
    EXPECT_EQ(cb.set_para_value("1", 1, kUnknown, 0), char(StatusUnknownParameter));
    EXPECT_EQ(cb.set_para_value(nullptr, 1, kRampe1, 0), char(StatusInvalidValue));
}

TEST_F(SimDrive, EnableRefusesWritesWithV)
{
    drive.setEnable(true);
    EXPECT_EQ(cb.set_para_value("1", 1, kRampe1, 0), 'V');
    EXPECT_EQ(drive.value(kRampe1), QStringLiteral("500"));
    EXPECT_TRUE(drive.log().isEmpty());
    drive.setEnable(false);
    EXPECT_EQ(cb.set_para_value("1", 1, kRampe1, 0), char(StatusOk));
}

TEST_F(SimDrive, InjectedStatusesOverrideEveryAnswer)
{
    drive.injectStatus(kRampe1, 9);
    uint8_t status = 0;
    EXPECT_EQ(value(kRampe1, &status), QByteArray());
    EXPECT_EQ(status, 9);
    EXPECT_EQ(cb.set_para_value("1", 1, kRampe1, 0), char(9));
    EXPECT_EQ(fetch(cb.get_para_info, kRampe1, &status), QByteArray());
    EXPECT_EQ(status, 9);
    drive.clearInjectedStatus(kRampe1);
    EXPECT_EQ(value(kRampe1, &status), QByteArray("500"));
    EXPECT_EQ(status, 0);
}

TEST_F(SimDrive, ErrorTexts)
{
    const auto text = [&](uint8_t code) {
        const int32_t n = cb.get_error_text(nullptr, 0, 1, 0, code);
        QByteArray b(n + 1, '#');
        cb.get_error_text(b.data(), n + 1, 1, 0, code);
        return QString::fromUtf8(b.constData());
    };
    EXPECT_EQ(text(StatusUnknownParameter), QStringLiteral("Parameter nicht vorhanden"));
    EXPECT_EQ(text(200), QStringLiteral("Unbekannter Fehler (Code 200)"));
    drive.setErrorText(200, QStringLiteral("Übertemperatur"));
    EXPECT_EQ(text(200), QStringLiteral("Übertemperatur"));
}

TEST_F(SimDrive, WithoutACurrentDriveTheCallbacksReportNoConnection)
{
    SimulatedDrive::setCurrent(nullptr);
    uint8_t status = 0;
    EXPECT_EQ(value(kRampe1, &status), QByteArray());
    EXPECT_EQ(status, StatusNoConnection);
    EXPECT_EQ(cb.set_para_value("1", 1, kRampe1, 0), char(StatusNoConnection));
    {
        SimulatedDrive other;
        SimulatedDrive::setCurrent(&other);
    }
    EXPECT_EQ(SimulatedDrive::current(), nullptr);
}

// --- descriptions ----------------------------------------------------------------------

TEST_F(SimDrive, ParaInfoParsesBackIntoAnImportTable)
{
    ASSERT_EQ(cb.set_para_value("750", 1, kRampe1, 0), char(StatusOk));
    uint8_t status = 0xEE;
    const QString text = QString::fromUtf8(fetch(cb.get_para_info, kRampe1, &status));
    EXPECT_EQ(status, 0);
    ASSERT_TRUE(text.endsWith(QStringLiteral("\r\n")));
    const QStringList lines = text.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    TImportTable table;
    table.InitColumnArray(lines[0]);
    ASSERT_TRUE(table.AddRow(lines[1]));
    table.ReBuildMainIndex();
    EXPECT_EQ(table.FindParam(QStringLiteral("A40.1"), QStringLiteral("1")), 0);
    EXPECT_EQ(table.ValueByColName(0, QStringLiteral("Name")),
              QStringLiteral("Rampe§Rücklaufzeit"));
    EXPECT_EQ(table.ValueByColName(0, QStringLiteral("Wert")), QStringLiteral("750"));
    EXPECT_EQ(ExtractCSVWord(1, lines[0], TCharSet(QStringLiteral(";"))), QStringLiteral("Name"));
}

TEST_F(SimDrive, AuswahlInfoListsTheParametersEntries)
{
    uint8_t status = 0xEE;
    const quint32 e48 = drive.addressOf(QStringLiteral("E48"), 1);
    const QStringList lines = QString::fromUtf8(fetch(cb.get_auswahl_info, e48, &status))
                                  .split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    EXPECT_EQ(status, 0);
    ASSERT_EQ(lines.size(), 9);
    TImportTable table;
    table.InitColumnArray(lines[0]);
    for (const QString &line : lines.mid(1))
        table.AddRow(line);
    table.ReBuildMainIndex();
    EXPECT_EQ(table.ValueByColName(4, QStringLiteral("Text")),
              QStringLiteral("Betrieb freigegeben"));
    const QByteArray none = fetch(cb.get_auswahl_info, kRampe1, &status);
    EXPECT_EQ(none.count('\n'), 1); // the title line alone
}

TEST_F(SimDrive, HelpIsRtfWithEscapedUmlauts)
{
    const int32_t n = cb.get_help_text(nullptr, 0, 1, kRampe1);
    ASSERT_GT(n, 0);
    QByteArray rtf(n + 1, '#');
    EXPECT_EQ(cb.get_help_text(rtf.data(), n + 1, 1, kRampe1), n);
    rtf.truncate(n);
    EXPECT_TRUE(rtf.startsWith("{\\rtf1"));
    EXPECT_TRUE(rtf.contains("R\\'fccklaufzeit"));
    const QString plain = RtfToPlainText(rtf);
    EXPECT_TRUE(plain.contains(QStringLiteral("A40.1  Rampe§Rücklaufzeit"))) << plain.toStdString();
    EXPECT_TRUE(plain.contains(QStringLiteral("Einheit: ms")));
    EXPECT_TRUE(plain.contains(QStringLiteral("Wertebereich: 0 bis 65000")));
    EXPECT_EQ(cb.get_help_text(nullptr, 0, 1, kUnknown), 0);
}

// --- moving values and subscriptions ---------------------------------------------------------

TEST_F(SimDrive, FunctionStatesFollowTheirSourcesAndTheFittedBoard)
{
    const quint32 a60 = drive.addressOf(QStringLiteral("A60"), 1);
    const quint32 a300 = drive.addressOf(QStringLiteral("A300"), 1);
    const quint32 a180 = drive.addressOf(QStringLiteral("A180"), 1);
    now = 0;
    ASSERT_TRUE(drive.setValue(a60, QStringLiteral("4: BE1 invers")));
    EXPECT_EQ(drive.value(a300), QStringLiteral("1: HIGH"));
    ASSERT_TRUE(drive.setValue(a60, QStringLiteral("2: Feldbus-Bit")));
    EXPECT_EQ(drive.value(a300), QStringLiteral("0: LOW"));
    ASSERT_TRUE(drive.setValue(a180, QStringLiteral("0000000000000001bin")));
    EXPECT_EQ(drive.value(a300), QStringLiteral("1: HIGH"));
    // BE6 (2300 ms) is on the option board: without a KBQ it stays low.
    ASSERT_TRUE(drive.setValue(a60, QStringLiteral("13: BE6")));
    now = 2300;
    EXPECT_EQ(drive.value(a300), QStringLiteral("1: HIGH"));
    ASSERT_TRUE(drive.setValue(drive.addressOf(QStringLiteral("E58")), QStringLiteral("KBM 7700")));
    EXPECT_EQ(drive.value(a300), QStringLiteral("0: LOW"));
}

TEST_F(SimDrive, MovingValuesFollowTheClock)
{
    const quint32 e48 = drive.addressOf(QStringLiteral("E48"), 1);
    EXPECT_EQ(drive.value(e48), QStringLiteral("0: Selbsttest"));
    now = 1200;
    EXPECT_EQ(drive.value(e48), QStringLiteral("2: Einschaltbereit"));
    drive.setEnable(true);
    EXPECT_EQ(drive.value(e48), QStringLiteral("3: Eingeschaltet"));
    now = 1700;
    EXPECT_EQ(drive.value(e48), QStringLiteral("4: Betrieb freigegeben"));

    // Function states follow their sources: A60 = BE1 on both axes, A64 = BE5 inverted on
    // axis 1 and bit 4 of the control word (set) on axis 2.
    const quint32 a300 = drive.addressOf(QStringLiteral("A300"), 1);
    const quint32 a304 = drive.addressOf(QStringLiteral("A304"), 1);
    const quint32 a304ax2 = drive.addressOf(QStringLiteral("A304"), 2);
    now = 0;
    EXPECT_EQ(drive.value(a300), QStringLiteral("0: LOW"));
    EXPECT_EQ(drive.value(a304), QStringLiteral("1: HIGH"));
    EXPECT_EQ(drive.value(a304ax2), QStringLiteral("1: HIGH"));
    now = 700;
    EXPECT_EQ(drive.value(a300), QStringLiteral("1: HIGH"));
    EXPECT_EQ(drive.value(drive.addressOf(QStringLiteral("E12"))), QStringLiteral("0000000000001bin"));
    now = 1900;
    EXPECT_EQ(drive.value(a304), QStringLiteral("0: LOW"));

    now = 2000; // a quarter of I330's period: the peak, half the upper limit 200
    EXPECT_EQ(drive.value(drive.addressOf(QStringLiteral("I330"), 1)), QStringLiteral("100.00"));
    EXPECT_EQ(drive.value(drive.addressOf(QStringLiteral("I330"), 2)), QStringLiteral("0.00"));
}

TEST_F(SimDrive, SubscriptionsAreRecordedAndCancelled)
{
    cb.subscribe(1, kRampe1, 1000);
    cb.subscribe(1, 0x410A0001, 250);
    cb.subscribe(1, kRampe1, -1);
    EXPECT_EQ(drive.subscriptions(), (std::map<quint32, int>{{0x410A0001, 250}}));
    EXPECT_EQ(drive.callCount(Callback::Subscribe), 3);
    drive.resetCallCounts();
    EXPECT_EQ(drive.callCount(Callback::Subscribe), 0);
}

TEST_F(SimDrive, WorkerPushesChangedSubscribedValuesOnce)
{
    const quint32 a300 = drive.addressOf(QStringLiteral("A300"), 1);
    const quint32 f11 = drive.addressOf(QStringLiteral("F11"));
    cb.subscribe(1, a300, 20);
    cb.subscribe(1, kRampe1, 20);
    cb.subscribe(1, f11, 1000);
    drive.start();
    now = 700;
    ASSERT_TRUE(processUntil([&] { return messagesFor(a300) == 1; }));
    // A write is echoed at once; the worker must not push it a second time. A later
    // change of another parameter marks a tick that came after the write.
    ASSERT_EQ(cb.set_para_value("123", 1, kRampe1, 0), char(StatusOk));
    ASSERT_TRUE(processUntil([&] { return messagesFor(kRampe1) == 1; }));
    drive.setValue(f11, QStringLiteral("1.000"));
    ASSERT_TRUE(processUntil([&] { return messagesFor(f11) == 1; }));
    EXPECT_EQ(messagesFor(kRampe1), 1);
    EXPECT_EQ(messagesFor(a300), 1);
    drive.stop();
}

TEST_F(SimDrive, OnlineModeIsPosted)
{
    EXPECT_TRUE(drive.postOnlineMode(DWZ_READBACK));
    ASSERT_TRUE(processUntil([&] { return !got.empty(); }));
    EXPECT_EQ(got[0].msg, uint(DWZ_MSG_ONLINE_MODE));
    EXPECT_EQ(got[0].wParam, quintptr(DWZ_READBACK));
    window.closeHandle();
    EXPECT_FALSE(drive.postOnlineMode(DWZ_ONLINE));
}

TEST_F(SimDrive, StopJoinsAndTheWorkerCanRestart)
{
    drive.stop(); // not running: nothing to do
    drive.start();
    drive.start();
    EXPECT_TRUE(drive.isRunning());
    drive.stop();
    EXPECT_FALSE(drive.isRunning());
    drive.start();
    cb.subscribe(1, drive.addressOf(QStringLiteral("A301"), 1), 20);
    now = 1100;
    EXPECT_TRUE(processUntil([&] { return !got.empty(); }));
    // The destructor of a running drive joins its worker.
    SimulatedDrive other;
    other.start();
}

// --- threads ------------------------------------------------------------------------

TEST_F(SimDrive, StressPostsFromAForeignThreadAndTheWorker)
{
    drive.setClock({}); // real time: the moving values change while the writes run
    for (int axis = 1; axis <= 2; ++axis)
        for (const char *k : {"A300", "A301", "A302", "I330", "E48"})
            cb.subscribe(1, drive.addressOf(QLatin1String(k), axis), 20);
    drive.start();
    constexpr int kWrites = 100000;
    std::thread writer([&] {
        for (int i = 0; i < kWrites; ++i)
            cb.set_para_value(QByteArray::number(i).constData(), 1, kRampe1, 0);
    });
    const bool all = processUntil([&] { return messagesFor(kRampe1) == kWrites; }, 120000);
    writer.join();
    drive.stop();
    EXPECT_TRUE(all) << messagesFor(kRampe1);
    EXPECT_EQ(drive.value(kRampe1), QString::number(kWrites - 1));
    EXPECT_EQ(drive.log().size(), kWrites);
}

TEST_F(SimDrive, PostsToAClosedWindowAreDropped)
{
    std::thread writer([&] {
        for (int i = 0; i < 20000; ++i)
            cb.set_para_value("1", 1, kRampe1, 0);
    });
    processUntil([&] { return !got.empty(); });
    window.closeHandle(); // while the writer is still posting, most likely
    const size_t atClose = got.size();
    writer.join();
    QCoreApplication::processEvents();
    EXPECT_EQ(got.size(), atClose);
    EXPECT_EQ(dwz_post_message(window.handle(), DWZ_MSG_TOOL, kRampe1, 1), 0);
}
