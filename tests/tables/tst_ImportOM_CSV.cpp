#include "tables_fixture.h"

#include "tables/ImportOM_CSV.h"

#include <QSignalSpy>

using namespace drivewiz;

class MeasurementImport : public TablesForm
{
protected:
    void SetUp() override
    {
        TablesForm::SetUp();
        om = new TImportOM_CSV(&form);
        om->SetwizParaSource(table);
    }
    bool load(const QByteArray &bytes)
    {
        const QString file = path(QStringLiteral("m.csv"));
        drivewiz::test::writeFile(file, bytes);
        return om->LoadFromFile(file);
    }
    std::vector<double> y(int c) const { return om->YValues(c); }

    TImportOM_CSV *om = nullptr;
};

TEST_F(MeasurementImport, SemicolonFileWithDecimalCommasUnitLineAndSamplingTime)
{
    ASSERT_TRUE(load("# recorded by the drive\r\n"
                     "Abtastzeit: 2 ms\r\n"
                     "\r\n"
                     "Zeit;E08;Temperatur [\xB0" "C];A11\r\n"
                     "ms;U/min;;\r\n"
                     "0;1500,5;20;-1\r\n"
                     "2;1501;20,5;1\r\n"
                     "4;-3;21;0\r\n"))
        << messages().join('|').toStdString();
    EXPECT_EQ(om->SampleCount(), 3);
    EXPECT_EQ(om->ChannelCount(), 3);
    EXPECT_EQ(om->XValues(), std::vector<double>({0, 2, 4}));
    EXPECT_EQ(om->XTitle(), QStringLiteral("Zeit"));
    EXPECT_EQ(om->XUnit(), QStringLiteral("ms"));
    EXPECT_EQ(om->SamplingTime(), 2);
    const auto &e08 = om->GetChannel(0);
    EXPECT_EQ(e08.koordinate, QStringLiteral("E08"));
    EXPECT_EQ(e08.name, QStringLiteral("Drehzahl")); // from the parameter table
    EXPECT_EQ(e08.unit, QStringLiteral("rpm"));      // the table's unit wins
    EXPECT_EQ(y(0), std::vector<double>({1500.5, 1501, -3}));
    EXPECT_EQ(om->YMin(0), -3);
    EXPECT_EQ(om->YMax(0), 1501);
    EXPECT_EQ(om->GetChannel(1).name, QStringLiteral("Temperatur"));
    EXPECT_EQ(om->GetChannel(1).unit, QString::fromUtf8("°C"));
    EXPECT_EQ(om->GetChannel(2).name, QStringLiteral("Sollwert"));
}

TEST_F(MeasurementImport, CommaTabUtf8AndFilesWithoutTimeColumn)
{
    ASSERT_TRUE(load("\xEF\xBB\xBFTime [s],2.E08 [U/min],Strom \xC2\xB5" "A [A]\n0.5,1,2\n1.0,3,4\n"));
    EXPECT_EQ(om->XUnit(), QStringLiteral("s"));
    EXPECT_EQ(om->GetChannel(0).koordinate, QStringLiteral("2.E08"));
    EXPECT_EQ(om->GetChannel(1).name, QString::fromUtf8("Strom µA"));
    EXPECT_EQ(y(1), std::vector<double>({2, 4}));

    ASSERT_TRUE(load("t\tA\tB\n0\t1,5\t\"2\"\n1\t2.5\t3\n"));
    EXPECT_EQ(y(0), std::vector<double>({1.5, 2.5}));
    EXPECT_EQ(y(1), std::vector<double>({2, 3}));

    ASSERT_TRUE(load("Sampling time;0.5;ms\r\nE08;A11\r\n1;2\r\n3;4\r\n5;6\r\n"));
    EXPECT_EQ(om->ChannelCount(), 2);
    EXPECT_EQ(om->XValues(), std::vector<double>({0, 0.5, 1}));
    EXPECT_EQ(om->XUnit(), QStringLiteral("ms"));

    ASSERT_TRUE(load("Abtastzeit [ms];1\r\nZeit [s];A\r\n0;1\r\n0.001;2\r\n"));
    EXPECT_DOUBLE_EQ(om->SamplingTime(), 0.001); // in the time column's unit
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(MeasurementImport, BrokenFilesKeepThePreviousMeasurementAndNameTheLine)
{
    ASSERT_TRUE(load("t;A\r\n0;1\r\n1;2\r\n"));
    messages();
    const struct
    {
        const char *content;
        const char *why;
    } cases[] = {
        {"t;A;B\r\n0;1;2\r\n1;x;2\r\n", "Zeile 3, Spalte 2: \"x\" ist keine Zahl"},
        {"t;A;B\r\n0;1;2\r\n1;2\r\n", "Zeile 3, Spalte 3: zu wenige Werte"},
        {"t;A;B\r\n0;1;2;3\r\n", "Zeile 2, Spalte 4: zu viele Werte"},
        {"t;A\r\n5;1\r\n4;1\r\n", "Zeile 3, Spalte 1: die Zeit nimmt ab"},
        {"t;A\r\n", "die Datei enthält keine Messwerte"},
        {"# nur Kommentar\r\n\r\n", "die Datei hat keine Titelzeile"},
        {"Zeit\r\n0\r\n", "Zeile 1, Spalte 2: keine Messkanäle"},
        {"t;A\r\n0;1;\r\n1;;\r\n", "Zeile 3, Spalte 2: \"\" ist keine Zahl"},
        {"t;A\r\n0;1e400\r\n", "Zeile 2, Spalte 2"},
    };
    for (const auto &c : cases) {
        EXPECT_FALSE(load(c.content)) << c.content;
        const QStringList m = messages();
        ASSERT_EQ(m.size(), 1) << c.content;
        EXPECT_TRUE(m[0].contains(QString::fromUtf8(c.why))) << m[0].toStdString();
        EXPECT_EQ(om->SampleCount(), 2);
        EXPECT_EQ(y(0), std::vector<double>({1, 2}));
    }
    QByteArray huge = "t;A\r\n0;";
    huge += QByteArray(10 * 1024 * 1024, '1');
    EXPECT_FALSE(load(huge));
    EXPECT_TRUE(messages()[0].contains(QStringLiteral("Zeile 2: die Zeile ist länger")));
    EXPECT_FALSE(om->LoadFromFile(path(QStringLiteral("none.csv"))));
    EXPECT_EQ(messages().size(), 1);
    EXPECT_EQ(om->SampleCount(), 2);
}

TEST_F(MeasurementImport, ChannelsScaleToCountsOrToPlusMinusOne)
{
    ASSERT_TRUE(load("t;E08;X\r\n0;1500;-4\r\n1;-3000;2\r\n"));
    EXPECT_DOUBLE_EQ(om->GetValueAt16384LSB(0), 12000); // "4096 = 3000 rpm"
    EXPECT_TRUE(om->CanNormalize(0, TImportOM_CSV::nm16384LSB));
    EXPECT_EQ(om->Normalized(0, TImportOM_CSV::nm16384LSB), std::vector<double>({2048, -4096}));
    EXPECT_EQ(om->Normalized(0, TImportOM_CSV::nmUnit), std::vector<double>({0.5, -1}));
    EXPECT_FALSE(om->CanNormalize(1, TImportOM_CSV::nm16384LSB));
    EXPECT_TRUE(om->Normalized(1, TImportOM_CSV::nm16384LSB).empty());
    EXPECT_EQ(om->NormalizedValue(1, 0, TImportOM_CSV::nm16384LSB), -4); // stays raw
    EXPECT_EQ(om->Normalized(1, TImportOM_CSV::nmUnit), std::vector<double>({-1, 0.5}));
    EXPECT_EQ(om->SampleAt(0.4), 0);
    EXPECT_EQ(om->SampleAt(0.6), 1);
    EXPECT_EQ(om->SampleAt(99), 1);

    // Without a table the channel keeps the file's name and has no scaling.
    TImportOM_CSV alone;
    ASSERT_TRUE(alone.LoadFromBytes("t;E08\r\n0;1\r\n", QStringLiteral("bytes")));
    EXPECT_EQ(alone.GetChannel(0).name, QStringLiteral("E08"));
    EXPECT_FALSE(alone.CanNormalize(0, TImportOM_CSV::nm16384LSB));
}
