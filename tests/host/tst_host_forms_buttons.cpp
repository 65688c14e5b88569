// Wizard forms of the host interface seen from the widgets: OK and Cancel, typed values,
// forms drawn as plain widgets, and the demo host's set-up wizard.

#include "support/testing.h"

#include "drivewiz/host_api.h"
#include "paramctrls/ParamCtrls.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextEdit>

#include <map>

using namespace drivewiz;

namespace {

// A host that answers every read with the description file's value and keeps the writes.
std::map<quint32, QByteArray> g_written;

qint32 hostValue(char *buffer, qint32 size, quint32, quint32 address, quint8 *status)
{
    *status = 0;
    const QByteArray v = address == 0x01140000u ? "42" : "1";
    if (buffer && size > 0) qstrncpy(buffer, v.constData(), size_t(size));
    return qint32(v.size());
}

char hostWrite(const char *value, quint32, quint32 address, qint32)
{
    g_written[address] = value;
    return 0;
}

void hostSubscribe(quint32, quint32, qint32) {}

class HostForm : public testing::Test
{
protected:
    void SetUp() override
    {
        g_written.clear();
        cb.get_para_value = hostValue;
        cb.set_para_value = hostWrite;
        cb.subscribe = hostSubscribe;
    }
    void TearDown() override { dwz_form_destroy(form); }

    void open(const QString &ui, int mode = DWZ_OFFLINE)
    {
        form = dwz_form_create(ui.toUtf8().constData(), &cb, 3, 4, 0, mode, params.constData());
        ASSERT_NE(form, nullptr) << dwz_last_error();
        ASSERT_EQ(dwz_form_show(form), 1);
        QApplication::setActiveWindow(dialog());
        QApplication::processEvents();
    }
    QDialog *dialog() const { return static_cast<QDialog *>(dwz_form_widget(form)); }
    void click(const char *button)
    {
        auto *b = dialog()->findChild<QAbstractButton *>(QLatin1String(button));
        ASSERT_NE(b, nullptr) << button;
        b->click();
        QApplication::processEvents();
    }
    // Types into a control's field as a user does: enter, replace the text, leave.
    void type(const char *control, const QString &text)
    {
        auto *c = dialog()->findChild<TParaClass *>(QLatin1String(control));
        ASSERT_NE(c, nullptr) << control;
        auto *edit = qobject_cast<QLineEdit *>(c->GetEditControl());
        ASSERT_NE(edit, nullptr);
        edit->setFocus(Qt::TabFocusReason);
        edit->selectAll();
        edit->insert(text);
        dialog()
            ->findChild<TParaClass *>(QStringLiteral("P_A01"))
            ->GetEditControl()
            ->setFocus(Qt::TabFocusReason);
        QApplication::processEvents();
    }

    const QString small = QStringLiteral(TEST_FORMS "/SmallWizard.ui");
    const QByteArray params =
        test::sourcePath(QStringLiteral("data/sample/Parameter.csv")).toUtf8();
    dwz_callbacks cb{};
    dwz_form *form = nullptr;
};

TEST_F(HostForm, OkOfflineWritesEveryValueAndCloses)
{
    open(small);
    click("BtnOK");
    EXPECT_EQ(dwz_form_result(form), 1);
    EXPECT_FALSE(dialog()->isVisible());
    EXPECT_EQ(g_written.size(), 4u);
    EXPECT_EQ(g_written[0x01140000u], "42");
}

TEST_F(HostForm, TypedValueIsWrittenOnOkOnly)
{
    open(small);
    type("P_A80", QStringLiteral("55"));
    EXPECT_TRUE(g_written.empty());
    click("BtnOK");
    EXPECT_EQ(g_written[0x01140000u], "55");
}

TEST_F(HostForm, TypedValueOnlineIsWrittenWhenTheFieldIsLeft)
{
    open(small, DWZ_ONLINE);
    type("P_A80", QStringLiteral("56"));
    ASSERT_EQ(g_written.size(), 1u);
    EXPECT_EQ(g_written[0x01140000u], "56");
    click("BtnOK");
    EXPECT_EQ(g_written.size(), 1u);
    EXPECT_EQ(dwz_form_result(form), 1);
}

TEST_F(HostForm, CancelWritesNothing)
{
    open(small);
    type("P_A80", QStringLiteral("57"));
    click("BtnCancel");
    EXPECT_EQ(dwz_form_result(form), 0);
    EXPECT_TRUE(g_written.empty());
}

// The host switches the mode while the user is in a field: the fields are rebuilt and
// the one with the focus goes without a word.
TEST_F(HostForm, OnlineSwitchWhileTypingShowsNoMessage)
{
    open(small);
    auto *c = dialog()->findChild<TParaClass *>(QStringLiteral("P_A80"));
    c->GetEditControl()->setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
    ASSERT_TRUE(c->Focused());
    dwz_post_message(dwz_form_window(form), DWZ_MSG_ONLINE_MODE, DWZ_ONLINE, 0);
    QApplication::processEvents();
    EXPECT_EQ(dwz_table_online(dwz_form_table(form)), DWZ_ONLINE);
    EXPECT_TRUE(test::recorder().messages().isEmpty())
        << test::recorder().messages().join(QLatin1Char('\n')).toStdString();
}

TEST_F(HostForm, PlainWidgetFormIsShownInADialog)
{
    QTemporaryDir dir;
    QByteArray ui = test::readFile(small);
    ui.replace("class=\"QDialog\"", "class=\"QWidget\"");
    const QString path = dir.filePath(QStringLiteral("Plain.ui"));
    ASSERT_TRUE(test::writeFile(path, ui));
    open(path);
    EXPECT_EQ(dialog()->objectName(), QStringLiteral("SmallWizard"));
    EXPECT_EQ(dialog()->windowTitle(), QStringLiteral("Small wizard"));
    click("BtnOK");
    EXPECT_EQ(dwz_form_result(form), 1);
    EXPECT_EQ(g_written.size(), 4u);
}

// The demo host's wizard: every control finds its parameter, the help view is linked,
// and OK stands in the row of the back button when no page control made its own.
TEST_F(HostForm, DriveSetupFormLoads)
{
    open(test::sourcePath(QStringLiteral("apps/wizhost/forms/DriveSetup.ui")));
    EXPECT_TRUE(test::recorder().messages().isEmpty())
        << test::recorder().messages().join(QLatin1Char('\n')).toStdString();
    auto *pages = dialog()->findChild<QTabWidget *>(QStringLiteral("PageControl"));
    ASSERT_NE(pages, nullptr);
    EXPECT_GE(pages->count(), 6);
    for (TParaClass *c : dialog()->findChildren<TParaClass *>())
        EXPECT_NE(c->GetParamName(), QStringLiteral("???")) << c->objectName().toStdString();
    auto *table = reinterpret_cast<TParaTable *>(dwz_form_table(form));
    EXPECT_NE(table->RichEditCtrl(), nullptr);
    auto *back = dialog()->findChild<QAbstractButton *>(QStringLiteral("BtnBack"));
    auto *ok = dialog()->findChild<QAbstractButton *>(QStringLiteral("BtnOK"));
    ASSERT_TRUE(back && ok);
    EXPECT_EQ(ok->y(), back->y());
}

} // namespace
