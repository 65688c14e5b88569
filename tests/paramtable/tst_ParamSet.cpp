#include "paramsets_fixture.h"

#include "paramtable/ParamCompare.h"
#include "paramtable/ParamSet.h"
#include "paramtable/para_import.h"

#include <QFile>
#include <QTemporaryDir>

using namespace drivewiz;
using namespace drivewiz::test;

using ParamSetFile = ParamSetsTest;

// Every kind of parameter the descriptions know comes back from a saved set as it was:
// no difference at all, and the import table reads the same file.
TEST_F(ParamSetFile, SavedSetLoadsBackWithoutAnyDifference)
{
    table->SetCell(table->FindParam(QStringLiteral("A01"), QStringLiteral("1")),
                   QStringLiteral("Wert"), QStringLiteral("Portal; \"X\" Achse"));
    const ParamSet mine = ParamSet::fromWizard(*table);
    ASSERT_EQ(mine.size(), table->RowCount());
    QString error;
    ASSERT_TRUE(mine.save(path(QStringLiteral("set.csv")), &error)) << error.toStdString();
    const ParamSetLoad loaded = ParamSet::load(path(QStringLiteral("set.csv")));
    ASSERT_TRUE(loaded.ok) << loaded.error.toStdString();

    ParamCompare compare(table);
    compare.compare(ParamSet::fromWizard(*table), loaded.set);
    EXPECT_EQ(compare.counts().rows, table->RowCount());
    EXPECT_EQ(compare.counts().same, table->RowCount());
    for (const ParamSet::Entry &e : mine.entries())
        EXPECT_EQ(loaded.set.find(e.key)->value, e.value) << e.key.text().toStdString();
    EXPECT_EQ(loaded.set.find(ParamKey("A01", "1"))->value, QStringLiteral("Portal; \"X\" Achse"));
    EXPECT_EQ(loaded.set.find(ParamKey("B20", "2"))->value, QStringLiteral("0.84"));
    EXPECT_EQ(loaded.set.find(ParamKey("A40.1", "1"))->name, QStringLiteral("Rampe§Runter"));

    EXPECT_EQ(loaded.set.meta().family, QStringLiteral("ZRD-4"));
    EXPECT_EQ(loaded.set.meta().wizardId, QStringLiteral("SetsWizard"));
    EXPECT_EQ(loaded.set.meta().libraryVersion, libraryVersion());
    EXPECT_TRUE(loaded.set.meta().date.isValid());

    TImportTable imported;
    ASSERT_TRUE(imported.ImportTable(path(QStringLiteral("set.csv"))));
    // Its field reader takes doubled quotes as the end of the text: it sees "Portal; ".
    EXPECT_EQ(imported.Cell(imported.FindParam(QStringLiteral("B20"), QStringLiteral("2")),
                            QStringLiteral("Wert")),
              QStringLiteral("0.84"));
    EXPECT_EQ(imported.Cell(imported.FindParam(QStringLiteral("A40.1"), QStringLiteral("1")),
                            QStringLiteral("Einheit")),
              QStringLiteral("ms"));
    EXPECT_TRUE(recorder().messages().isEmpty()) << recorder().messages().join('\n').toStdString();
}

TEST_F(ParamSetFile, SetsOfAListOfParametersAndOfTheDefaults)
{
    const ParamSet some = ParamSet::fromTable(
        *table, {ParamKey::fromText(QStringLiteral("2.B20")), ParamKey("A00", ""), ParamKey("Z99", "1")});
    ASSERT_EQ(some.size(), 2);
    EXPECT_EQ(some.at(0).value, QStringLiteral("0.84"));
    EXPECT_EQ(some.at(1).key.text(), QStringLiteral("A00"));
    const ParamSet defaults = ParamSet::defaultsOf(*table);
    EXPECT_EQ(defaults.find(ParamKey("B20", "1"))->value, QStringLiteral("0.00"));
    EXPECT_EQ(defaults.find(ParamKey("A40.0", "1"))->value, QStringLiteral("1000"));
}

// A malformed file gives no set, and a message naming the file and the line.
TEST_F(ParamSetFile, MalformedFilesNameTheirLineAndGiveNoSet)
{
    const QByteArray title = "\"Name\";\"Koordinate\";\"Achse\";\"Wert\";\"Einheit\"\r\n";
    const QByteArray good = "\"Strom\";\"B20\";\"1\";\"2.5\";\"A\"\r\n";
    struct Case
    {
        const char *what;
        QByteArray bytes;
        int line;
    };
    const Case cases[] = {
        {"unterminated quote", title + good + "\"Strom\";\"B20\";\"2\";\"2.5;\"A\"\r\n", 3},
        {"too few fields", title + good + good.left(20) + "\r\n", 3},
        {"too many fields", title + "\r\n" + "\"x\";\"A00\";\"1\";\"0\";\"\";\"extra\"\r\n", 3},
        {"no coordinate", title + "\"x\";\"hello\";\"1\";\"0\";\"\"\r\n", 2},
        {"a parameter twice", title + good + "\"# note=1\"\r\n" + good, 4},
        {"binary junk", title + good + QByteArray("\x01\x02\xff\xfe\x00zz", 7) + "\r\n", 3},
        {"UTF-16", QByteArray("\xff\xfe\x4e\x00") + title, 1},
        {"no title", "\"a\";\"b\"\r\n", 1},
    };
    for (const Case &c : cases) {
        const ParamSetLoad r = ParamSet::parse(c.bytes, QStringLiteral("bad.csv"));
        EXPECT_FALSE(r.ok) << c.what;
        EXPECT_EQ(r.line, c.line) << c.what;
        EXPECT_TRUE(r.error.startsWith(QStringLiteral("bad.csv, Zeile %1: ").arg(c.line)))
            << c.what << ": " << r.error.toStdString();
        EXPECT_TRUE(r.set.isEmpty()) << c.what;
    }
    const ParamSetLoad empty = ParamSet::parse("\r\n  \r\n", QStringLiteral("e.csv"));
    EXPECT_FALSE(empty.ok);
    EXPECT_FALSE(empty.error.isEmpty());
    EXPECT_FALSE(ParamSet::load(path(QStringLiteral("missing.csv"))).ok);
}

TEST_F(ParamSetFile, AFarTooLargeFileIsRefusedAtTheLineWhereItGetsTooLarge)
{
    QFile file(path(QStringLiteral("huge.csv")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("\"Name\";\"Koordinate\";\"Achse\";\"Wert\";\"Einheit\"\r\n");
    const QByteArray line = "\"Strom\";\"B20\";\"1\";\"" + QByteArray(980, '7') + "\";\"A\"\r\n";
    for (int i = 0; i < 50 * 1024; ++i)
        file.write(line);
    file.close();
    const ParamSetLoad r = ParamSet::load(path(QStringLiteral("huge.csv")));
    EXPECT_FALSE(r.ok);
    const int atLimit = 2 + int((32 << 20) - 48) / int(line.size());
    EXPECT_NEAR(r.line, atLimit, 1);
    EXPECT_TRUE(r.error.contains(QStringLiteral("32 MB"))) << r.error.toStdString();
}

TEST_F(ParamSetFile, WindowsFilesAreReadAndOddValuesAreNotSavedHalfway)
{
    const QByteArray cp1252 = "Name;Koordinate;Achse;Wert;Einheit\r\n"
                              "Gr\xF6\xDF" "e;A01;1;\"M\xFC" "ller\";\r\n";
    const ParamSetLoad r = ParamSet::parse(cp1252, QStringLiteral("win.csv"));
    ASSERT_TRUE(r.ok) << r.error.toStdString();
    EXPECT_EQ(r.set.at(0).value, QStringLiteral("Müller"));
    EXPECT_EQ(r.set.at(0).name, QStringLiteral("Größe"));

    ParamSet set;
    set.insert({ParamKey("A01", "1"), QStringLiteral("two\nlines"), QString(), QString(), true});
    QString error;
    EXPECT_FALSE(set.save(path(QStringLiteral("nl.csv")), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("A01"))) << error.toStdString();
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("nl.csv"))));
    EXPECT_FALSE(ParamSet().save(path(QStringLiteral("no/such/folder/x.csv")), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("x.csv")));
}

// Reads that fail are "not read", with no value and no message box.
TEST_F(ParamSetFile, TheDriveSetMarksFailedReads)
{
    connectHost();
    host.values[kB20] = "3.50";
    host.failingReads << kA01 << kB20Axis2;
    const ParamSet drive = ParamSet::fromDrive(*table);
    EXPECT_EQ(drive.find(ParamKey("B20", "1"))->value, QStringLiteral("3.50"));
    EXPECT_FALSE(drive.find(ParamKey("A01", "1"))->read);
    EXPECT_FALSE(drive.find(ParamKey("B20", "2"))->read);
    EXPECT_TRUE(drive.find(ParamKey("A00", "1"))->read);
    EXPECT_EQ(wert(QStringLiteral("B20")), QStringLiteral("1.25")); // the table is untouched
    EXPECT_TRUE(recorder().messages().isEmpty());
}

// Axes 0, 1 and none are one axis; a table that lists a parameter twice gives it once,
// with its later row, whichever way the set is looked at.
TEST(ParamSetKeys, FirstAxisSpellingsAndRepeatedRows)
{
    EXPECT_EQ(ParamKey("b20", " 0"), ParamKey("B20", ""));
    EXPECT_EQ(qHash(ParamKey("B20", "0")), qHash(ParamKey("B20", "1")));
    EXPECT_NE(ParamKey("B20", "2"), ParamKey("B20", "1"));
    EXPECT_EQ(ParamKey::fromText(QStringLiteral("3.A40.1")).text(), QStringLiteral("3.A40.1"));
    EXPECT_EQ(ParamKey::fromText(QStringLiteral("3.A40.1")).achse, QStringLiteral("3"));

    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("d.csv"));
    test::writeFile(file, "Name;Koordinate;Achse;Wert\r\nx;A01;1;first\r\nx;A02;1;2\r\n"
                          "x;A01;1;second\r\nx;A03;0;3\r\n");
    TImportTable table;
    ASSERT_TRUE(table.ImportTable(file));
    const ParamSet all = ParamSet::fromTable(table);
    ASSERT_EQ(all.size(), 3);
    EXPECT_EQ(all.find(ParamKey("A01", "1"))->value, QStringLiteral("second"));
    EXPECT_EQ(all.at(all.indexOf(ParamKey("A03", "1"))).value, QStringLiteral("3"));
    const ParamSet listed = ParamSet::fromTable(
        table, {ParamKey("A03", ""), ParamKey("A01", "1"), ParamKey("A03", "1")});
    EXPECT_EQ(listed.keys(), (QList<ParamKey>{ParamKey("A03", ""), ParamKey("A01", "1")}));
}
