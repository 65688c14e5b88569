#include "paramsets_fixture.h"

#include "paramtable/ParamChanges.h"
#include "paramtable/ParamSet.h"
#include "paramtable/ParamUndo.h"

#include <QAction>
#include <QSignalSpy>
#include <QUndoStack>

using namespace drivewiz;
using namespace drivewiz::test;

using ParamUndoTest = ParamSetsTest;

// Values typed offline are steps; undo and redo put them back into the table and the
// field, and they stay values for OK to write.
TEST_F(ParamUndoTest, TypedValuesOfflineAreUndoneAndRedone)
{
    ParamUndoStack undo(table);
    typeInto(b20, QStringLiteral("3.5"));
    typeInto(b20, QStringLiteral("4.5"));
    ASSERT_EQ(wert(QStringLiteral("B20")), QStringLiteral("4.5"));
    ASSERT_EQ(undo.undoStack()->count(), 2);
    EXPECT_EQ(undo.undoStack()->undoText(), QStringLiteral("Eingabe B20"));

    undo.undo();
    EXPECT_EQ(wert(QStringLiteral("B20")), QStringLiteral("3.5"));
    EXPECT_EQ(b20->GetText(), QStringLiteral("3.5"));
    undo.undo();
    EXPECT_EQ(wert(QStringLiteral("B20")), QStringLiteral("1.25"));
    EXPECT_EQ(b20->GetText(), QStringLiteral("1.25"));
    EXPECT_FALSE(undo.canUndo());
    undo.redo();
    undo.redo();
    EXPECT_EQ(b20->GetText(), QStringLiteral("4.5"));
    EXPECT_EQ(undo.undoStack()->count(), 2); // undo and redo make no steps of their own
    EXPECT_TRUE(host.writes.empty());
    EXPECT_TRUE(recorder().messages().isEmpty());
}

// Online, a typed value is posted; its undo posts the old value, its redo the new one.
TEST_F(ParamUndoTest, OnlineUndoPostsTheOldValue)
{
    connectHost();
    table->SetOnline(omOnline);
    ParamUndoStack undo(table);
    typeInto(b20, QStringLiteral("7.5"));
    ASSERT_FALSE(host.writes.empty());
    EXPECT_EQ(host.writes.back(), std::make_pair(kB20, QByteArray("7.5")));
    host.writes.clear();
    undo.undo();
    ASSERT_EQ(host.writes.size(), 1u);
    EXPECT_EQ(host.writes.back(), std::make_pair(kB20, QByteArray("1.25")));
    EXPECT_EQ(b20->GetText(), QStringLiteral("1.25"));
    undo.redo();
    EXPECT_EQ(host.writes.back(), std::make_pair(kB20, QByteArray("7.5")));
    EXPECT_EQ(host.writes.size(), 2u); // the field shows it, and does not post it again

    // The drive refuses the undo (its enable is on): the step says so, nothing changes.
    host.writeAnswers[kB20] = 'V';
    QSignalSpy incomplete(&undo, &ParamUndoStack::stepIncomplete);
    undo.undo();
    ASSERT_EQ(incomplete.size(), 1);
    EXPECT_EQ(wert(QStringLiteral("B20")), QStringLiteral("7.5"));
    EXPECT_EQ(b20->GetText(), QStringLiteral("7.5"));
}

TEST_F(ParamUndoTest, ResetRevertAndCancel)
{
    ParamChanges changes(table);
    changes.takeOpeningValues();
    ParamUndoStack undo(table);
    typeInto(b20, QStringLiteral("5"));
    const ApplyResult reset = undo.reset(ParamKey("B20", "1"));
    EXPECT_EQ(reset.written, 1);
    EXPECT_EQ(b20->GetText(), QStringLiteral("0.00"));
    EXPECT_EQ(undo.undoStack()->undoText(), QStringLiteral("B20 auf Standardwert"));
    const ApplyResult revert = undo.revert(ParamKey("B20", "1"), changes.openingValues());
    EXPECT_EQ(revert.written, 1);
    EXPECT_EQ(b20->GetText(), QStringLiteral("1.25"));
    EXPECT_EQ(undo.undoStack()->count(), 3);
    undo.undo();
    EXPECT_EQ(b20->GetText(), QStringLiteral("0.00"));

    EXPECT_EQ(undo.reset(ParamKey("Z99", "1")).unknown.size(), 1);
    EXPECT_EQ(undo.reset(ParamKey("E00", "1")).refused.size(), 1); // read-only
    EXPECT_EQ(undo.undoStack()->count(), 3);                        // nothing written, no step
    undo.clear();
    EXPECT_FALSE(undo.canUndo());
    EXPECT_EQ(b20->GetText(), QStringLiteral("0.00")); // Cancel drops steps, not values
}

TEST_F(ParamUndoTest, ActionsCarryTheKeysAndTheLanguage)
{
    useEnglish();
    ParamUndoStack undo(table);
    QObject owner;
    QAction *u = undo.createUndoAction(&owner);
    QAction *r = undo.createRedoAction(&owner);
    EXPECT_TRUE(u->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_Z)));
    EXPECT_TRUE(r->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)));
    EXPECT_FALSE(u->isEnabled());
    undo.reset(ParamKey("B20", "2"));
    EXPECT_TRUE(u->isEnabled());
    EXPECT_EQ(u->text(), QStringLiteral("Undo 2.B20 to default value"));
    u->trigger();
    EXPECT_EQ(wert(QStringLiteral("B20"), QStringLiteral("2")), QStringLiteral("0.84"));
    EXPECT_EQ(r->text(), QStringLiteral("Redo 2.B20 to default value"));
}
