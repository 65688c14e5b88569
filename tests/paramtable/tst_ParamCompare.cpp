#include "paramsets_fixture.h"

#include "paramtable/ParamCompare.h"
#include "paramtable/ParamUndo.h"

#include <QLineEdit>
#include <QSignalSpy>

using namespace drivewiz;
using namespace drivewiz::test;

namespace {

ParamSet::Entry entry(const char *koordinate, const char *achse, const QString &value)
{
    return {ParamKey(QLatin1String(koordinate), QLatin1String(achse)), value, QString(), QString(),
            true};
}

int rowOf(const ParamCompare &c, const ParamKey &key)
{
    for (int i = 0; i < c.rows().size(); ++i) {
        if (c.row(i).key == key) return i;
    }
    return -1;
}

} // namespace

class ParamCompareTest : public ParamSetsTest
{
protected:
    // A file that changes B20 (axis 2), A00 and A40.1, lacks the rest and knows Z99.
    ParamSet file() const
    {
        ParamSet f;
        f.insert(entry("B20", "1", QStringLiteral("1.250"))); // the same number
        f.insert(entry("B20", "2", QStringLiteral("2.5")));
        f.insert(entry("A00", "1", QStringLiteral("1: aktiv")));
        f.insert(entry("A40.1", "1", QStringLiteral("650")));
        f.insert(entry("Z99", "1", QStringLiteral("3")));
        return f;
    }
    QString shown(const ParamCompare &c, const ParamKey &key, int column) const
    {
        return c.index(rowOf(c, key), column).data().toString();
    }
};

TEST_F(ParamCompareTest, StatesCountsAndTicks)
{
    ParamCompare c(table);
    QSignalSpy counts(&c, &ParamCompare::countsChanged);
    c.compare(ParamSet::fromWizard(*table), file());
    EXPECT_EQ(counts.size(), 1);
    const ParamCompare::Counts n = c.counts();
    EXPECT_EQ(n.rows, table->RowCount() + 1);
    EXPECT_EQ(n.different, 3);
    EXPECT_EQ(n.same, 1);
    EXPECT_EQ(n.missingHere, 1);
    EXPECT_EQ(n.missingThere, table->RowCount() - 4);
    EXPECT_EQ(n.ticked, 3);

    const int z99 = rowOf(c, ParamKey("Z99", "1"));
    EXPECT_EQ(c.row(z99).state, ParamCompare::State::MissingHere);
    EXPECT_EQ(shown(c, ParamKey("Z99", "1"), ParamCompare::ColThis), QStringLiteral("(fehlt)"));
    EXPECT_EQ(shown(c, ParamKey("A01", "1"), ParamCompare::ColOther), QStringLiteral("(fehlt)"));
    EXPECT_FALSE(c.flags(c.index(z99, 0)) & Qt::ItemIsUserCheckable);
    EXPECT_FALSE(c.setData(c.index(z99, 0), Qt::Checked, Qt::CheckStateRole));

    const int b20 = rowOf(c, ParamKey("B20", "2"));
    EXPECT_EQ(shown(c, ParamKey("B20", "2"), ParamCompare::ColKoordinate), QStringLiteral("2.B20"));
    EXPECT_EQ(shown(c, ParamKey("B20", "2"), ParamCompare::ColUnit), QStringLiteral("A"));
    EXPECT_TRUE(c.setData(c.index(b20, 0), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(c.counts().ticked, 2);
    c.setAllTicked(true);
    EXPECT_EQ(c.counts().ticked, 3);
    EXPECT_EQ(c.headerData(ParamCompare::ColThis, Qt::Horizontal).toString(),
              QStringLiteral("Dieser Wert"));
}

TEST_F(ParamCompareTest, OnlyDifferencesAndSearch)
{
    ParamCompare c(table);
    c.compare(ParamSet::fromWizard(*table), file());
    ParamCompareFilter f;
    f.setSourceModel(&c);
    EXPECT_EQ(f.rowCount(), c.counts().rows - c.counts().same);
    f.setOnlyDifferences(false);
    EXPECT_EQ(f.rowCount(), c.counts().rows);
    f.setSearchText(QStringLiteral("  RAMPE "));
    EXPECT_EQ(f.rowCount(), 2); // A40.0 and A40.1 by name
    f.setSearchText(QStringLiteral("2.b20"));
    EXPECT_EQ(f.rowCount(), 1);
    f.setSearchText(QStringLiteral("650"));
    EXPECT_EQ(f.rowCount(), 1);
    f.setOnlyDifferences(true);
    f.setSearchText(QStringLiteral("1.25"));
    EXPECT_EQ(f.rowCount(), 0); // B20 axis 1 is the same
}

TEST_F(ParamCompareTest, AFileOfAnotherFamilyIsNoticed)
{
    ParamSet other = file();
    EXPECT_FALSE(ParamCompare::familyMismatch(ParamSet::fromWizard(*table), other));
    other.meta().family = QStringLiteral("zrd-4");
    EXPECT_FALSE(ParamCompare::familyMismatch(ParamSet::fromWizard(*table), other));
    other.meta().family = QStringLiteral("MDS-2");
    ParamCompare c(table);
    c.compare(ParamSet::fromWizard(*table), other);
    EXPECT_TRUE(c.familyMismatch());
}

// Reads that fail are shown as "not read", never blank, and cannot be ticked.
TEST_F(ParamCompareTest, FailedDriveReadsAreShownAsNotRead)
{
    connectHost();
    host.values[kB20] = "9.99";
    host.failingReads << kA01 << kB20Axis2;
    ParamCompare c(table);
    c.compare(ParamSet::fromWizard(*table), ParamSet::fromDrive(*table));
    EXPECT_EQ(c.counts().notRead, 2);
    EXPECT_EQ(c.counts().different, 1);
    const int a01 = rowOf(c, ParamKey("A01", "1"));
    EXPECT_EQ(c.row(a01).state, ParamCompare::State::NotRead);
    EXPECT_EQ(shown(c, ParamKey("A01", "1"), ParamCompare::ColOther),
              QStringLiteral("(nicht gelesen)"));
    EXPECT_EQ(shown(c, ParamKey("A01", "1"), ParamCompare::ColThis), wert(QStringLiteral("A01")));
    EXPECT_FALSE(c.isTickable(a01));
    EXPECT_TRUE(recorder().messages().isEmpty());

    useEnglish();
    ParamCompare english(table);
    english.compare(ParamSet::fromWizard(*table), ParamSet::fromDrive(*table));
    EXPECT_EQ(shown(english, ParamKey("B20", "2"), ParamCompare::ColOther),
              QStringLiteral("(not read)"));
    EXPECT_EQ(english.headerData(ParamCompare::ColOther, Qt::Horizontal).toString(),
              QStringLiteral("Other value"));
}

// Offline, Apply writes into the table (and the controls), each value checked and
// limited as a typed one; what is refused is listed and not written; it is one step.
TEST_F(ParamCompareTest, ApplyOfflineChecksLimitsAndListsRefusals)
{
    ParamSet f = file();
    f.insert(entry("B20", "1", QStringLiteral("99")));        // limited to 40.00
    f.insert(entry("A01", "1", QString(30, QLatin1Char('x')))); // longer than STR24
    f.insert(entry("E00", "1", QStringLiteral("8")));          // read-only
    f.insert(entry("B30", "1", QStringLiteral("6")));          // above the user level
    f.insert(entry("A180", "1", QStringLiteral("12ab")));      // no bit pattern
    f.insert(entry("A00", "1", QStringLiteral("5: weg")));     // not in the list
    ParamCompare c(table);
    c.compare(ParamSet::fromWizard(*table), f);
    c.setAllTicked(true);
    ParamUndoStack undo(table);
    const QString before = wert(QStringLiteral("A00"));
    const ApplyResult r = c.apply(*table, &undo);

    EXPECT_EQ(r.written, 3); // B20 axis 1 (limited), B20 axis 2, A40.1
    EXPECT_EQ(r.refused.size(), 5);
    ASSERT_EQ(r.limited.size(), 1);
    EXPECT_TRUE(r.limited.at(0).reason.contains(QStringLiteral("40.00")));
    EXPECT_EQ(wert(QStringLiteral("B20")), QStringLiteral("40.00"));
    EXPECT_EQ(wert(QStringLiteral("B20"), QStringLiteral("2")), QStringLiteral("2.5"));
    EXPECT_EQ(wert(QStringLiteral("A40.1")), QStringLiteral("650"));
    EXPECT_EQ(wert(QStringLiteral("A00")), before);
    EXPECT_EQ(wert(QStringLiteral("E00")), QStringLiteral("7"));
    EXPECT_EQ(b20->GetText(), QStringLiteral("40.00"));
    EXPECT_EQ(other->GetText(), QStringLiteral("650"));
    EXPECT_TRUE(table->HasPendingEdit(kB20)); // offline: written by OK
    QStringList reasons;
    for (const ApplyRefusal &x : r.refused)
        reasons << x.key.text() + QStringLiteral(": ") + x.reason;
    EXPECT_TRUE(reasons.join('\n').contains(QStringLiteral("A01: Text zu lang (höchstens 24")))
        << reasons.join('\n').toStdString();
    EXPECT_TRUE(reasons.join('\n').contains(QStringLiteral("E00: Parameter ist schreibgeschützt")));
    EXPECT_TRUE(reasons.join('\n').contains(QStringLiteral("B30: Benutzerlevel zu niedrig")));
    EXPECT_TRUE(reasons.join('\n').contains(QStringLiteral("A00: \"5: weg\" ist in der Auswahlliste")));
    EXPECT_TRUE(recorder().messages().isEmpty());
    EXPECT_EQ(c.row(rowOf(c, ParamKey("A40.1", "1"))).state, ParamCompare::State::Same);
    EXPECT_FALSE(c.row(rowOf(c, ParamKey("A40.1", "1"))).ticked);

    EXPECT_EQ(undo.undoStack()->count(), 1);
    undo.undo();
    EXPECT_EQ(wert(QStringLiteral("B20")), QStringLiteral("1.25"));
    EXPECT_EQ(wert(QStringLiteral("A40.1")), QStringLiteral("600"));
    EXPECT_EQ(b20->GetText(), QStringLiteral("1.25"));
}

// Online, Apply posts each value; a value the drive refuses stays as it was and is listed.
TEST_F(ParamCompareTest, ApplyOnlinePostsAndListsWhatTheDriveRefused)
{
    connectHost();
    table->SetOnline(omOnline);
    host.writes.clear();
    host.writeAnswers[kB20Axis2] = 'V';
    ParamCompare c(table);
    c.compare(ParamSet::fromWizard(*table), file());
    const ApplyResult r = c.apply(*table);
    EXPECT_EQ(r.written, 2);
    ASSERT_EQ(r.refused.size(), 1);
    EXPECT_EQ(r.refused.at(0).key.text(), QStringLiteral("2.B20"));
    EXPECT_EQ(r.refused.at(0).reason, QStringLiteral("Freigabe muss AUS sein!"));
    EXPECT_EQ(host.writes.size(), 3u);
    EXPECT_EQ(host.values.value(kA40_1), QByteArray("650"));
    EXPECT_EQ(host.values.value(kA00), QByteArray("1: aktiv"));
    EXPECT_EQ(wert(QStringLiteral("B20"), QStringLiteral("2")), QStringLiteral("0.84"));
    EXPECT_EQ(c.row(rowOf(c, ParamKey("B20", "2"))).state, ParamCompare::State::Different);
    EXPECT_TRUE(recorder().messages().isEmpty()); // listed, not shown box by box
    EXPECT_EQ(recorder().beeps(), 0);
}

// Unknown coordinates of a file are listed, never written.
TEST_F(ParamCompareTest, UnknownCoordinatesAreListedNotApplied)
{
    ParamCompare mine(table);
    ParamSet f;
    f.insert(entry("Z99", "1", QStringLiteral("3")));
    f.insert(entry("B20", "1", QStringLiteral("3")));
    ParamSet thisSide;
    thisSide.insert(entry("Z99", "1", QStringLiteral("1"))); // a set that has it
    thisSide.insert(entry("B20", "1", QStringLiteral("1.25")));
    mine.compare(thisSide, f);
    mine.setAllTicked(true);
    const ApplyResult r = mine.apply(*table);
    ASSERT_EQ(r.unknown.size(), 1);
    EXPECT_EQ(r.unknown.at(0).text(), QStringLiteral("Z99"));
    EXPECT_EQ(r.written, 1);
    EXPECT_FALSE(r.complete());
}

// Values applied offline for parameters no control shows are written by OK as well.
TEST_F(ParamCompareTest, OkWritesAppliedValuesWithoutControls)
{
    ParamCompare c(table);
    c.compare(ParamSet::fromWizard(*table), file());
    ASSERT_EQ(c.apply(*table).written, 3);
    connectHost();
    table->PostAllParams();
    EXPECT_EQ(host.values.value(kB20Axis2), QByteArray("2.5"));
    EXPECT_EQ(host.values.value(kA00), QByteArray("1: aktiv"));
    EXPECT_EQ(host.values.value(kA40_1), QByteArray("650")); // shown by a control
    EXPECT_FALSE(table->HasPendingEdit(kA00));
}
