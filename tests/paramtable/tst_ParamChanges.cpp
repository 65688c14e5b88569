#include "paramsets_fixture.h"

#include "paramtable/ParamChanges.h"
#include "paramtable/ParamCompare.h"
#include "paramtable/ParamUndo.h"
#include "platform/messages.h"

#include <QSignalSpy>
#include <QTest>

using namespace drivewiz;
using namespace drivewiz::test;

using ParamChangesTest = ParamSetsTest;

TEST_F(ParamChangesTest, ChangedAgainstTheValuesAtOpening)
{
    ParamChanges changes(table);
    changes.takeOpeningValues();
    QSignalSpy state(&changes, &ParamChanges::changedStateChanged);
    QSignalSpy count(&changes, &ParamChanges::changesChanged);
    const ParamKey b20("B20", "1");
    EXPECT_FALSE(changes.isChanged(b20));

    typeInto(this->b20, QStringLiteral("3"));
    EXPECT_TRUE(changes.isChanged(b20));
    ASSERT_EQ(state.size(), 1);
    EXPECT_EQ(state.at(0).at(0).value<ParamKey>(), b20);
    EXPECT_TRUE(state.at(0).at(1).toBool());
    EXPECT_EQ(count.size(), 1);
    typeInto(this->b20, QStringLiteral("4")); // still changed: no signal
    EXPECT_EQ(state.size(), 1);

    const QList<ParamKey> page{b20, ParamKey("A01", "1"), ParamKey("A40.1", "1")};
    ParamUndoStack undo(table);
    undo.reset(ParamKey("A40.1", "1"));
    EXPECT_EQ(changes.changedCount(page), 2);
    EXPECT_EQ(changes.changedCount({ParamKey("A01", "1")}), 0);
    EXPECT_EQ(changes.changed(), (QList<ParamKey>{ParamKey("A40.1", "1"), b20}));
    EXPECT_EQ(changes.openingValue(b20), QStringLiteral("1.25"));

    undo.revert(b20, changes.openingValues());
    EXPECT_FALSE(changes.isChanged(b20));
    EXPECT_FALSE(state.last().at(1).toBool());
    EXPECT_EQ(changes.changedCount(), 1);
}

// Online, a change the drive pushes counts as well.
TEST_F(ParamChangesTest, PushedChangesCount)
{
    connectHost();
    table->SetOnline(omOnline);
    ParamChanges changes(table);
    changes.takeOpeningValues();
    host.values[kB20Axis2] = "3.3";
    table->ToolMsg(kB20Axis2, 1);
    EXPECT_TRUE(changes.isChanged(ParamKey("B20", "2")));
    EXPECT_EQ(changes.changedCount(), 1);

    // A host that writes "Wert" behind the table's back is caught by recheck().
    table->SetCell(table->FindParam(QStringLiteral("A40.0"), QStringLiteral("1")),
                   QStringLiteral("Wert"), QStringLiteral("1"));
    EXPECT_EQ(changes.changedCount(), 1);
    changes.recheck();
    EXPECT_EQ(changes.changedCount(), 2);
    changes.takeOpeningValues();
    EXPECT_EQ(changes.changedCount(), 0);

    // A value the drive refuses is no change.
    host.writeAnswers[kA01] = 'V';
    typeInto(a01, QStringLiteral("Neu"));
    EXPECT_EQ(a01->GetText(), wert(QStringLiteral("A01")));
    EXPECT_EVENTUALLY_EQ(changes.changedCount(), 0);
    EXPECT_FALSE(changes.isChanged(ParamKey("A01", "1")));
}

// Going online with values typed offline, nothing is written before the user chose:
// the edits are held, the user keeps some, the drive wins for the others.
TEST_F(ParamChangesTest, EditsTypedOfflineAreHeldGoingOnline)
{
    connectHost();
    table->SetReviewEditsGoingOnline(true);
    typeInto(b20, QStringLiteral("3.5"));
    typeInto(a01, QStringLiteral("Neu"));
    host.values[kB20] = "2.0"; // the drive changed meanwhile
    QSignalSpy held(table, &TParaTable::editsHeldGoingOnline);
    table->SetOnline(omOnline);
    EXPECT_EQ(held.size(), 1);
    EXPECT_TRUE(host.writes.empty());
    ASSERT_EQ(table->HeldEdits().size(), 2);
    EXPECT_FALSE(table->HasPendingEdit(kB20));

    ParamSet edits;
    for (const ParamChange &c : table->HeldEdits())
        edits.insert({c.key, c.newValue, QString(), QString(), true});
    ParamCompare compare(table);
    compare.compare(edits, ParamSet::fromDrive(*table, edits.keys()));
    EXPECT_EQ(compare.counts().different, 2);
    for (int i = 0; i < compare.rows().size(); ++i)
        compare.setTicked(i, compare.row(i).key == ParamKey("B20", "1")); // keep B20 only
    const ApplyResult r = compare.apply(*table, nullptr, ParamCompare::ApplySide::This);
    EXPECT_EQ(r.written, 1);
    ASSERT_EQ(host.writes.size(), 1u);
    EXPECT_EQ(host.writes.at(0), std::make_pair(kB20, QByteArray("3.5")));
    EXPECT_EQ(wert(QStringLiteral("B20")), QStringLiteral("3.5"));
    EXPECT_NE(wert(QStringLiteral("A01")), QStringLiteral("Neu")); // the drive's value won
    table->ClearHeldEdits();
    EXPECT_TRUE(table->HeldEdits().isEmpty());
}
