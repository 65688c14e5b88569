// A form's editing session: change marks, the controls' context menu as undo steps, the
// undo keys while typing, undo online.

#include "paramctrls_fixture.h"

#include "paramctrls/ParamEditSession.h"
#include "paramtable/ParamChanges.h"
#include "paramtable/ParamUndo.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QUndoStack>

using namespace drivewiz;

class EditSession : public ParamCtrlForm
{
protected:
    void SetUp() override
    {
        ParamCtrlForm::SetUp();
        a10 = control(QStringLiteral("A10"));
        b13 = control(QStringLiteral("B13"));
        b13->move(0, 80);
        a16 = control(QStringLiteral("A16"));
        a16->move(0, 160);
        session = ParamEditSession::install(&form, table);
        ASSERT_NE(session, nullptr);
    }

    void type(TParaClass *c, const QString &text)
    {
        enter(c);
        edit(c)->selectAll();
        QTest::keyClicks(edit(c), text);
        leave();
    }
    int steps() const { return session->undo()->undoStack()->count(); }
    int index() const { return session->undo()->undoStack()->index(); }

    TParaClass *a10 = nullptr;
    TParaClass *b13 = nullptr;
    TParaClass *a16 = nullptr;
    ParamEditSession *session = nullptr;
};

TEST_F(EditSession, OneSessionPerFormFoundFromAnyWidget)
{
    EXPECT_EQ(ParamEditSession::install(&form, table), session);
    EXPECT_EQ(ParamEditSession::find(edit(a10)), session);
    EXPECT_EQ(ParamEditSession::install(nullptr, table), nullptr);
}

TEST_F(EditSession, TypedValueIsMarkedAndSaidUntilUndone)
{
    EXPECT_FALSE(ParamEditSession::isMarked(a10));
    type(a10, QStringLiteral("20"));
    EXPECT_TRUE(ParamEditSession::isMarked(a10));
    EXPECT_FALSE(ParamEditSession::isMarked(b13));
    EXPECT_TRUE(a10->accessibleDescription().contains(QStringLiteral("beim Öffnen: 10")))
        << a10->accessibleDescription().toStdString();
    EXPECT_TRUE(edit(a10)->accessibleDescription().contains(QStringLiteral("geändert")));
    // The mark stands right of the coordinate's text, not over it.
    auto *mark = a10->findChild<QLabel *>(QLatin1String(ParamEditSession::MarkName));
    ASSERT_NE(mark, nullptr);
    EXPECT_GE(mark->x(),
              a10->koordinateLabel()->x() + a10->koordinateLabel()->fontMetrics().horizontalAdvance(
                                                a10->koordinateLabel()->text()));
    EXPECT_LE(mark->geometry().right(), a10->paraNameLabel()->x()); // nor over the name
    EXPECT_EQ(steps(), 1);
    session->undo()->undo();
    EXPECT_EQ(a10->GetText(), QStringLiteral("10"));
    EXPECT_FALSE(ParamEditSession::isMarked(a10));
    EXPECT_FALSE(a10->accessibleDescription().contains(QStringLiteral("geändert")));
}

TEST_F(EditSession, OkSummaryListsChangedValues)
{
    EXPECT_TRUE(session->changedSummary().isEmpty());
    type(a10, QStringLiteral("20"));
    type(b13, QStringLiteral("7"));
    const QString summary = session->changedSummary();
    EXPECT_TRUE(summary.contains(QStringLiteral("A10: 10 -> 20"))) << summary.toStdString();
    EXPECT_TRUE(summary.contains(QStringLiteral("B13: 3000 -> 7")));
    EXPECT_TRUE(session->changedSummary(1).contains(QStringLiteral("1 weitere")));
}

TEST_F(EditSession, ContextMenuShowsDefaultAndOpeningAndDisablesWhatCannotBeDone)
{
    std::unique_ptr<QMenu> menu(session->createContextMenu(b13, &form));
    auto *reset = menu->findChild<QAction *>(QStringLiteral("ActReset"));
    auto *revert = menu->findChild<QAction *>(QStringLiteral("ActRevert"));
    ASSERT_TRUE(reset && revert);
    EXPECT_TRUE(reset->text().contains(QStringLiteral("(3000)")));
    EXPECT_FALSE(reset->isEnabled());  // it is at its default
    EXPECT_FALSE(revert->isEnabled()); // nothing changed
    type(b13, QStringLiteral("8"));
    menu.reset(session->createContextMenu(b13, &form));
    EXPECT_TRUE(menu->findChild<QAction *>(QStringLiteral("ActReset"))->isEnabled());
    EXPECT_TRUE(menu->findChild<QAction *>(QStringLiteral("ActRevert"))->isEnabled());
    menu.reset(session->createContextMenu(a16, &form)); // read only
    EXPECT_FALSE(menu->findChild<QAction *>(QStringLiteral("ActReset"))->isEnabled());
    EXPECT_FALSE(menu->findChild<QAction *>(QStringLiteral("ActPaste"))->isEnabled());
}

TEST_F(EditSession, ResetRevertAndPasteAreUndoStepsEach)
{
    type(b13, QStringLiteral("8"));
    ASSERT_EQ(steps(), 1);
    EXPECT_EQ(session->resetToDefault(b13).written, 1);
    EXPECT_EQ(b13->GetText(), QStringLiteral("3000"));
    type(a10, QStringLiteral("20"));
    type(a10, QStringLiteral("30"));
    EXPECT_EQ(session->revertToOpening(a10).written, 1);
    EXPECT_EQ(a10->GetText(), QStringLiteral("10"));
    session->copyValue(b13);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("3000"));
    QGuiApplication::clipboard()->setText(QStringLiteral("42\nrest"));
    EXPECT_EQ(session->pasteValue(a10).written, 1);
    EXPECT_EQ(a10->GetText(), QStringLiteral("42"));
    EXPECT_EQ(steps(), 6);   // typed, reset, typed, typed, revert, paste
    session->undo()->undo(); // paste
    session->undo()->undo(); // revert
    EXPECT_EQ(a10->GetText(), QStringLiteral("30"));
    for (int i = 0; i < 3; ++i)
        session->undo()->undo();
    EXPECT_EQ(b13->GetText(), QStringLiteral("8")); // the reset undone
}

TEST_F(EditSession, RefusedPasteIsSaidAndNoStep)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("abc"));
    const ApplyResult r = session->pasteValue(a10);
    EXPECT_EQ(r.written, 0);
    ASSERT_EQ(r.refused.size(), 1);
    EXPECT_EQ(steps(), 0);
    EXPECT_EQ(a10->GetText(), QStringLiteral("10"));
    // Through the menu the refusal is shown.
    std::unique_ptr<QMenu> menu(session->createContextMenu(a10, &form));
    menu->findChild<QAction *>(QStringLiteral("ActPaste"))->trigger();
    const QStringList shown = messages();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first().contains(QStringLiteral("A10"))) << shown.first().toStdString();
}

TEST_F(EditSession, MenuKeyOpensTheContextMenuOfTheField)
{
    enter(a10);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(2, 2),
                            edit(a10)->mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(edit(a10), &event);
    QMenu *menu = a10->findChild<QMenu *>(QStringLiteral("MnuParam"));
    ASSERT_NE(menu, nullptr);
    EXPECT_EVENTUALLY_TRUE(menu->isVisible());
    menu->close();
}

TEST_F(EditSession, CtrlZUndoesTypingInTheFieldFirstThenTheWizardsStep)
{
    type(a10, QStringLiteral("20"));
    ASSERT_EQ(index(), 1);
    enter(b13);
    QTest::keyClicks(edit(b13), QStringLiteral("9"));
    const QString typed = edit(b13)->text();
    QTest::keyClick(edit(b13), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(edit(b13)->text(), typed); // the field's own undo
    EXPECT_EQ(index(), 1);
    EXPECT_EQ(a10->GetText(), QStringLiteral("20"));
    // Back to what it showed on entering: now Ctrl+Z is the wizard's.
    QTest::keyClick(edit(b13), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit(b13)->text(), QStringLiteral("3000"));
    EXPECT_EQ(index(), 0);
    EXPECT_EQ(a10->GetText(), QStringLiteral("10"));
    QTest::keyClick(edit(b13), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(index(), 1);
    EXPECT_EQ(a10->GetText(), QStringLiteral("20"));
}

TEST_F(EditSession, UndoOnlinePostsTheOldValue)
{
    goOnline();
    QApplication::processEvents();
    session->restart(); // the drive's values are the values at opening
    type(a10, QStringLiteral("20"));
    EXPECT_TRUE(drive.log().contains(QStringLiteral("A10 (1) = 20")));
    session->undo()->undo();
    EXPECT_EQ(drive.log().last(), QStringLiteral("A10 (1) = 10"));
    EXPECT_EQ(a10->GetText(), QStringLiteral("10"));
    EXPECT_FALSE(ParamEditSession::isMarked(a10));
}

TEST_F(EditSession, DiscardDropsTheSteps)
{
    type(a10, QStringLiteral("20"));
    session->discard();
    EXPECT_EQ(steps(), 0);
    EXPECT_FALSE(session->undoAction()->isEnabled());
}
