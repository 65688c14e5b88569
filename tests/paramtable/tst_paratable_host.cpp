// The parameter table against the simulated drive: descriptions, values and help texts
// that come from the host, and the table's own selection and group look-ups.

#include "support/testing.h"

#include "SimulatedDrive.h"
#include "lang/wizSprache.h"
#include "paramtable/ParaTable.h"
#include "platform/messages.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTemporaryDir>
#include <QTextEdit>

using namespace drivewiz;

class ParaTableWithDrive : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(drive.load(test::sourcePath(QStringLiteral("data/sample/Parameter.csv"))));
        sim::SimulatedDrive::setCurrent(&drive);
        table.SetCallbacks(sim::SimulatedDrive::callbacks());
    }
    void TearDown() override { sim::SimulatedDrive::setCurrent(nullptr); }

    sim::SimulatedDrive drive;
    TParaTable table;
};

TEST_F(ParaTableWithDrive, DescriptionsArriveParameterByParameter)
{
    EXPECT_EQ(table.RowCount(), 0);
    quint32 address = 0;
    const int p = table.FindRecord(QStringLiteral("A34"), QStringLiteral("2"), address);
    ASSERT_GE(p, 0);
    EXPECT_EQ(address, drive.addressOf(QStringLiteral("A34"), 2));
    EXPECT_EQ(table.fGetParamName(p), QStringLiteral("Autostart"));
    EXPECT_EQ(table.fGetAchse(p), QStringLiteral("2"));
    const int rows = table.RowCount();
    const int calls = drive.callCount(sim::Callback::ParaInfo);
    EXPECT_GE(table.FindRecord(QStringLiteral("A34"), QStringLiteral("2"), address), 0);
    EXPECT_EQ(drive.callCount(sim::Callback::ParaInfo), calls); // known now
    // Parameters asked for in any order end up in coordinate order.
    table.FindRecord(QStringLiteral("A21"), QStringLiteral("0"), address);
    table.FindRecord(QStringLiteral("A00"), QStringLiteral("1"), address);
    EXPECT_EQ(table.RowCount(), rows + 2);
    EXPECT_EQ(table.fGetKoord(0), QStringLiteral("A00"));
    EXPECT_EQ(table.fGetKoord(table.RowCount() - 1), QStringLiteral("A34"));
    EXPECT_EQ(table.FindRecord(QStringLiteral("Z99"), QStringLiteral("1"), address), -1);
    ASSERT_EQ(test::recorder().messages().size(), 1); // the drive does not know Z99
    EXPECT_TRUE(test::recorder().messages()[0].contains(QStringLiteral("Koord:  Z99")));
}

// An axis written in hexadecimal names the same axis for the host as in decimal.
TEST_F(ParaTableWithDrive, HexadecimalAxisReachesTheHost)
{
    quint32 address = 0;
    table.FindRecord(QStringLiteral("A34"), QStringLiteral("$2"), address);
    EXPECT_EQ(address, drive.addressOf(QStringLiteral("A34"), 2));
}

TEST_F(ParaTableWithDrive, FreshValuesAndHelpTexts)
{
    const quint32 a21 = drive.addressOf(QStringLiteral("A21"));
    quint32 address = 0;
    const int p = table.FindRecord(QStringLiteral("A21"), QStringLiteral("1"), address);
    ASSERT_GE(p, 0);
    drive.setValue(a21, QStringLiteral("52.0"));
    EXPECT_EQ(table.GetRecNo(QStringLiteral("A21"), true), p);
    EXPECT_EQ(table.ValueByColName(p, QStringLiteral("Wert")), QStringLiteral("52.0"));
    const QByteArray rtf = table.GetRTFhelpstring(a21);
    ASSERT_TRUE(rtf.startsWith("{\\rtf"));
    QTextEdit view;
    table.SetRichEditCtrl(&view);
    table.ShowRTFHelpText(rtf, a21);
    EXPECT_TRUE(view.toPlainText().contains(QStringLiteral("Bremswiderstand")));
    EXPECT_EQ(view.focusPolicy(), Qt::NoFocus);
    drive.setHostility(sim::Callback::HelpText, sim::Hostility::NegativeLength);
    EXPECT_TRUE(table.GetRTFhelpstring(a21).isEmpty());
}

TEST(ParaTableSelections, EntriesAndKindsFromTheSampleDrive)
{
    TParaTable table;
    table.SetParamFileName(test::sourcePath(QStringLiteral("data/sample/Parameter.csv")));
    table.ReloadCSVFile();
    const int a20 = table.FindParam(QStringLiteral("A20"), QStringLiteral("0"));
    ASSERT_GE(a20, 0);
    EXPECT_TRUE(table.IstAuswahlParameter(a20));
    const QStringList entries = table.GetAuswahlListe(a20);
    ASSERT_GE(entries.size(), 2);
    EXPECT_EQ(entries[0], QStringLiteral("0: keiner"));
    EXPECT_EQ(table.CheckAuswahlTable(a20, QStringLiteral("1")), entries[1]);
    EXPECT_EQ(table.CheckAuswahlTable(a20, QStringLiteral("99: gibt es nicht")), QString());
    // "Art" must be exactly "1".
    table.SetValueByColName(a20, QStringLiteral("Art"), QStringLiteral(" 1"));
    EXPECT_FALSE(table.IstAuswahlParameter(a20));
    table.SetValueByColName(a20, QStringLiteral("Art"), QStringLiteral("01"));
    EXPECT_FALSE(table.IstAuswahlParameter(a20));
    EXPECT_EQ(test::recorder().messages(), QStringList());
}

TEST(ParaTableGroups, GroupTablesFromDescriptionsOrTheirFile)
{
    TParaTable table;
    table.SetParamFileName(test::sourcePath(QStringLiteral("data/sample/Parameter.csv")));
    table.ReloadCSVFile();
    table.UpdateGruppenCSVs(QStringLiteral("a"));
    const TImportTable *a = table.GruppenTable(QStringLiteral("A"));
    ASSERT_NE(a, nullptr);
    EXPECT_GT(a->RowCount(), 10);
    EXPECT_EQ(a->fGetParamName(0), table.fGetParamName(table.FindGruppe("A", QString())));
    EXPECT_EQ(test::recorder().messages(), QStringList());
    QTemporaryDir dir;
    test::writeFile(dir.filePath(QStringLiteral("Parameter.csv")),
                    test::readFile(table.FileNameParams()));
    test::writeFile(dir.filePath(QStringLiteral("Gruppe_P.csv")), "Koordinate;Wert\nP01;1\n");
    TParaTable other;
    other.SetParamFileName(dir.filePath(QStringLiteral("Parameter.csv")));
    other.ReloadCSVFile();
    other.UpdateGruppenCSVs(QStringLiteral("P"));
    EXPECT_EQ(test::recorder().messages(),
              QStringList({"Fehler in \"UpdateGruppenCSVs\": Spaltenstruktur unbekannt!"}));
}
