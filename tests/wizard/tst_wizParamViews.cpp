// A wizard's parameter views: tree counts, undo across pages offline and online, Cancel,
// the OK question, going online with held edits, the journal and "back to here", files.

#include "pagectl_fixture.h"

#include "paramctrls/ParamCtrls.h"
#include "paramctrls/ParamEditSession.h"
#include "paramtable/ParamJournal.h"
#include "paramtable/ParamUndo.h"
#include "platform/dialogs.h"
#include "wizard/ParamCompareView.h"
#include "wizard/ParamJournalView.h"
#include "wizard/wizParamViews.h"

#include <QAction>
#include <QPushButton>
#include <QTableView>
#include <QUndoStack>

using namespace drivewiz;

class ParamViews : public WizardForm
{
protected:
    void SetUp() override
    {
        WizardForm::SetUp();
        journalFile = dir.filePath(QStringLiteral("WizTest.journal.csv"));
        views = TwizParamViews::install(pc, true, journalFile);
        ASSERT_NE(views, nullptr);
        session = views->session();
    }

    void type(const QString &k, const QString &text)
    {
        pc->MoveTo(control(k)->parentWidget());
        edit(k)->setFocus(Qt::TabFocusReason);
        edit(k)->selectAll();
        QTest::keyClicks(edit(k), text);
        tree->setFocus(Qt::TabFocusReason); // leaving the field posts it
        settle();
    }
    /// Chooses the next entry of A12 with the arrow key and leaves the field.
    void chooseNext()
    {
        pc->MoveTo(page(1));
        QWidget *combo = control(QStringLiteral("A12"))->GetEditControl();
        combo->setFocus(Qt::TabFocusReason);
        QTest::keyClick(combo, Qt::Key_Down);
        tree->setFocus(Qt::TabFocusReason);
        settle();
    }
    QString value(const QString &k) const { return control(k)->GetText(); }
    int steps() const { return session->undo()->undoStack()->count(); }

    QString journalFile;
    TwizParamViews *views = nullptr;
    ParamEditSession *session = nullptr;
};

TEST_F(ParamViews, TreeCountsChangedValuesPerPage)
{
    EXPECT_EQ(TwizParamViews::install(pc), views);
    EXPECT_EQ(views->changedOnPage(QStringLiteral("Start")), 0);
    const QSize before =
        tree->itemDelegate()->sizeHint(QStyleOptionViewItem(), tree->model()->index(0, 0));
    type(QStringLiteral("A10"), QStringLiteral("20"));
    EXPECT_EQ(views->changedOnPage(QStringLiteral("Start")), 1);
    EXPECT_EQ(views->changedOnPage(QStringLiteral("Modus")), 0);
    EXPECT_GT(
        tree->itemDelegate()->sizeHint(QStyleOptionViewItem(), tree->model()->index(0, 0)).width(),
        before.width());
    EXPECT_EQ(tree->topLevelItem(0)->toolTip(0), QStringLiteral("1 geändert"));
    session->undo()->undo();
    EXPECT_EQ(views->changedOnPage(QStringLiteral("Start")), 0);
}

TEST_F(ParamViews, UndoAndRedoKeysAcrossPagesOffline)
{
    type(QStringLiteral("A10"), QStringLiteral("20"));
    chooseNext();
    ASSERT_EQ(steps(), 2);
    EXPECT_EQ(pc->currentIndex(), 1);
    pc->MoveTo(page(0));
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(value(QStringLiteral("A12")), QStringLiteral("1: ein"));
    QTest::keyClick(tree, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(value(QStringLiteral("A10")), QStringLiteral("10"));
    QTest::keyClick(tree, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(value(QStringLiteral("A10")), QStringLiteral("20"));
    EXPECT_TRUE(drive.log().isEmpty()); // offline: nothing reaches the drive
}

TEST_F(ParamViews, UndoOnlinePostsTheOldValueToTheDrive)
{
    hostMode(omOnline);
    session->restart();
    type(QStringLiteral("A10"), QStringLiteral("30"));
    ASSERT_EQ(drive.log(), QStringList({"A10 (1) = 30"}));
    pc->MoveTo(page(1));
    QTest::keyClick(tree, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(drive.log(), QStringList({"A10 (1) = 30", "A10 (1) = 10"}));
    QTest::keyClick(tree, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(drive.log().last(), QStringLiteral("A10 (1) = 30"));
}

TEST_F(ParamViews, CancelDiscardsTheSteps)
{
    type(QStringLiteral("A10"), QStringLiteral("20"));
    test::recorder().answer(int(mrYes));
    pc->CancelWizard();
    EXPECT_EQ(steps(), 0);
}

TEST_F(ParamViews, EnterQuestionListsTheChangedValues)
{
    type(QStringLiteral("A10"), QStringLiteral("20"));
    test::recorder().answer(int(mrNo));
    QTest::keyClick(tree, Qt::Key_Return);
    const QStringList asked = messages();
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked.first().contains(QStringLiteral("A10: 10 -> 20")))
        << asked.first().toStdString();
}

TEST_F(ParamViews, GoingOnlineComparesHeldEditsBeforeWritingAnything)
{
    type(QStringLiteral("A10"), QStringLiteral("20"));
    chooseNext();
    hostMode(omOnline);
    auto *d = qobject_cast<TParamCompareDialog *>(views->lastDialog());
    ASSERT_NE(d, nullptr);
    EXPECT_TRUE(drive.log().isEmpty());
    EXPECT_EQ(d->view()->model()->counts().different, 2);
    // Keep the edited A10, let the drive's A12 win.
    TParamCompareView *v = d->view();
    for (int i = 0; i < v->model()->rowCount(); ++i)
        v->model()->setTicked(i, v->model()->row(i).key.koordinate == QLatin1String("A10"));
    QTest::keyClick(v->tableView(), Qt::Key_Return);
    EXPECT_EQ(drive.log(), QStringList({"A10 (1) = 20"}));
    d->reject();
    EXPECT_TRUE(table->HeldEdits().isEmpty());
    EXPECT_EQ(value(QStringLiteral("A12")), QStringLiteral("1: ein"));
}

TEST_F(ParamViews, JournalListsWritesAndGoesBackToHere)
{
    type(QStringLiteral("A10"), QStringLiteral("20"));
    type(QStringLiteral("A10"), QStringLiteral("30"));
    TParamJournalDialog *d = views->showJournal();
    ASSERT_NE(d, nullptr);
    TParamJournalView *v = d->view();
    ASSERT_EQ(v->shownCount(), 2);
    v->setFilterText(QStringLiteral("a12"));
    EXPECT_EQ(v->shownCount(), 0);
    EXPECT_FALSE(v->backButton()->isEnabled());
    v->setFilterText(QStringLiteral("a10"));
    EXPECT_EQ(v->shownCount(), 2);
    v->tableView()->setCurrentIndex(v->tableView()->model()->index(0, 0));
    EXPECT_EQ(v->stateBeforeCurrent().find(ParamKey(QStringLiteral("A10"), QString()))->value,
              QStringLiteral("10"));
    v->tableView()->setFocus();
    QTest::keyClick(v->tableView(), Qt::Key_Return); // back to here
    auto *compare = qobject_cast<TParamCompareDialog *>(d->compareDialog());
    ASSERT_NE(compare, nullptr);
    compare->view()->apply();
    EXPECT_EQ(value(QStringLiteral("A10")), QStringLiteral("10"));
    compare->reject();
    d->reject();
}

TEST_F(ParamViews, SetFileRoundTripAndMalformedFile)
{
    const QString file = dir.filePath(QStringLiteral("set.csv"));
    ASSERT_TRUE(views->saveSet(file));
    TParamCompareDialog *d = views->compareWithFile(file);
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->view()->model()->counts().different, 0);
    d->reject();
    test::writeFile(file, "\"Name\";\"Koordinate\";\"Achse\";\"Wert\";\"Einheit\"\r\n"
                          "\"Zeit\";\"A10\";\"1\";\"20;\"ms\"\r\n");
    EXPECT_EQ(views->compareWithFile(file), nullptr);
    const QStringList shown = messages();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first().contains(QStringLiteral("2"))) << shown.first().toStdString();
    EXPECT_EQ(value(QStringLiteral("A10")), QStringLiteral("10"));
}

TEST_F(ParamViews, DefaultsAndOpeningValues)
{
    type(QStringLiteral("A10"), QStringLiteral("20"));
    TParamCompareDialog *d = views->compareWithOpening();
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->view()->model()->counts().different, 1);
    d->view()->apply();
    EXPECT_EQ(value(QStringLiteral("A10")), QStringLiteral("10"));
    d->reject();
    d = views->compareWithDefaults();
    ASSERT_NE(d, nullptr);
    EXPECT_GE(views->wizardKeys().size(), 4);
    d->reject();
}
