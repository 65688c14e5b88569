// What the user types, against a host that answers every read with its own value: offline
// a typed value stays until OK or Cancel, whichever way the wizard is moved or switched;
// online a corrected value is written once.

#include "support/testing.h"

#include "drivewiz/host_api.h"
#include "paramctrls/ParamCtrls.h"
#include "wizard/wizPageControl.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <map>
#include <vector>

using namespace drivewiz;

namespace {

constexpr quint32 kA80 = 0x01140000u;
constexpr quint32 kA21 = 0x01054000u;

// The drive: what it holds, and every write in order.
std::map<quint32, QByteArray> g_values;
std::vector<std::pair<quint32, QByteArray>> g_writes;

int32_t hostRead(char *buffer, int32_t size, uint32_t, uint32_t address, uint8_t *status)
{
    *status = 0;
    const QByteArray v = g_values.count(address) ? g_values[address] : QByteArray("1");
    if (buffer && size > 0) qstrncpy(buffer, v.constData(), size_t(size));
    return int32_t(v.size());
}

char hostWrite(const char *value, uint32_t, uint32_t address, int32_t)
{
    g_writes.emplace_back(address, value);
    g_values[address] = value;
    return 0;
}

void hostSubscribe(uint32_t, uint32_t, int32_t) {}

} // namespace

class TypedValues : public testing::Test
{
protected:
    void SetUp() override
    {
        g_values = {{kA80, "99"}, {kA21, "47.0"}};
        g_writes.clear();
        dwz_callbacks cb{};
        cb.get_para_value = hostRead;
        cb.set_para_value = hostWrite;
        cb.subscribe = hostSubscribe;
        const QByteArray params =
            test::sourcePath(QStringLiteral("data/sample/Parameter.csv")).toUtf8();
        form = dwz_form_create(TEST_FORMS "/PagedWizard.ui", &cb, 3, 4, 1, DWZ_OFFLINE,
                               params.constData());
        ASSERT_NE(form, nullptr) << dwz_last_error();
        dialog = static_cast<QWidget *>(dwz_form_widget(form));
        pages = dialog->findChild<TwizPageControl *>();
        table = reinterpret_cast<TParaTable *>(dwz_form_table(form));
        ASSERT_TRUE(pages && table);
        dwz_form_show(form);
        QApplication::setActiveWindow(dialog);
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
        settle();
    }
    void TearDown() override { dwz_form_destroy(form); }

    static void settle()
    {
        for (int i = 0; i < 3; ++i)
            QApplication::processEvents();
    }
    QLineEdit *edit(const char *name) const
    {
        return qobject_cast<QLineEdit *>(
            dialog->findChild<TParaClass *>(QLatin1String(name))->GetEditControl());
    }
    // Types into a field as a user does; the field keeps the focus.
    void type(const char *name, const QString &text)
    {
        QLineEdit *field = edit(name);
        field->setFocus(Qt::TabFocusReason);
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    void click(const QString &button)
    {
        auto *b = dialog->findChild<QAbstractButton *>(button);
        ASSERT_NE(b, nullptr) << button.toStdString();
        b->click();
        settle();
    }
    void mode(int m)
    {
        dwz_post_message(dwz_form_window(form), DWZ_MSG_ONLINE_MODE, uintptr_t(m), 0);
        settle();
    }
    // The value 42 typed into A80 on the first page; the host holds 7 from now on.
    void typeOffline()
    {
        type("P_A80", QStringLiteral("42"));
        g_values[kA80] = "7";
    }
    QString shown() const { return edit("P_A80")->text(); }
    int writesOf(quint32 address, const QByteArray &value) const
    {
        return int(std::count(g_writes.begin(), g_writes.end(), std::make_pair(address, value)));
    }

    dwz_form *form = nullptr;
    QWidget *dialog = nullptr;
    TwizPageControl *pages = nullptr;
    TParaTable *table = nullptr;
};

TEST_F(TypedValues, StayAcrossNextBackAndTheTree)
{
    EXPECT_EQ(shown(), QStringLiteral("99")); // read from the host at the start
    typeOffline();
    click(GetBtnNextName(0));
    EXPECT_EQ(pages->currentIndex(), 1);
    click(QStringLiteral("BtnBack"));
    EXPECT_EQ(shown(), QStringLiteral("42"));
    auto *tree = dialog->findChild<QTreeWidget *>(QStringLiteral("Tree"));
    tree->setCurrentItem(tree->topLevelItem(2));
    settle();
    EXPECT_EQ(pages->currentIndex(), 2);
    tree->setCurrentItem(tree->topLevelItem(0));
    settle();
    EXPECT_EQ(shown(), QStringLiteral("42"));
    EXPECT_TRUE(g_writes.empty());
    click(QStringLiteral("BtnOK"));
    EXPECT_EQ(writesOf(kA80, "42"), 1);
}

// Still in the field when the page moves: what is typed counts as typed.
TEST_F(TypedValues, StayWhenTheSearchMovesAwayFromTheField)
{
    typeOffline();
    QLineEdit *search = pages->SearchEdit();
    search->setText(QStringLiteral("A21"));
    pages->SearchButton()->click();
    settle();
    EXPECT_EQ(pages->currentIndex(), 2);
    search->setText(QStringLiteral("A80"));
    pages->SearchButton()->click();
    settle();
    EXPECT_EQ(pages->currentIndex(), 0);
    EXPECT_EQ(shown(), QStringLiteral("42"));
    pages->MoveTo(pages->widget(0)); // registered again while the field is left alone
    EXPECT_EQ(shown(), QStringLiteral("42"));
}

TEST_F(TypedValues, StayThroughALanguageSwitchAndARebuild)
{
    typeOffline();
    edit("P_A01")->setFocus(Qt::TabFocusReason); // leaves A80
    dwz_table_set_language(dwz_form_table(form), 2);
    table->UpdateParaObjects(true); // every control built anew and read
    table->ReadAllParams();
    settle();
    EXPECT_EQ(shown(), QStringLiteral("42"));
    click(QStringLiteral("BtnOK"));
    EXPECT_EQ(writesOf(kA80, "42"), 1);
}

TEST_F(TypedValues, StayThroughModeSwitchesAndGoOnlineWithTheDrive)
{
    typeOffline(); // the host switches while the user is still typing
    mode(DWZ_READBACK);
    EXPECT_EQ(shown(), QStringLiteral("42"));
    mode(DWZ_OFFLINE);
    EXPECT_EQ(shown(), QStringLiteral("42"));
    EXPECT_TRUE(g_writes.empty());
    mode(DWZ_ONLINE); // online, the drive gets what the wizard shows
    EXPECT_EQ(writesOf(kA80, "42"), 1);
    EXPECT_EQ(shown(), QStringLiteral("42"));
    EXPECT_FALSE(table->HasPendingEdit(kA80));
}

// Online, the control behaves as before: a pushed or re-read value is shown.
TEST_F(TypedValues, OnlineReadsStillShowTheDrive)
{
    mode(DWZ_ONLINE);
    g_values[kA80] = "5";
    dwz_post_message(dwz_form_window(form), DWZ_MSG_TOOL, kA80, 1);
    settle();
    EXPECT_EQ(shown(), QStringLiteral("5"));
}

TEST_F(TypedValues, CancelWritesNothing)
{
    typeOffline();
    edit("P_A01")->setFocus(Qt::TabFocusReason);
    test::recorder().answer(int(mrYes)); // yes, lose the changes
    click(QStringLiteral("BtnCancel"));
    EXPECT_TRUE(g_writes.empty());
}

TEST_F(TypedValues, OnlineACorrectedValueIsWrittenOnce)
{
    mode(DWZ_ONLINE);
    pages->MoveTo(pages->widget(2));
    settle();
    type("P_A21", QStringLiteral("900")); // the limits are 10 .. 500
    edit("P_A80")->setFocus(Qt::TabFocusReason);
    settle();
    EXPECT_EQ(test::recorder().messages().size(), 1); // the limit message
    EXPECT_EQ(edit("P_A21")->text(), QStringLiteral("500"));
    int writes = 0;
    for (const auto &w : g_writes)
        writes += w.first == kA21;
    EXPECT_EQ(writes, 1);
    EXPECT_EQ(writesOf(kA21, "500"), 1);
}
