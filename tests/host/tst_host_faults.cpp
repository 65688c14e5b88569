// A host whose callbacks misbehave, one callback and one fault at a time, walking a wizard
// through the C interface as a host program does: create, help, online, a pushed change,
// a typed value written online, offline, OK, destroy. Nothing may crash, no value may be
// lost or blanked, and every fault is reported once.

#include "support/testing.h"

#include "SimulatedDrive.h"
#include "drivewiz/host_api.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPointer>

using namespace drivewiz;

namespace {

enum class Cb { GetValue, SetValue, Subscribe, ErrorText, ParaInfo, AuswahlInfo, HelpText };
enum class Fault {
    Absent,
    ErrorStatus,
    LengthTooLarge,
    NegativeLength,
    NonUtf8,
    PostsMessages,
    RunsEventLoop,
    DestroysForm,
};

constexpr quint32 kA80 = 0x01140000u; // the field the walk types into
constexpr quint32 kA01 = 0x01004000u; // the drive refuses writes to it, so errors get texts
constexpr quint8 kRefused = sim::StatusWriteProtected;
constexpr quint8 kBroken = 0x2A; // the error status of the faulty callback

struct Host
{
    sim::SimulatedDrive drive;
    Cb cb = Cb::GetValue;
    Fault fault = Fault::Absent;
    dwz_form *form = nullptr;
    uintptr_t window = 0;
    int mode = DWZ_OFFLINE;
    int statusErrors = 0; // calls answered with an error status: one box each
    int refusals = 0;     // writes refused by the drive: one box each
    int posts = 0;
    bool destroyedInside = false;
};
Host *g = nullptr;

bool faulty(Cb which)
{
    return g->cb == which;
}

// What a faulty callback does besides its answer.
void sideEffects(Cb which)
{
    if (!faulty(which)) return;
    switch (g->fault) {
    case Fault::PostsMessages:
        if (g->window && g->posts < 6) { // a few, or pushes would answer each other forever
            ++g->posts;
            dwz_post_message(g->window, DWZ_MSG_TOOL, kA80, 1);
            dwz_post_message(g->window, DWZ_MSG_ONLINE_MODE, uintptr_t(g->mode), 0);
        }
        break;
    case Fault::RunsEventLoop:
        QCoreApplication::processEvents();
        break;
    case Fault::DestroysForm:
        if (g->form) {
            g->destroyedInside = true;
            dwz_form_destroy(std::exchange(g->form, nullptr));
        }
        break;
    default:
        break;
    }
}

// The answer of a callback that returns text and a status.
template <class Normal>
int32_t textAnswer(Cb which, char *buffer, int32_t size, uint8_t *status, Normal normal)
{
    if (faulty(which) && g->fault == Fault::ErrorStatus) {
        *status = kBroken;
        ++g->statusErrors;
        if (buffer && size > 0) buffer[0] = '\0';
        sideEffects(which);
        return -1;
    }
    const int32_t n = normal();
    sideEffects(which);
    return n;
}

int32_t getValue(char *buffer, int32_t size, uint32_t wizardId, uint32_t address, uint8_t *status)
{
    return textAnswer(Cb::GetValue, buffer, size, status, [&] {
        return g->drive.getParaValue(buffer, size, wizardId, address, status);
    });
}

char setValue(const char *value, uint32_t wizardId, uint32_t address, int32_t reserved)
{
    char status = 0;
    if (address == kA01) {
        ++g->refusals;
        status = char(kRefused);
    } else if (faulty(Cb::SetValue) && g->fault == Fault::ErrorStatus) {
        ++g->statusErrors;
        status = char(kBroken);
    } else {
        status = g->drive.setParaValue(value, wizardId, address, reserved);
    }
    sideEffects(Cb::SetValue);
    return status;
}

void subscribe(uint32_t wizardId, uint32_t address, int32_t cycleMs)
{
    g->drive.subscribe(wizardId, address, cycleMs);
    sideEffects(Cb::Subscribe);
}

int32_t errorText(char *buffer, int32_t size, uint32_t wizardId, uint32_t address, uint8_t code)
{
    // Without a status of its own, an error-text callback fails by giving no length.
    if (faulty(Cb::ErrorText) && g->fault == Fault::ErrorStatus) {
        sideEffects(Cb::ErrorText);
        return -1;
    }
    const int32_t n = g->drive.errorText(buffer, size, wizardId, address, code);
    sideEffects(Cb::ErrorText);
    return n;
}

int32_t paraInfo(char *buffer, int32_t size, uint32_t wizardId, uint32_t address, uint8_t *status)
{
    return textAnswer(Cb::ParaInfo, buffer, size, status,
                      [&] { return g->drive.paraInfo(buffer, size, wizardId, address, status); });
}

int32_t auswahlInfo(char *buffer, int32_t size, uint32_t wizardId, uint32_t address,
                    uint8_t *status)
{
    return textAnswer(Cb::AuswahlInfo, buffer, size, status, [&] {
        return g->drive.auswahlInfo(buffer, size, wizardId, address, status);
    });
}

int32_t helpText(char *buffer, int32_t size, uint32_t wizardId, uint32_t address)
{
    if (faulty(Cb::HelpText) && g->fault == Fault::ErrorStatus) {
        sideEffects(Cb::HelpText);
        return -1;
    }
    const int32_t n = g->drive.helpText(buffer, size, wizardId, address);
    sideEffects(Cb::HelpText);
    return n;
}

dwz_callbacks callbacks(Cb absent)
{
    dwz_callbacks cb{getValue, setValue, subscribe, errorText, paraInfo, auswahlInfo, helpText};
    switch (absent) {
    case Cb::GetValue:
        cb.get_para_value = nullptr;
        break;
    case Cb::SetValue:
        cb.set_para_value = nullptr;
        break;
    case Cb::Subscribe:
        cb.subscribe = nullptr;
        break;
    case Cb::ErrorText:
        cb.get_error_text = nullptr;
        break;
    case Cb::ParaInfo:
        cb.get_para_info = nullptr;
        break;
    case Cb::AuswahlInfo:
        cb.get_auswahl_info = nullptr;
        break;
    case Cb::HelpText:
        cb.get_help_text = nullptr;
        break;
    }
    return cb;
}

sim::Callback simCallback(Cb cb)
{
    return sim::Callback(int(cb)); // the same order
}

sim::Hostility hostility(Fault fault)
{
    switch (fault) {
    case Fault::LengthTooLarge:
        return sim::Hostility::LengthTooLarge;
    case Fault::NegativeLength:
        return sim::Hostility::NegativeLength;
    case Fault::NonUtf8:
        return sim::Hostility::InvalidUtf8;
    default:
        return sim::Hostility::None;
    }
}

const char *const kCbNames[] = {"GetValue", "SetValue",    "Subscribe", "ErrorText",
                                "ParaInfo", "AuswahlInfo", "HelpText"};
const char *const kFaultNames[] = {"Absent",  "ErrorStatus",   "LengthTooLarge", "NegativeLength",
                                   "NonUtf8", "PostsMessages", "RunsEventLoop",  "DestroysForm"};

void PrintTo(Cb cb, std::ostream *os)
{
    *os << kCbNames[int(cb)];
}

void PrintTo(Fault fault, std::ostream *os)
{
    *os << kFaultNames[int(fault)];
}

} // namespace

class HostFaults : public testing::TestWithParam<std::tuple<Cb, Fault>>
{
protected:
    void SetUp() override
    {
        g = &host;
        std::tie(host.cb, host.fault) = GetParam();
        ASSERT_TRUE(host.drive.load(test::sourcePath(QStringLiteral("data/sample/Parameter.csv"))));
        host.drive.setHostility(simCallback(host.cb), hostility(host.fault));
        const dwz_callbacks cb = callbacks(host.fault == Fault::Absent ? host.cb : Cb(-1));
        const QByteArray ui = QByteArrayLiteral(TEST_FORMS "/SmallWizard.ui");
        const QByteArray params =
            test::sourcePath(QStringLiteral("data/sample/Parameter.csv")).toUtf8();
        host.form = dwz_form_create(ui.constData(), &cb, 5, 4, 1, DWZ_OFFLINE, params.constData());
        ASSERT_NE(host.form, nullptr) << dwz_last_error();
        dialog = static_cast<QDialog *>(dwz_form_widget(host.form));
        host.window = dwz_form_window(host.form);
        dwz_form_show(host.form);
        QApplication::setActiveWindow(dialog);
        settle();
    }
    void TearDown() override
    {
        if (host.form) dwz_form_destroy(host.form);
        dwz_process_events(0);
        EXPECT_TRUE(dialog.isNull()); // freed, also when freed late
        g = nullptr;
    }

    static void settle()
    {
        for (int i = 0; i < 4; ++i)
            QApplication::processEvents();
    }
    bool alive() const { return host.form && dialog; }
    TParaClass *control(const char *name) const
    {
        return dialog->findChild<TParaClass *>(QLatin1String(name));
    }
    void mode(int m)
    {
        host.mode = m;
        if (alive()) dwz_post_message(host.window, DWZ_MSG_ONLINE_MODE, uintptr_t(m), 0);
        settle();
    }
    void focus(const char *name)
    {
        if (!alive()) return;
        if (QWidget *input = control(name)->GetEditControl()) input->setFocus(Qt::TabFocusReason);
    }
    // Types into a field as a user does and leaves it for the next one.
    void type(const char *name, const QString &text, const char *next)
    {
        if (!alive()) return;
        auto *edit = qobject_cast<QLineEdit *>(control(name)->GetEditControl());
        if (!edit) return; // no description: nothing to type into
        edit->setFocus(Qt::TabFocusReason);
        edit->selectAll();
        edit->insert(text);
        focus(next);
        settle();
    }
    // Every value the form shows is there: a failed read blanks nothing.
    void expectNoBlankValue(const char *step) const
    {
        if (!alive()) return;
        for (TParaClass *c : dialog->findChildren<TParaClass *>()) {
            if (!c->isVisible() || !qobject_cast<QLineEdit *>(c->GetEditControl())) continue;
            EXPECT_FALSE(c->GetText().isEmpty()) << step << ": " << c->objectName().toStdString();
        }
    }

    Host host;
    QPointer<QDialog> dialog;
};

TEST_P(HostFaults, WizardWalkSurvivesAndReportsOnce)
{
    expectNoBlankValue("create");
    focus("P_A01"); // shows its help
    settle();
    expectNoBlankValue("help");
    mode(DWZ_ONLINE);
    expectNoBlankValue("online");
    host.drive.setValue(kA80, QStringLiteral("77"));
    if (alive()) dwz_post_message(host.window, DWZ_MSG_TOOL, kA80, 1);
    settle();
    expectNoBlankValue("push");
    type("P_A80", QStringLiteral("55"), "P_A01");
    type("P_A01", QStringLiteral("Achse"), "P_A80"); // refused: the error gets a text
    expectNoBlankValue("write");
    const bool typedShown = alive() && control("P_A80")->GetText() == QStringLiteral("55");
    mode(DWZ_OFFLINE);
    expectNoBlankValue("offline");
    if (alive() && typedShown) {
        EXPECT_EQ(control("P_A80")->GetText(), QStringLiteral("55")) << "typed value lost";
    }
    if (alive()) {
        dialog->findChild<QAbstractButton *>(QStringLiteral("BtnOK"))->click();
        settle();
    }
    const bool writable = !(host.cb == Cb::SetValue &&
                            (host.fault == Fault::Absent || host.fault == Fault::ErrorStatus));
    if (typedShown && writable) {
        EXPECT_TRUE(host.drive.log().contains(QStringLiteral("A80 (1) = 55")))
            << host.drive.log().join(QLatin1Char('\n')).toStdString();
    }

    // Reports: one box for each call the host answered with an error, nothing invented.
    int errorBoxes = 0, lengthBoxes = 0, hostErrors = 0, notNumbers = 0;
    for (const QString &m : test::recorder().messages()) {
        if (m.startsWith(QStringLiteral("A80: Wert muss eine Zahl sein!")))
            ++notNumbers; // the host's value in Windows-1252 with a 0xFF: no number
        else if (m.startsWith(QStringLiteral("Error at: ")))
            ++errorBoxes;
        else if (m.startsWith(QStringLiteral("Fehlerhafte Antwort des Host-Programms")))
            ++lengthBoxes;
        else if (m.startsWith(QStringLiteral("Fehler des Host-Programms")))
            ++hostErrors;
        else
            ADD_FAILURE() << "unexpected message: " << m.toStdString();
    }
    EXPECT_EQ(errorBoxes, host.statusErrors + host.refusals);
    EXPECT_LE(lengthBoxes, 1);
    EXPECT_EQ(lengthBoxes == 1, host.fault == Fault::NegativeLength &&
                                    (host.cb == Cb::GetValue || host.cb == Cb::ParaInfo));
    EXPECT_EQ(hostErrors, host.destroyedInside ? 1 : 0);
    EXPECT_EQ(notNumbers, host.cb == Cb::GetValue && host.fault == Fault::NonUtf8 ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    EveryCallbackEveryFault, HostFaults,
    testing::Combine(testing::Values(Cb::GetValue, Cb::SetValue, Cb::Subscribe, Cb::ErrorText,
                                     Cb::ParaInfo, Cb::AuswahlInfo, Cb::HelpText),
                     testing::Values(Fault::Absent, Fault::ErrorStatus, Fault::LengthTooLarge,
                                     Fault::NegativeLength, Fault::NonUtf8, Fault::PostsMessages,
                                     Fault::RunsEventLoop, Fault::DestroysForm)),
    [](const testing::TestParamInfo<HostFaults::ParamType> &info) {
        return std::string(kCbNames[int(std::get<0>(info.param))]) +
               kFaultNames[int(std::get<1>(info.param))];
    });

// A table used without a form, freed by the host inside its own read: the read ends
// safely, the table takes no more messages, and it is freed once the host pumps again.
namespace {

dwz_table *g_table = nullptr;

int32_t destroyingRead(char *buffer, int32_t size, uint32_t, uint32_t, uint8_t *status)
{
    *status = 0;
    if (g_table) dwz_table_destroy(std::exchange(g_table, nullptr));
    if (buffer && size > 0) qstrncpy(buffer, "7", size_t(size));
    return 1;
}

} // namespace

TEST(HostFaultsTable, TableFreedInsideItsOwnReadIsFreedLater)
{
    g_table = dwz_table_create();
    const QByteArray params =
        test::sourcePath(QStringLiteral("data/sample/Parameter.csv")).toUtf8();
    ASSERT_GT(dwz_table_load(g_table, params.constData()), 0);
    dwz_callbacks cb{};
    cb.get_para_value = destroyingRead;
    dwz_table_set_callbacks(g_table, &cb);
    QPointer<QObject> table = reinterpret_cast<TParaTable *>(g_table);
    const uintptr_t window = dwz_table_window(g_table);
    dwz_table *handle = g_table;
    dwz_table_refresh(handle, "A80"); // the host frees the table in there
    EXPECT_EQ(g_table, nullptr);
    EXPECT_FALSE(table.isNull()); // still used by the library until the call is over
    EXPECT_EQ(dwz_post_message(window, DWZ_MSG_TOOL, 0x01140000u, 1), 0);
    dwz_process_events(0);
    EXPECT_TRUE(table.isNull());
    EXPECT_EQ(test::recorder().messages(),
              QStringList({"Fehler des Host-Programms: Der Assistent wurde während des Aufrufs "
                           "von fcbtGetParaValue geschlossen."}));
}
