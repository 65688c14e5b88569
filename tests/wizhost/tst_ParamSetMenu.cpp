// The demo host's menu "Parameter set": enabled with a wizard, save and load, compare with
// the drive and apply (noted in the log), undo and redo for the open wizard.

#include "session_fixture.h"

#include "ParamSetMenu.h"

#include "paramctrls/ParamCtrls.h"
#include "paramctrls/ParamEditSession.h"
#include "paramtable/ParamUndo.h"
#include "platform/dialogs.h"
#include "wizard/ParamCompareView.h"
#include "wizard/wizParamViews.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QMenu>
#include <QMenuBar>

using namespace drivewiz;
using namespace drivewiz::wizhost;

namespace {

class SetMenu : public HostSessionTest
{
protected:
    void SetUp() override
    {
        HostSessionTest::SetUp();
        bar = std::make_unique<QMenuBar>();
        menu = new ParamSetMenu(*session, bar.get(), bar.get());
        QObject::connect(session.get(), &HostSession::logLine,
                         [this](const QString &line) { lines << line; });
    }
    void TearDown() override
    {
        session->closeWizard();
        bar.reset();
        HostSessionTest::TearDown();
    }
    QAction *action(const char *name) const
    {
        return menu->menu()->findChild<QAction *>(QLatin1String(name));
    }
    QDialog *open()
    {
        dwz_form *form = session->createWizard(Wizard::Setup);
        if (!form) return nullptr;
        dwz_form_show(form);
        settle();
        return session->openDialog();
    }
    QString text(const char *name) const
    {
        return session->openDialog()->findChild<TParaClass *>(QLatin1String(name))->GetText();
    }
    void setA80(const QString &value)
    {
        menu->views()->session()->undo()->writeValues(
            {ParamChange{ParamKey(QStringLiteral("A80"), QStringLiteral("1")), {}, value}},
            WriteOrigin::Apply, QStringLiteral("A80"));
    }

    std::unique_ptr<QMenuBar> bar;
    ParamSetMenu *menu = nullptr;
    QStringList lines;
};

TEST_F(SetMenu, EnabledOnlyWithAWizardWithUndoAndRedo)
{
    EXPECT_FALSE(action("ActSaveSet")->isEnabled());
    EXPECT_EQ(action("ActUndo"), nullptr);
    ASSERT_NE(open(), nullptr);
    ASSERT_NE(menu->views(), nullptr);
    EXPECT_TRUE(action("ActCompareDrive")->isEnabled());
    QAction *undo = menu->menu()->findChild<QAction *>(QStringLiteral("ActUndo"));
    ASSERT_NE(undo, nullptr);
    EXPECT_FALSE(undo->isEnabled());
    setA80(QStringLiteral("42"));
    EXPECT_TRUE(undo->isEnabled());
    undo->trigger();
    EXPECT_NE(text("P_A80"), QStringLiteral("42"));
    session->closeWizard();
    EXPECT_FALSE(action("ActSaveSet")->isEnabled());
    EXPECT_EQ(menu->menu()->findChild<QAction *>(QStringLiteral("ActUndo")), nullptr);
}

TEST_F(SetMenu, CompareWithTheDriveAppliesAndNotesIt)
{
    ASSERT_NE(open(), nullptr);
    setA80(QStringLiteral("42"));
    action("ActCompareDrive")->trigger();
    auto *d = qobject_cast<TParamCompareDialog *>(menu->views()->lastDialog());
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->view()->model()->counts().different, 1);
    d->view()->apply();
    EXPECT_EQ(text("P_A80"), QStringLiteral("1")); // the drive's value
    EXPECT_TRUE(lines.contains(QStringLiteral("# Werte übernommen: 1")))
        << lines.join('\n').toStdString();
    d->reject();
}

TEST_F(SetMenu, SaveAndLoadThroughTheFileDialogs)
{
    ASSERT_NE(open(), nullptr);
    const QString file = dir.filePath(QStringLiteral("set.csv"));
    test::recorder().answer(file);
    action("ActSaveSet")->trigger();
    ASSERT_TRUE(QFile::exists(file));
    EXPECT_TRUE(lines.last().startsWith(QStringLiteral("# Parametersatz")))
        << lines.last().toStdString();
    setA80(QStringLiteral("42"));
    test::recorder().answer(file);
    action("ActLoadSet")->trigger();
    auto *d = qobject_cast<TParamCompareDialog *>(menu->views()->lastDialog());
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->view()->model()->counts().different, 1);
    d->reject();
    // A file that is no set: its message, and nothing else.
    test::writeFile(file, QByteArray("\"Name\";\"Koordinate\"\r\n\"x\r\n"));
    test::recorder().answer(file);
    test::recorder().takeMessages();
    action("ActLoadSet")->trigger();
    EXPECT_EQ(test::recorder().takeMessages().size(), 1);
    EXPECT_EQ(text("P_A80"), QStringLiteral("42"));
}

} // namespace
