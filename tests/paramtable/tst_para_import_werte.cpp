#include "import_fixture.h"

#include "paramtable/para_import_werte.h"

using namespace drivewiz;

class WerteTable : public CsvFiles
{
protected:
    void SetUp() override
    {
        t.ImportTable(write("w.csv", "Name;Koordinate;Achse;Datentyp;Read-Level\n"
                                     "Drehzahl;A01;1;I16;1\n"
                                     "Drehzahl;A01;2;I16;1\n"
                                     "Strom;A02;1;U16;3\n"
                                     "Text;A03;1;STR16;9\n"
                                     "Feld;B33.0;1;U8;1\n"
                                     "Feld;B33.1;1;U8;1\n"
                                     "Feld;B33.2;1;U8;1\n"
                                     "Satz §1;B34.0;1;U8;1\n"
                                     "Satz §2;B34.1;1;U8;1\n"
                                     "Zehn;C10;1;10;1\n"
                                     "Neun;C11;1;9;1\n"));
    }
    QStringList visible()
    {
        QStringList out;
        const int n = t.GetVisibleParamCount();
        for (int i = 0; i < n; ++i)
            out << t.Koordinate(i) + (t.Achse(i) == "1" ? "" : "/" + t.Achse(i));
        return out;
    }
    TWerteTable t;
};

TEST_F(WerteTable, FilterExpressionsReadLeftToRight)
{
    t.SetFilter("(Datentyp=i16) or (Datentyp=u16)");
    EXPECT_EQ(visible(), QStringList({"A01", "A01/2", "A02"}));
    // Without parentheses a term runs to the end: the value is "i16 and name".
    t.SetFilter("Datentyp=I16 and Name=x");
    EXPECT_TRUE(visible().isEmpty());
    t.SetFilter("(Datentyp=u*) and (Name=F?ld)");
    EXPECT_EQ(visible(), QStringList({"B33.0", "B33.1", "B33.2"}));
    t.SetFilter("(Datentyp<9) and (Koordinate>=C)"); // text order: "10" < "9"
    EXPECT_EQ(visible(), QStringList({"C10"}));
    t.SetFilter("(Name=Strom) or (Name=Text) and (Datentyp=str16)"); // no precedence
    EXPECT_EQ(visible(), QStringList({"A03"}));
    t.SetFilter("(Datentyp=u16"); // unbalanced: compares nothing
    EXPECT_EQ(visible().size(), 11);
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(WerteTable, UnknownFilterColumnIsReportedOncePerPass)
{
    t.SetFilter("(Farbe=rot)");
    EXPECT_TRUE(visible().isEmpty());
    EXPECT_EQ(messages(), QStringList({"Fehler: Spalte Farbe im CSV-File nicht gefunden!"}));
}

TEST_F(WerteTable, LevelHiddenListAndElementModes)
{
    t.SetLevelFilter(2);
    EXPECT_FALSE(visible().contains("A02"));
    EXPECT_FALSE(visible().contains("A03"));
    t.SetLevelFilter(99);
    EXPECT_EQ(visible().size(), 11);
    t.SetHiddenParamFilter("B33; B34,,A01");
    EXPECT_EQ(visible(), QStringList({"A02", "A03", "C10", "C11"}));
    t.SetHiddenParamFilter(QString());
    t.ArrayDisplayMode = 1;
    EXPECT_TRUE(visible().contains("B33.0"));
    EXPECT_FALSE(visible().contains("B33.1"));
    EXPECT_TRUE(visible().contains("B34.1")); // records follow their own mode
    t.RecordDisplayMode = 2;
    EXPECT_FALSE(visible().contains("B34.0"));
    t.SetShowElements(true);
    EXPECT_EQ(visible().size(), 11);
}

TEST_F(WerteTable, OneAxisGroupsAndEvent)
{
    t.OneAxis = true;
    EXPECT_FALSE(visible().contains("A01/2"));
    t.OneAxis = false;
    t.SetGroupFilter("b");
    EXPECT_EQ(visible().size(), 5);
    EXPECT_EQ(t.GetAnzGruppen(), 3);
    EXPECT_EQ(t.GetGruppe(2), QStringLiteral("C"));
    EXPECT_EQ(t.GroupFilter(), QStringLiteral("B")); // restored after counting
    t.SetGroupFilter(QString());
    t.OnFilterRecord = [this](int p, bool &accepted) { accepted = t.fGetGruppe(p) == "C"; };
    EXPECT_EQ(visible(), QStringList({"C10", "C11"}));
    EXPECT_EQ(t.GetParamName(1), QStringLiteral("Neun"));
    EXPECT_EQ(t.ValueByColName(0, "Datentyp"), QStringLiteral("10"));
    EXPECT_EQ(t.Koordinate(5), QString());
    EXPECT_EQ(t.ValueByKoordinate("a02", "1", "Name"), QStringLiteral("Strom"));
}

TEST_F(WerteTable, ExportWritesTitlesAllOrVisibleRowsAndAppends)
{
    t.SetFilter("(Datentyp=u16)");
    t.GetVisibleParamCount();
    const QString out = path("export.csv");
    ASSERT_TRUE(t.ExportAll(out, {tExp_ColTitles, tExp_OnlyVisibleRecs, tExp_rewrite}));
    EXPECT_EQ(test::readFile(out), QByteArray("\"name\";\"koordinate\";\"achse\";\"datentyp\";"
                                              "\"read-level\";\r\n\"Strom\";\"A02\";\"1\";"
                                              "\"U16\";\"3\";\r\n"));
    ASSERT_TRUE(t.ExportAll(out, {tExp_AllRecords}));
    const QList<QByteArray> lines = test::readFile(out).split('\n');
    EXPECT_EQ(lines.size(), 2 + 11 + 1);
    EXPECT_TRUE(lines.at(10).contains("\"Satz \xA7"
                                      "2\";")); // Windows-1252, appended
    ASSERT_TRUE(t.ExportAll(out, {tExp_ColTitlesOnly, tExp_rewrite}));
    EXPECT_EQ(test::readFile(out).count('\n'), 1);
    EXPECT_FALSE(t.ExportAll(path("no/such/dir/x.csv"), {tExp_AllRecords}));
    EXPECT_EQ(messages().size(), 1);
}

// The read level is read with the conversion that decides whether it is an integer.
TEST_F(WerteTable, HexadecimalReadLevelsCount)
{
    TWerteTable hex;
    hex.ImportTable(write("hex.csv", "Name;Koordinate;Achse;Read-Level\n"
                                     "Zehn;A01;1; $A \n"
                                     "Zwei;A02;1;0x2\n"
                                     "Text;A03;1;hoch\n"));
    hex.SetLevelFilter(2);
    ASSERT_EQ(hex.GetVisibleParamCount(), 2);
    EXPECT_EQ(hex.Koordinate(0), QStringLiteral("A02"));
    EXPECT_EQ(hex.Koordinate(1), QStringLiteral("A03")); // no integer: no level test
    hex.SetLevelFilter(10);
    EXPECT_EQ(hex.GetVisibleParamCount(), 3);
}
