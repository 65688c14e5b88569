#include "support/testing.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "platform/component.h"
#include "platform/inifile.h"
#include "platform/messages.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <atomic>
#include <cstring>
#include <functional>
#include <map>
#include <thread>
#include <utility>

using namespace drivewiz;

namespace {

// A host behind the C callbacks: values per address, a write log, injectable answers.
struct FakeHost
{
    std::map<quint32, QByteArray> values;
    std::vector<std::pair<quint32, QByteArray>> writes;
    std::vector<std::pair<quint32, int>> subscriptions;
    int reads = 0;
    char setStatus = 0;
    quint8 getStatus = 0;
    enum class Lie { None, Longer, Negative, Latin1 } lie = Lie::None;
    // Runs inside a read, between the length and the text, as a host that lets its
    // events run while it talks to the drive.
    std::function<void(quint32 address)> duringRead;
    std::function<void()> duringSubscribe; // once, inside the next subscribe call
};
FakeHost *host = nullptr;

int32_t getValue(char *buffer, int32_t size, uint32_t, uint32_t address, uint8_t *status)
{
    ++host->reads;
    *status = host->getStatus;
    const QByteArray v = host->lie == FakeHost::Lie::Latin1 ? QByteArray("Gr\xF6\xDF"
                                                                         "e")
                                                            : host->values[address];
    if (host->lie == FakeHost::Lie::Negative) return -5;
    const int32_t claimed = int32_t(v.size()) + (host->lie == FakeHost::Lie::Longer ? 40 : 0);
    if (!buffer) return claimed;
    if (host->duringRead) std::exchange(host->duringRead, nullptr)(address);
    std::memcpy(buffer, v.constData(), size_t(std::min<int32_t>(int32_t(v.size()), size - 1)));
    return claimed;
}

char setValue(const char *value, uint32_t, uint32_t address, int32_t)
{
    host->writes.emplace_back(address, QByteArray(value));
    if (host->setStatus == 0) host->values[address] = value;
    return host->setStatus;
}

void subscribe(uint32_t, uint32_t address, int32_t cycle)
{
    host->subscriptions.emplace_back(address, cycle);
    if (host->duringSubscribe) std::exchange(host->duringSubscribe, nullptr)();
}

const QByteArray kDescriptions = "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Write-Level\r\n"
                                 "Drehzahl;A10;1;100;0;01028000;2\r\n"
                                 "Modus;A11;1;1: ein;1;0102C000;2\r\n"
                                 "Nur lesen;A12;1;7;0;01030000;6\r\n";
const quint32 kA10 = 0x01028000;
const quint32 kA11 = 0x0102C000;

} // namespace

// A form with a table and two controls of A10 and one of A11, in its own working folder
// with a central language folder beside it (so wiz.cfg lands there too).
class ParaTableForm : public testing::Test
{
protected:
    void SetUp() override
    {
        host = &fake;
        m_oldCwd = QDir::currentPath();
        QDir(m_dir.path()).mkpath(QStringLiteral("work"));
        QDir(m_dir.path()).mkpath(QStringLiteral("WizLingua"));
        test::writeFile(m_dir.filePath(QStringLiteral("WizLingua/wizling.1")),
                        "[ComStr]\r\ns25=Weiter!\r\n[Wiz1]\r\nTitel=Hallo\r\n");
        QDir::setCurrent(m_dir.filePath(QStringLiteral("work")));
        test::writeFile(m_dir.filePath(QStringLiteral("work/Parameter.csv")), kDescriptions);
        table = new TParaTable(&form);
        a10 = new TParaClass(&form);
        a10b = new TParaClass(&form);
        a11 = new TParaClass(&form);
        a10->SetKoordinate(QStringLiteral("A10"));
        a10b->SetKoordinate(QStringLiteral("A10"));
        a11->SetKoordinate(QStringLiteral("A11"));
        table->SetParamFileName(QStringLiteral("Parameter.csv"));
        table->SetWizIdString(QStringLiteral("Wiz1"));
        table->Loaded();
        fake.values[kA10] = "100";
        test::recorder().clear();
    }
    void TearDown() override
    {
        QDir::setCurrent(m_oldCwd);
        ResetCommonStrings();
        host = nullptr;
    }
    void connectHost()
    {
        dwz_callbacks cb{};
        cb.get_para_value = getValue;
        cb.set_para_value = setValue;
        cb.subscribe = subscribe;
        table->SetCallbacks(cb);
    }
    void post(uint msg, quintptr w, qintptr l)
    {
        ASSERT_TRUE(PostMessage(table->WindowHandle(), msg, w, l));
        QCoreApplication::processEvents();
    }

    FakeHost fake;
    QTemporaryDir m_dir;
    QString m_oldCwd;
    QWidget form;
    TParaTable *table = nullptr;
    TParaClass *a10 = nullptr;
    TParaClass *a10b = nullptr;
    TParaClass *a11 = nullptr;
};

TEST_F(ParaTableForm, LoadsBindsAndLooksUp)
{
    EXPECT_EQ(table->RowCount(), 3);
    EXPECT_EQ(a10->wizParaSource(), table);
    EXPECT_EQ(a10->GetText(), QStringLiteral("100"));
    EXPECT_EQ(a10->Q7adr(), kA10);
    EXPECT_EQ(a10->SameParameterControls().size(), 1);
    EXPECT_TRUE(table->ParamExists(QStringLiteral("a11")));
    EXPECT_FALSE(table->ParamExists(QStringLiteral("A13")));
    quint32 address = 1;
    EXPECT_GE(table->FindRecord(QStringLiteral("1.A10"), QStringLiteral("2"), address), 0);
    EXPECT_EQ(address, 0u); // nothing was fetched from the host
    EXPECT_EQ(table->FindRecord(QStringLiteral("2.A10"), QStringLiteral("1"), address), -1);
    EXPECT_TRUE(table->IstAuswahlParameter(table->FindParam(QStringLiteral("A11"), "1")));
    EXPECT_FALSE(table->IstAuswahlParameter(table->FindParam(QStringLiteral("A10"), "1")));
    EXPECT_EQ(s_Next, QStringLiteral("Weiter!")); // read from the central language file
    EXPECT_EQ(table->ReadLngString(QStringLiteral("Titel"), QStringLiteral("x")),
              QStringLiteral("Hallo"));
}

TEST_F(ParaTableForm, WritesGoToTheHostOnlyWhenTheyMay)
{
    EXPECT_EQ(table->SetParaValue(kA10, QStringLiteral("A10"), QStringLiteral("5")), 0);
    EXPECT_TRUE(fake.writes.empty()); // no callback yet
    connectHost();
    EXPECT_EQ(table->SetParaValue(0, QStringLiteral("A10"), QStringLiteral("5")), 0);
    EXPECT_EQ(table->SetParaValue(kA10, QStringLiteral("A-10"), QStringLiteral("5")), 0);
    EXPECT_TRUE(fake.writes.empty());
    table->SetOnline(omRueckdoku);
    table->PostParaControl(a10);
    table->PostAllParams();
    EXPECT_TRUE(fake.writes.empty());
    table->SetOnline(omOffline);
    table->PostAllParams(); // A12 is read-only: two controls of A10 and A11 are written
    EXPECT_EQ(fake.writes.size(), 3u);
    EXPECT_EQ(test::recorder().messages(), QStringList());
}

TEST_F(ParaTableForm, RefusedWriteBeepsRestoresAndTells)
{
    connectHost();
    fake.setStatus = 'V';
    static_cast<QLineEdit *>(a10->GetEditControl())->setText(QStringLiteral("250"));
    table->PostParaControl(a10);
    EXPECT_EQ(a10->GetText(), QStringLiteral("100")); // the previous value is back
    EXPECT_EQ(test::recorder().beeps(), 1);
    EXPECT_EQ(test::recorder().messages(), QStringList({"Freigabe muss AUS sein!: Drehzahl"}));
    test::recorder().clear();
    table->PostAllParams(); // busy: neither beep nor box
    EXPECT_EQ(test::recorder().beeps(), 0);
    EXPECT_EQ(test::recorder().messages(), QStringList());
}

TEST_F(ParaTableForm, EchoOfOwnWriteIsDroppedOnce)
{
    connectHost();
    qint64 now = 1000000;
    table->SetClock([&now] { return now; });
    table->SetOnline(omOnline);
    table->SetParaValue(kA10, QStringLiteral("A10"), QStringLiteral("100"));
    fake.values[kA10] = "111";
    now += 249;
    post(wmToolMessage, kA10, 1);
    EXPECT_EQ(a10->GetText(), QStringLiteral("100")); // our own echo
    post(wmToolMessage, kA10, 1);
    EXPECT_EQ(a10->GetText(), QStringLiteral("111"));
    EXPECT_EQ(a10b->GetText(), QStringLiteral("111")); // the mirror follows
    table->SetParaValue(kA10, QStringLiteral("A10"), QStringLiteral("111"));
    fake.values[kA10] = "112";
    now += 250; // an echo comes in less than 250 ms: this is a change
    post(wmToolMessage, kA10, 1);
    EXPECT_EQ(a10->GetText(), QStringLiteral("112"));
    post(wmToolMessage, kA10, 0); // bit 0 clear: not a change
    table->SetOnline(omOffline);
    fake.values[kA10] = "113";
    post(wmToolMessage, kA10, 1); // offline: ignored
    EXPECT_EQ(a10->GetText(), QStringLiteral("112"));
}

TEST_F(ParaTableForm, ReservedAndUnknownAddresses)
{
    connectHost();
    table->SetOnline(omOnline);
    int notified = 0;
    table->OnToolMessage = [&notified](quint32, const QString &, TParaClass *, int) { ++notified; };
    const int readsBefore = fake.reads;
    post(wmToolMessage, 0x01E08005, 1); // A898.5
    EXPECT_EQ(notified, 0);
    EXPECT_EQ(fake.reads, readsBefore);
    post(wmToolMessage, 0x05000000, 1); // E00: unknown to the table, still reported
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(test::recorder().messages(), QStringList());
}

TEST_F(ParaTableForm, SubscriptionsAndOnlineModeMessages)
{
    connectHost();
    table->SetOnlineRefreshRate(0);
    table->SetOnline(omOnline);
    EXPECT_TRUE(fake.subscriptions.empty());
    table->SetOnline(omOffline);
    table->SetOnlineRefreshRate(500);
    MessageWindow subscriber;
    std::vector<std::pair<uint, quintptr>> got;
    subscriber.onMessage = [&got](uint m, quintptr w, qintptr) { got.emplace_back(m, w); };
    table->SubscribeMsgOnlineChange(subscriber.handle());
    table->SubscribeMsgOnlineChange(subscriber.handle()); // once only
    post(wmToolOnlineMode, omOnline, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(table->Online(), omOnline);
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0], std::make_pair(wmOnlineChanged, quintptr(omOnline)));
    EXPECT_EQ(table->UpdateList().size(), 2u); // A10 once, A11
    post(wmToolOnlineMode, omOffline, 0);
    EXPECT_TRUE(table->UpdateList().empty());
    EXPECT_EQ(fake.subscriptions.back().second, -1);
    post(wmToolOnlineMode, 7, 0); // no such mode
    EXPECT_EQ(table->Online(), omOffline);
}

TEST_F(ParaTableForm, HostAnswersThatCannotBeRight)
{
    connectHost();
    QString value;
    quint8 status = 0;
    fake.lie = FakeHost::Lie::Longer;
    EXPECT_TRUE(table->GetFreshParaValue(kA10, QStringLiteral("A10"), value, status));
    EXPECT_EQ(value, QStringLiteral("100"));
    fake.lie = FakeHost::Lie::Latin1;
    table->GetFreshParaValue(kA10, QStringLiteral("A10"), value, status);
    EXPECT_EQ(value, QString::fromUtf8("Größe"));
    fake.lie = FakeHost::Lie::Negative;
    EXPECT_FALSE(table->GetFreshParaValue(kA10, QStringLiteral("A10"), value, status));
    table->GetFreshParaValue(kA10, QStringLiteral("A10"), value, status);
    EXPECT_EQ(test::recorder().messages().size(), 1); // reported once
    fake.lie = FakeHost::Lie::None;
    fake.getStatus = 5;
    test::recorder().clear();
    EXPECT_FALSE(table->GetFreshParaValue(kA10, QStringLiteral("A10"), value, status));
    ASSERT_EQ(test::recorder().messages().size(), 1);
    EXPECT_TRUE(test::recorder().messages()[0].startsWith("Error at: \rModul:  fcbtGetParaValue"));
}

TEST_F(ParaTableForm, ConfigurationPerWizardAndReadOnly)
{
    table->WriteCFGInteger(QStringLiteral("FormWidth"), 640);
    EXPECT_EQ(table->ReadCFGInteger(QStringLiteral("FormWidth"), 0), 640);
    IniFile cfg(GetCFGFileName());
    ASSERT_TRUE(cfg.load());
    EXPECT_EQ(cfg.readInteger(QStringLiteral("Wiz1"), QStringLiteral("FormWidth"), 0), 640);
    table->SetWizIdString(QString());
    EXPECT_EQ(table->ReadCFGInteger(QStringLiteral("FormWidth"), 7), 7);
    table->WriteCFGString(QStringLiteral("x"), QStringLiteral("y"));
    IniFile again(GetCFGFileName());
    again.load();
    EXPECT_FALSE(again.sectionExists(QString()));
    // A write-protected file is read but never written.
    QFile::setPermissions(GetCFGFileName(), QFile::ReadOwner | QFile::ReadGroup);
    TParaTable readOnly;
    readOnly.SetWizIdString(QStringLiteral("Wiz1"));
    EXPECT_TRUE(readOnly.CfgReadOnly());
    EXPECT_EQ(readOnly.ReadCFGInteger(QStringLiteral("FormWidth"), 0), 640);
    readOnly.WriteCFGInteger(QStringLiteral("FormWidth"), 1);
    QFile::setPermissions(GetCFGFileName(), QFile::ReadOwner | QFile::WriteOwner);
    IniFile after(GetCFGFileName());
    after.load();
    EXPECT_EQ(after.readInteger(QStringLiteral("Wiz1"), QStringLiteral("FormWidth"), 0), 640);
}

TEST_F(ParaTableForm, BadLanguageAndConfigurationFilesKeepTheDefaults)
{
    test::writeFile(m_dir.filePath(QStringLiteral("WizLingua/wizling.2")),
                    "[ComStr\r\ns25\r\n=\r\n\xFF\xFE garbage");
    table->SetLanguage(2);
    EXPECT_EQ(s_Next, QStringLiteral("Weiter"));
    QDir(m_dir.path()).mkpath(QStringLiteral("WizLingua/wizling.3"));
    table->SetLanguage(3); // a folder where the file should be
    EXPECT_EQ(s_Next, QStringLiteral("Weiter"));
    EXPECT_EQ(table->ReadLngString(QStringLiteral("Titel"), QStringLiteral("d")),
              QStringLiteral("d"));
    QFile::remove(GetCFGFileName());
    QDir().mkpath(GetCFGFileName());
    TParaTable noCfg;
    noCfg.SetWizIdString(QStringLiteral("Wiz1"));
    EXPECT_EQ(noCfg.ReadCFGString(QStringLiteral("a"), QStringLiteral("b")), QStringLiteral("b"));
    noCfg.WriteCFGString(QStringLiteral("a"), QStringLiteral("c"));
}

TEST_F(ParaTableForm, ForeignThreadFloodWhileTheTableRuns)
{
    connectHost();
    table->SetOnline(omOnline);
    const quintptr handle = table->WindowHandle();
    std::atomic<bool> done{false};
    std::thread poster([handle, &done] {
        for (int i = 0; i < 100000; ++i)
            PostMessage(handle, wmToolMessage, quintptr(i % 2 ? kA10 : 0x01E08001), 1);
        done = true;
    });
    QDeadlineTimer deadline(60000);
    while (!done && !deadline.hasExpired())
        QCoreApplication::processEvents();
    poster.join();
    QCoreApplication::processEvents();
    EXPECT_EQ(a10->GetText(), QStringLiteral("100"));
}

TEST_F(ParaTableForm, MessagesDuringDestructionAreDropped)
{
    connectHost();
    table->SetOnline(omOnline);
    const quintptr handle = table->WindowHandle();
    PostMessage(handle, wmToolMessage, kA10, 1);
    delete table;
    EXPECT_FALSE(PostMessage(handle, wmToolMessage, kA10, 1));
    QCoreApplication::processEvents();
    table = nullptr;
}

TEST(ParaTableCrc, StandardCheckValue)
{
    quint32 crc = 0;
    EXPECT_FALSE(crc_check(crc, 0xCBF43926u, "123456789", 9));
    EXPECT_EQ(crc, 0xCBF43926u);
    EXPECT_TRUE(crc_check(crc, 0, "123456789", 9));
    EXPECT_EQ(crc_table[1], 0x77073096u);
}

TEST(ParaTableAlone, ApplicationTag999LoadsNothing)
{
    SetApplicationTag(999);
    TParaTable t;
    t.SetParamFileName(test::sourcePath(QStringLiteral("data/sample/Parameter.csv")));
    t.Loaded();
    SetApplicationTag(0);
    EXPECT_EQ(t.RowCount(), 0);
    EXPECT_EQ(t.Language(), 0);
    EXPECT_EQ(test::recorder().messages(), QStringList());
}

TEST(ParaTableAlone, DescriptionFoundByItsBareNameIsUsedAfterTheInformation)
{
    QTemporaryDir dir;
    const QString old = QDir::currentPath();
    QDir::setCurrent(dir.path());
    test::writeFile(dir.filePath(QStringLiteral("Parameter.csv")), kDescriptions);
    TParaTable t;
    t.SetParamFileName(QStringLiteral("/no/such/folder/Parameter.csv"));
    t.ReloadCSVFile();
    QDir::setCurrent(old);
    EXPECT_EQ(t.RowCount(), 3);
    EXPECT_EQ(test::recorder().messages(),
              QStringList({"Es wird die Datei im Arbeitsverzeichnis verwendet:\rParameter.csv"}));
    TParaTable missing;
    missing.SetParamFileName(QStringLiteral("/no/such/folder/Nix.csv"));
    missing.ReloadCSVFile();
    EXPECT_EQ(test::recorder().messages().last(),
              QStringLiteral("Parameterfile nicht gefunden:\r/no/such/folder/Nix.csv"));
}

// A host that lets its events run inside a read: a push handled meanwhile reads a long
// value; the outer read still fills a buffer of its own.
TEST_F(ParaTableForm, NestedReadInsideAReadUsesItsOwnBuffer)
{
    connectHost();
    table->SetOnline(omOnline);
    fake.values[kA11] = QByteArray(5000, 'x');
    fake.values[kA10] = QByteArray(300, '7');
    fake.duringRead = [this](quint32) {
        PostMessage(table->WindowHandle(), wmToolMessage, kA11, 1);
        QCoreApplication::processEvents();
    };
    a10->RefreshValue();
    EXPECT_EQ(a10->GetText(), QString(300, u'7'));
    EXPECT_EQ(a11->GetText(), QString(5000, u'x'));
    EXPECT_EQ(table->ValueByColName(table->FindParam("A10", "1"), "Wert"), QString(300, u'7'));
    EXPECT_EQ(test::recorder().messages(), QStringList());
}

// A read that fails leaves the control and "Wert" alone, and OK writes what was there.
TEST_F(ParaTableForm, FailedReadsNeverBlankAValue)
{
    connectHost();
    const int a10row = table->FindParam("A10", "1");
    for (const auto lie : {FakeHost::Lie::Negative, FakeHost::Lie::None}) {
        fake.lie = lie;
        fake.getStatus = lie == FakeHost::Lie::None ? 3 : 0;
        fake.values[kA10] = "";
        a10->RefreshValue();
        table->ReadAllParams();
        EXPECT_EQ(a10->GetText(), QStringLiteral("100"));
        EXPECT_EQ(table->ValueByColName(a10row, "Wert"), QStringLiteral("100"));
    }
    fake.values.clear();
    table->PostAllParams();
    EXPECT_EQ(fake.values[kA10], "100");
}

// An error status is reported once: the length that came with it is not looked at, and a
// help text the host does not have is no fault at all.
TEST_F(ParaTableForm, ErrorStatusGivesOneBoxAndNoInventedLength)
{
    connectHost();
    QString value;
    quint8 status = 0;
    fake.lie = FakeHost::Lie::Negative;
    fake.getStatus = 7;
    EXPECT_FALSE(table->GetFreshParaValue(kA10, QStringLiteral("A10"), value, status));
    ASSERT_EQ(test::recorder().messages().size(), 1);
    EXPECT_TRUE(test::recorder().messages()[0].contains(QStringLiteral("ErrCode:7")));
    test::recorder().clear();
    dwz_callbacks cb = table->Callbacks();
    cb.get_help_text = [](char *, int32_t, uint32_t, uint32_t) { return int32_t(-1); };
    cb.get_para_info = [](char *, int32_t, uint32_t, uint32_t, uint8_t *status) {
        *status = 9;
        return int32_t(-1);
    };
    table->SetCallbacks(cb);
    EXPECT_TRUE(table->GetRTFhelpstring(kA10).isEmpty());
    EXPECT_EQ(test::recorder().messages(), QStringList());
    quint32 address = 0;
    EXPECT_EQ(table->FindRecord(QStringLiteral("A20"), QStringLiteral("1"), address), -1);
    ASSERT_EQ(test::recorder().messages().size(), 1);
    EXPECT_TRUE(test::recorder().messages()[0].contains(QStringLiteral("fcbtGetParaInfoStr")));
}

// What a host or a frame connects to: pushes, mode changes and saves come as signals
// beside the event property, through the handlers ToolMsg and OnlineMsg.
TEST_F(ParaTableForm, SignalsBesideTheEventProperty)
{
    connectHost();
    QSignalSpy pushes(table, &TParaTable::toolMessage);
    QSignalSpy modes(table, &TParaTable::onlineModeChanged);
    QSignalSpy saves(table, &TParaTable::valuesSaved);
    int notified = 0;
    table->OnToolMessage = [&notified](quint32, const QString &, TParaClass *, int) { ++notified; };
    post(wmToolOnlineMode, omOnline, 0);
    ASSERT_EQ(modes.size(), 1);
    EXPECT_EQ(modes[0][0].value<tOnlineModus>(), omOnline);
    fake.values[kA10] = "120";
    post(wmToolMessage, kA10, 1);
    table->ToolMsg(0x05000000, 1); // the handler itself: E00 has no control
    ASSERT_EQ(pushes.size(), 2);
    EXPECT_EQ(notified, 2);
    EXPECT_EQ(pushes[0][0].toUInt(), kA10);
    EXPECT_EQ(pushes[0][1].toString(), QStringLiteral("A10"));
    EXPECT_EQ(pushes[0][2].value<TParaClass *>(), a10);
    EXPECT_EQ(pushes[0][3].toInt(), table->FindParam("A10", "1"));
    EXPECT_EQ(pushes[1][2].value<TParaClass *>(), nullptr);
    table->OnlineMsg(omOffline, 0);
    EXPECT_EQ(modes.size(), 2);
    table->PostAllParams();
    EXPECT_EQ(saves.size(), 1);
}

// A unit taken from another parameter ("<A19>") follows that parameter's pushed value,
// whether the form shows it or not.
TEST(ParaTableUnits, IndirectUnitsFollowTheirSource)
{
    FakeHost fake;
    host = &fake;
    QTemporaryDir dir;
    const QString params = dir.filePath(QStringLiteral("Parameter.csv"));
    test::writeFile(params, "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Einheit\r\n"
                            "Weg;A10;1;5;0;01028000;<A19>\r\n"
                            "Einheit;A19;1;mm;0;0104C000;\r\n");
    QWidget form;
    auto *table = new TParaTable(&form);
    auto *weg = new TParaClass(&form);
    weg->SetKoordinate(QStringLiteral("A10"));
    table->SetParamFileName(params);
    table->Loaded();
    ASSERT_NE(weg->unitLabel(), nullptr);
    EXPECT_EQ(weg->unitLabel()->text(), QStringLiteral("mm"));
    dwz_callbacks cb{};
    cb.get_para_value = getValue;
    table->SetCallbacks(cb);
    table->SetOnline(omOnline);
    fake.values[kA10] = "5";
    fake.values[0x0104C000] = "inch";
    table->ToolMsg(0x0104C000, 1);
    EXPECT_EQ(weg->unitLabel()->text(), QStringLiteral("inch"));
    auto *einheit = new TParaClass(&form); // now the form shows the source too
    einheit->SetwizParaSource(table);
    einheit->SetKoordinate(QStringLiteral("A19"));
    fake.values[0x0104C000] = "m";
    table->ToolMsg(0x0104C000, 1);
    EXPECT_EQ(einheit->GetText(), QStringLiteral("m"));
    EXPECT_EQ(weg->unitLabel()->text(), QStringLiteral("m"));
    host = nullptr;
}

// The host switches the mode again inside a callback of a switch (posting 0x8007 and
// letting it run): the newer switch wins, and the host's subscriptions are the table's.
TEST_F(ParaTableForm, ModeSwitchInsideASwitchEndsInTheNewerMode)
{
    connectHost();
    table->SetOnline(omOnline);
    ASSERT_EQ(table->UpdateList().size(), 2u);
    fake.duringSubscribe = [this] {
        PostMessage(table->WindowHandle(), wmToolOnlineMode, omOnline, 0);
        QCoreApplication::processEvents();
    };
    post(wmToolOnlineMode, omOffline, 0);
    EXPECT_EQ(table->Online(), omOnline);
    std::map<quint32, int> active; // what the host has subscribed now
    for (const auto &[address, cycle] : fake.subscriptions)
        active[address] += cycle > 0 ? 1 : -1;
    for (const auto &[address, count] : active) {
        const bool listed =
            std::count(table->UpdateList().begin(), table->UpdateList().end(), address) == 1;
        EXPECT_EQ(count, listed ? 1 : 0) << address;
    }
    EXPECT_FALSE(table->UpdateList().empty());
}
