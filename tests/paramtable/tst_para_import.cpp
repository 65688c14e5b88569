#include "import_fixture.h"

#include "gendesc.h"
#include "paramtable/coordinates.h"
#include "paramtable/para_import.h"
#include "paramtable/para_import_p.h"

#include <QDir>
#include <QRandomGenerator>

using namespace drivewiz;

namespace {

const QByteArray kTitle = "Name;Koordinate;Achse;Wert\r\n";

QByteArray rows(std::initializer_list<const char *> lines)
{
    QByteArray out = kTitle;
    for (const char *l : lines)
        out += QByteArray(l) + "\r\n";
    return out;
}

} // namespace

class ImportTableLoad : public CsvFiles
{
};

TEST_F(ImportTableLoad, ReadsTheSampleDescriptionFile)
{
    TImportTable t;
    ASSERT_TRUE(t.ImportTable(test::sourcePath("data/sample/Parameter.csv")));
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_GT(t.RowCount(), 250);
    EXPECT_EQ(t.Delimiter(), ';');
    EXPECT_EQ(t.ColTitles().last(), QStringLiteral("par"));
    EXPECT_TRUE(t.HasColumn(QStringLiteral("USS-Adresse /hex")));
    const int p = t.FindParam(QStringLiteral("b33.5"), QStringLiteral("2"));
    ASSERT_GE(p, 0);
    EXPECT_EQ(t.fGetKoord(p), QStringLiteral("B33.5"));
    EXPECT_EQ(t.fGetAchse(p), QStringLiteral("2"));
    EXPECT_TRUE(t.IstArrayPar(p));
    // Windows-1252 umlauts arrive as the right characters.
    bool umlaut = false;
    for (int i = 0; i < t.RowCount() && !umlaut; ++i)
        umlaut = t.fGetParamName(i).contains(QChar(0x00FC)) ||
                 t.fGetParamName(i).contains(QChar(0x00E4));
    EXPECT_TRUE(umlaut);
}

TEST_F(ImportTableLoad, TitleWithBothDelimitersIsReadWithSemicolon)
{
    TImportTable t;
    t.ImportTable(write("both.csv", "Name;Koordinate;Achse,x\nDrehzahl;B33;1\n"));
    EXPECT_EQ(messages(), QStringList({"Fehler: Titelzeile in CSV-Datei darf nicht Komma und "
                                       "Semikolon gleichzeitig enthalten!"}));
    EXPECT_EQ(t.Delimiter(), ';');
    EXPECT_EQ(t.ColCount(), 4);
}

TEST_F(ImportTableLoad, LineEndsBlankLinesAndQuotes)
{
    TImportTable t;
    t.ImportTable(write("mixed.csv", "Name;Koordinate;Achse;Wert\r\n"
                                     "\"a;b\" ;A01;1;\"x\"y;z\n"
                                     "   \r\n"
                                     "\r"
                                     " c ;A02;1;  5 \r"
                                     "d;A03;1\n"));
    EXPECT_TRUE(messages().isEmpty());
    ASSERT_EQ(t.RowCount(), 3);
    EXPECT_EQ(t.fGetParamName(0), QStringLiteral("a;b"));
    EXPECT_EQ(t.ValueByColName(0, QStringLiteral("wert")), QStringLiteral("x"));
    EXPECT_EQ(t.fGetParamName(1), QStringLiteral("c ")); // leading blanks go, trailing stay
    EXPECT_EQ(t.ValueByColName(1, QStringLiteral("Wert")), QStringLiteral("5 "));
    EXPECT_EQ(t.ValueByColName(2, QStringLiteral("Wert")), QString()); // missing field
}

TEST_F(ImportTableLoad, BadFilesGetClearMessagesAndLeaveAUsableTable)
{
    TImportTable t;
    EXPECT_FALSE(t.ImportTable(path("missing.csv")));
    EXPECT_EQ(messages(), QStringList({"Datei \"" + path("missing.csv") + "\" existiert nicht!"}));
    QDir().mkpath(path("folder.csv"));
    EXPECT_FALSE(t.ImportTable(path("folder.csv")));
    EXPECT_EQ(messages(), QStringList({"FEHLER: Datei " + path("folder.csv") +
                                       " konnte nicht geöffnet werden!"}));
    EXPECT_FALSE(t.ImportTable(write("empty.csv", "")));
    EXPECT_EQ(messages().size(), 1);
    EXPECT_TRUE(t.ImportTable(write("title.csv", kTitle)));
    EXPECT_EQ(t.RowCount(), 0);
    EXPECT_EQ(t.FindParam(QStringLiteral("A01"), QStringLiteral("1")), -1);
    EXPECT_TRUE(messages().isEmpty());

    t.ImportTable(write("nul.csv", kTitle + QByteArray("a;A0\0\0"
                                                       "1;1;2\r\n",
                                                       13)));
    EXPECT_EQ(messages().size(), 1);
    EXPECT_EQ(t.FindParam(QStringLiteral("A01"), QStringLiteral("1")), 0);

    t.ImportTable(write("quote.csv", rows({"\"open;A01;1;2", "b;A02;1;3"})));
    const QStringList m = messages();
    ASSERT_EQ(m.size(), 1); // the open quote swallows the line: no coordinate, no warning
    EXPECT_TRUE(m[0].contains(QStringLiteral("Zeile 2")));
    EXPECT_EQ(t.fGetParamName(t.FindParam("A02", "1")), QStringLiteral("b"));

    t.ImportTable(write("nokoord.csv", "Name;Wert\nx;1\n"));
    EXPECT_EQ(messages().size(), 1);
    EXPECT_EQ(t.RowCount(), 1);
    EXPECT_EQ(t.FindParam(QStringLiteral("A01"), QString()), -1);

    t.ImportTable(write("badkoord.csv", rows({"x;B-3;1;1", "y;A01;1;1"})));
    EXPECT_TRUE(messages().value(0).contains(QStringLiteral("2: B-3")));
    EXPECT_EQ(t.fGetParamName(t.FindParam(QStringLiteral("A01"), QStringLiteral("1"))),
              QStringLiteral("y"));
}

TEST_F(ImportTableLoad, LongLinesAndInvalidUtf8)
{
    QByteArray longName(2 * 1024 * 1024, 'x');
    TImportTable t;
    t.ImportTable(write("long.csv", kTitle + longName + ";A01;1;\xE4\xFC\x80\r\n"));
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_EQ(t.fGetParamName(0).size(), longName.size());
    EXPECT_EQ(t.ValueByColName(0, "Wert"), QString::fromUtf8("äü€"));
}

// Only the file's first byte order mark marks its encoding; one at the start of a cell is
// a character of that cell (Qt's UTF-8 decoding would drop it).
TEST_F(ImportTableLoad, AByteOrderMarkStartingACellStaysInIt)
{
    TImportTable t;
    t.ImportTable(write("bom.csv", "\xEF\xBB\xBF" + kTitle + "Drehzahl;A10;1;\xEF\xBB\xBF" "5\r\n"));
    EXPECT_EQ(t.ValueByColName(0, "Wert"), QString(QChar(0xFEFF)) + QLatin1Char('5'));
    EXPECT_EQ(t.fGetParamName(0), QStringLiteral("Drehzahl"));
}

class ImportTableMerge : public CsvFiles
{
};

TEST_F(ImportTableMerge, FirstFileWinsAndRepeatsAreDropped)
{
    TImportTable t;
    t.ImportTable(write("a.csv", rows({"first;A01;1;1", "dup;A01;1;2", "other;A02;1;3"})));
    t.AddCSVFile(
        write("b.csv", rows({"second;A01;1;9", "new;A03;1;4", "again;A03;1;5", "axis2;A01;2;6"})));
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_EQ(t.RowCount(), 5); // both first-file rows of A01 stay
    EXPECT_EQ(t.fGetParamName(t.FindParam("A03", "1")), QStringLiteral("new"));
    EXPECT_EQ(t.fGetParamName(t.FindParam("A01", "2")), QStringLiteral("axis2"));
}

TEST_F(ImportTableMerge, OtherColumnsOrOrderAreRefused)
{
    TImportTable t;
    t.ImportTable(write("a.csv", rows({"x;A01;1;1"})));
    const QString fewer = write("fewer.csv", "Name;Koordinate;Achse\ny;A02;1\n");
    EXPECT_FALSE(t.AddCSVFile(fewer));
    EXPECT_EQ(messages(), QStringList({"FEHLER: Spaltenanzahl in \"\r" + fewer +
                                       "\r\" stimmt mit der zuvor importierten Datei nicht "
                                       "überein!\rErwartet: 5\rAktuelle Datei: 3"}));
    const QString order = write("order.csv", "Name;Achse;Koordinate;Wert\ny;1;A02;1\n");
    EXPECT_FALSE(t.AddCSVFile(order));
    EXPECT_EQ(messages(), QStringList({"FEHLER: Spaltenreihenfolge in \"" + order +
                                       "\" stimmt mit der zuvor importierten Datei nicht "
                                       "überein!"}));
    EXPECT_EQ(t.RowCount(), 1);
}

// The merge must give what appending line by line with a fresh index after each line
// gives, on files full of repeats, blank coordinates, odd axes or numbers and long keys.
TEST_F(ImportTableMerge, LinearMergeMatchesLineByLineMerge)
{
    auto *rng = QRandomGenerator::global();
    for (int round = 0; round < 20; ++round) {
        const QByteArray title = round % 2 ? kTitle : "Name;Koordinate;Nummer;Wert\r\n";
        QByteArray a = title, b = title;
        for (QByteArray *f : {&a, &b}) {
            for (int i = 0; i < 60; ++i) {
                const int n = int(rng->bounded(12));
                const char *axes[] = {"1", "2", "", "x", " 3"};
                *f +=
                    "n" + QByteArray::number(i) + ";" +
                    (n == 11   ? QByteArray()
                     : n == 10 ? "B7.1234567890123" // a sort string of more than 16 bytes
                               : "A" + QByteArray::number(n).rightJustified(2, '0')) +
                    ";" + axes[rng->bounded(5)] + ";v\r\n";
            }
        }
        TImportTable fast, slow;
        fast.ImportTable(write("a.csv", a));
        fast.AddCSVFile(write("b.csv", b));
        slow.ImportTable(path("a.csv"));
        for (const QByteArray &line : b.split('\n').mid(1)) {
            const QString l = QString::fromUtf8(line).trimmed();
            if (l.isEmpty()) continue;
            const QString koord = ExtractCSVWord(2, l, TCharSet(";"));
            QString axis = ExtractCSVWord(3, l, TCharSet(";"));
            if (!IsInteger(axis)) axis = QStringLiteral("0");
            if (slow.FindParam(koord, axis) < 0) {
                slow.AddRow(l);
                slow.ReBuildMainIndex();
            }
        }
        ASSERT_EQ(fast.RowCount(), slow.RowCount());
        for (int p = 0; p < fast.RowCount(); ++p)
            ASSERT_EQ(fast.fGetParamName(p), slow.fGetParamName(p)) << round << " " << p;
    }
    messages();
}

// A Windows-1252 file merged into a UTF-8 one: texts arrive as the same characters, a row
// of more than 64 KB keeps all its cells, and the new rows are found at once.
TEST_F(ImportTableMerge, WindowsFilesAndLongRowsMergeLikeOthers)
{
    TImportTable t;
    t.ImportTable(write("a.csv", rows({"Gr\xC3\xB6\xC3\x9F" "e;A01;1;1"})));
    const QByteArray longName(70000, 'x');
    t.AddCSVFile(write("b.csv", rows({"\"Ma\xDF; neu\";A02;1;\xB0" "C", "dup;A01;1;9",
                                      (longName + ";A03;1;5").constData()})));
    EXPECT_TRUE(messages().isEmpty());
    ASSERT_EQ(t.RowCount(), 3);
    EXPECT_EQ(t.fGetParamName(t.FindParam("A01", "1")), QString::fromUtf8("Gr\xC3\xB6\xC3\x9F" "e"));
    EXPECT_EQ(t.fGetParamName(t.FindParam("A02", "1")), QString::fromUtf8("Ma\xC3\x9F; neu"));
    EXPECT_EQ(t.ValueByColName(t.FindParam("A02", "1"), "Wert"), QString::fromUtf8("\xC2\xB0" "C"));
    const int p = t.FindParam("A03", "1");
    EXPECT_EQ(t.fGetParamName(p).size(), longName.size());
    EXPECT_EQ(t.ValueByColName(p, "Wert"), QStringLiteral("5"));
}

class ImportTableIndex : public CsvFiles
{
protected:
    void SetUp() override
    {
        t.ImportTable(write(
            "t.csv",
            rows({"E;E100;1;1", "A;A03;1;1", "Arr0;B33.0;1;1", "Arr1;B33.1;1;1", "Arr5;B33.5;1;1",
                  "Rec §1;C10.1;1;1", "all;D01;1;1", "all;D01;2;1", "all;D01;3;1", "all;D01;4;1",
                  "two;D02;1;1", "two;D02;2;1", "any;F07;0;1"})));
    }
    int find(const char *k, const char *axis = "1") { return t.FindParam(k, axis); }
    TImportTable t;
};

TEST_F(ImportTableIndex, SortStringsAndTheirPieces)
{
    EXPECT_EQ(TImportTable::BuildSortString("B33.7", "2", ""), QStringLiteral("B03300070002"));
    EXPECT_EQ(TImportTable::BuildSortString("E100", "", "5"), QStringLiteral("E10000000050"));
    EXPECT_EQ(TImportTable::BuildSortString("", "1", "1"), QString());
    EXPECT_EQ(t.fGetParam(find("E100")), QStringLiteral("E100"));
    EXPECT_EQ(t.fGetParam(find("A03")), QStringLiteral("A03"));
    EXPECT_EQ(t.fGetElement(find("B33.5")), QStringLiteral("5"));
    EXPECT_EQ(t.fGetElement(find("A03")), QStringLiteral("0"));
    EXPECT_EQ(t.fGetGruppe(find("E100")), QStringLiteral("E"));
    EXPECT_EQ(t.fGetAchsenListe(find("D01", "3")), QStringLiteral("1-4"));
    EXPECT_EQ(t.fGetAchsenListe(find("D02", "2")), QStringLiteral("1,2"));
    EXPECT_EQ(t.GetArrayElementCount(find("B33.0")), 6);
    EXPECT_EQ(t.GetArrayElementCount(find("A03")), 0);
    EXPECT_TRUE(t.IstRecordPar(find("C10.1")));
    EXPECT_FALSE(t.IstArrayPar(find("C10.1")));
    EXPECT_EQ(t.GetRTFFileName(find("B33.5"), "_d"), QStringLiteral("B33-5_d.rtf"));
    EXPECT_EQ(t.GetRTFFileName(find("A03"), ""), QStringLiteral("A03.rtf"));
    EXPECT_EQ(t.fGetKoord(t.RowCount()), QString()); // one past the end is empty, no error
    EXPECT_EQ(t.fGetSortFullKoord(-1), QString());
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(ImportTableIndex, LookupsWithAndWithoutAxis)
{
    EXPECT_GE(find("d01", "4"), 0);
    EXPECT_EQ(find("D01", "5"), -1);
    EXPECT_EQ(t.FindParAxUnknown("F07", "2"), find("F07", "0")); // drive-wide row
    EXPECT_EQ(t.FindParAxUnknown("F07", "$2"), find("F07", "0"));
    EXPECT_EQ(t.FindParAxUnknown("F-7", "1"), -1);
    EXPECT_EQ(t.fGetGruppe(t.FindGruppe("d", "")), QStringLiteral("D"));
    EXPECT_EQ(t.FindGruppe("Z", ""), -1);
}

// A changed key cell leaves every position naming its row until the index is rebuilt;
// the valid flag tells that the order is stale.
TEST_F(ImportTableIndex, ChangedKeysMoveRowsOnlyWithARebuild)
{
    const int a03 = find("A03");
    const int e100 = find("E100");
    ASSERT_TRUE(t.MainIndexValid());
    t.SetValueByColName(a03, "Name", "n"); // no key: nothing goes stale
    EXPECT_TRUE(t.MainIndexValid());
    t.SetValueByColName(a03, "Koordinate", "Z04");
    t.SetValueByColName(e100, "Achse", "3");
    EXPECT_FALSE(t.MainIndexValid());
    EXPECT_EQ(t.fGetKoord(a03), QStringLiteral("Z04")); // the same row at the same place
    EXPECT_EQ(t.fGetKoord(e100), QStringLiteral("E100"));
    EXPECT_EQ(find("A03"), a03); // look-ups still see the old order
    t.ReBuildMainIndex();
    EXPECT_TRUE(t.MainIndexValid());
    EXPECT_EQ(find("A03"), -1);
    EXPECT_EQ(t.fGetKoord(t.RowCount() - 1), QStringLiteral("Z04"));
    EXPECT_EQ(t.fGetAchse(find("E100", "3")), QStringLiteral("3"));
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(ImportTableIndex, ColumnMissesAreReported)
{
    EXPECT_EQ(t.ValueByColName(0, "Nichtda"), QStringLiteral("?"));
    EXPECT_EQ(messages(), QStringList({"Fehler: Spalte Nichtda im CSV-File nicht gefunden!"}));
    EXPECT_EQ(t.ValueByColName(99, "Wert"), QStringLiteral("?"));
    TImportTable empty;
    EXPECT_EQ(empty.ColNoByName("Wert"), -1);
    EXPECT_EQ(messages(), QStringList({"Fehler beim Zugriff auf Spalte \"Wert\"\r\"fColTitles\" "
                                       "noch nicht initialisiert!"}));
    EXPECT_FALSE(empty.AddRow("a;b"));
    EXPECT_EQ(messages(), QStringList({"\"AddRow\" nicht möglich; Delim unbekannt!"}));
}

TEST_F(ImportTableIndex, NumberColumnMakesTheSecondKeyANumber)
{
    TImportTable sel;
    sel.ImportTable(write("sel.csv", "Koordinate;Nummer;Wert\nA10;0;aus\nA10;1;ein\nA11;0;x\n"));
    EXPECT_EQ(sel.ValueByColName(sel.FindParam("A10", "1"), "Wert"), QStringLiteral("ein"));
    EXPECT_EQ(sel.ValueByColName(sel.FindParam("A10", "0"), "Wert"), QStringLiteral("aus"));
    EXPECT_GE(sel.FindParam("A11", ""), 0); // blank number: any number matches
    EXPECT_EQ(sel.FindParam("A10", "7"), -1);
}

// Parameter numbers run to 1023 and elements to 16383; from 1000 and 10000 on they take
// one digit more in the sort string, and their rows sort among shorter ones.
TEST_F(ImportTableIndex, LookupsOverTheWholeCoordinateRange)
{
    QStringList koords;
    for (const int n : {0, 9, 10, 99, 100, 999, 1000, 1009, 1010, 1023})
        koords << QStringLiteral("A%1").arg(n, 2, 10, QLatin1Char('0'));
    for (const int e : {0, 1, 999, 1001, 9999, 10000, 10010, 16383})
        koords << QStringLiteral("B33.%1").arg(e) << QStringLiteral("B1023.%1").arg(e);
    QByteArray desc = kTitle;
    QByteArray sel = "Koordinate;Nummer;Wert\n";
    for (const QString &k : koords) {
        for (const char *axis : {"1", "2"})
            desc += "n;" + k.toLatin1() + ";" + axis + ";1\r\n";
        for (const char *n : {"0", "1", "2"})
            sel += k.toLatin1() + ";" + n + ";" + k.toLatin1() + "/" + n + "\n";
    }
    TImportTable d, s;
    d.ImportTable(write("range.csv", desc));
    s.ImportTable(write("rangesel.csv", sel));
    for (const QString &k : koords) {
        for (const char *axis : {"1", "2"}) {
            const int p = d.FindParam(k, axis);
            ASSERT_GE(p, 0) << k.toStdString() << " axis " << axis;
            EXPECT_EQ(d.fGetKoord(p), k);
            EXPECT_EQ(d.fGetAchse(p), QString::fromLatin1(axis));
            EXPECT_EQ(d.fGetParam(p), GetPurePar(k));
            EXPECT_EQ(d.fGetElement(p), k.contains('.') ? k.section('.', 1) : QStringLiteral("0"));
        }
        // A blank number finds the first entry of the coordinate's list.
        const int first = s.FindParam(k, QString());
        ASSERT_GE(first, 0) << k.toStdString();
        EXPECT_EQ(s.ValueByColName(first, "Wert"), k + "/0");
        EXPECT_EQ(s.ValueByColName(s.FindParam(k, "2"), "Wert"), k + "/2");
    }
    // Rows of A1010 and B33.10000 start like these, but are other parameters.
    EXPECT_EQ(s.FindParam("A101", QString()), -1);
    EXPECT_EQ(s.FindParam("B33.1000", QString()), -1);
    EXPECT_EQ(d.GetArrayElementCount(d.FindParam("B33.0", "1")), 16384);
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(ImportTableIndex, ExportAndCsvStrings)
{
    EXPECT_EQ(t.GetCSVString(0, {"Koordinate", "Name"}), QStringLiteral("E100;E"));
    EXPECT_EQ(t.GetCSVString(-1, {"Name"}), QString());
    EXPECT_EQ(messages(), QStringList({"GetCSVString: RecNo exceeds permitted range!\r"}));
    t.SetValueByColName(find("A03"), "Name", QString::fromUtf8("Größe"));
    ASSERT_TRUE(t.ExportAll(path("out.csv")));
    const QByteArray out = test::readFile(path("out.csv"));
    EXPECT_TRUE(out.startsWith("\"name\";\"koordinate\";\"achse\";\"wert\";\r\n\"E\";\"E100\";"));
    EXPECT_TRUE(out.contains("\"Gr\xF6\xDF"
                             "e\";")); // written as Windows-1252
    TImportTable back;
    back.ImportTable(path("out.csv"));
    EXPECT_EQ(back.RowCount(), t.RowCount());
    EXPECT_EQ(back.fGetParamName(back.FindParam("A03", "1")), QString::fromUtf8("Größe"));
}

// The byte-level scanner and sort-string builder must agree with the text routines.
TEST(ImportTableParsing, FastPathsAgreeWithTheTextRoutines)
{
    auto *rng = QRandomGenerator::global();
    const char alphabet[] = " ;,\"ab1.\xC3\xA4-$";
    for (int round = 0; round < 3000; ++round) {
        QByteArray line;
        const int len = int(rng->bounded(24));
        for (int i = 0; i < len; ++i) {
            const char c = alphabet[rng->bounded(int(sizeof alphabet) - 1)];
            line += c;
            if (c == '\xC3') line += '\xA4';
        }
        importdetail::FieldSpan spans[16];
        bool unterminated = false;
        const size_t n = importdetail::scanCsvFields(line.constData(), size_t(line.size()), ';',
                                                     spans, 16, unterminated);
        const QString text = QString::fromUtf8(line);
        for (size_t f = 0; f < 16; ++f) {
            const QString fast = f < n ? QString::fromUtf8(line.constData() + spans[f].begin,
                                                           qsizetype(spans[f].end - spans[f].begin))
                                       : QString();
            ASSERT_EQ(fast, ExtractCSVWord(int(f) + 1, text, TCharSet(";")))
                << line.toStdString() << " field " << f + 1;
        }
        const QByteArray a = line.left(3), k = line.mid(3);
        const std::string key = importdetail::sortKey(k.constData(), size_t(k.size()),
                                                      a.constData(), size_t(a.size()), "", 0);
        ASSERT_EQ(QString::fromStdString(key),
                  TImportTable::BuildSortString(QString::fromUtf8(k).trimmed().toUpper(),
                                                QString::fromUtf8(a), QString())
                      .toUpper())
            << line.toStdString();
    }
}

TEST_F(ImportTableLoad, MutatedFilesNeverBreakTheTable)
{
    const QByteArray sample = test::readFile(test::sourcePath("data/sample/Parameter.csv"));
    ASSERT_FALSE(sample.isEmpty());
    auto *rng = QRandomGenerator::global();
    const char noise[] = {'"', ';', ',', '\0', '\r', '\n', '\xFF', '\xC3', '.', ' '};
    for (int round = 0; round < 40; ++round) {
        QByteArray bytes = sample.left(int(rng->bounded(sample.size())));
        for (int i = 0; i < 30; ++i)
            bytes[int(rng->bounded(qMax(1, int(bytes.size()))))] =
                noise[rng->bounded(int(sizeof noise))];
        TImportTable t;
        t.ImportTable(write("m.csv", bytes));
        t.AddCSVFile(write("n.csv", bytes.mid(int(rng->bounded(qMax(1, int(bytes.size())))))));
        for (int p = 0; p < t.RowCount(); p += 7)
            t.FindParam(t.fGetKoord(p), t.fGetAchse(p));
        t.fGetAchsenListe(t.RowCount() - 1);
        t.GetArrayElementCount(0);
        test::recorder().clear();
    }
}

TEST_F(ImportTableLoad, GeneratedFilesLoadCompletely)
{
    gendesc::Options o;
    o.rows = 5000;
    const QString file = path("gen.csv");
    ASSERT_TRUE(gendesc::writeFile(file.toStdString(), o));
    TImportTable t;
    ASSERT_TRUE(t.ImportTable(file));
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_EQ(t.RowCount(), 5000);
    for (int p = 0; p < t.RowCount(); p += 97)
        EXPECT_EQ(t.FindParam(t.fGetKoord(p), t.fGetAchse(p)), p);
}
