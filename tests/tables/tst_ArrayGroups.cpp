#include "tables_fixture.h"

#include "paramctrls/ArrayPara.h"
#include "platform/component.h"
#include "tables/ArrayGroups.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <zlib.h>

using namespace drivewiz;

class ArrayGroupForm : public TablesForm
{
protected:
    void SetUp() override
    {
        TablesForm::SetUp();
        group = makeGroup(QStringLiteral("K10,K11,K12"));
        for (const char *k : {"K10", "K11", "K12"})
            paras << makePara(QLatin1String(k));
        group->Loaded();
        messages();
    }

    TArrayGroup *makeGroup(const QString &list)
    {
        auto *g = new TArrayGroup(&form);
        g->setObjectName(QStringLiteral("AgTest"));
        g->SetParamList(list);
        g->SetwizParaSource(table);
        return g;
    }
    TArrayPara *makePara(const QString &koordinate)
    {
        auto *c = new TArrayPara(&form);
        c->setObjectName(QStringLiteral("P_") + koordinate);
        c->SetwizParaSource(table);
        c->SetwizArrayGroup(group);
        c->show();
        c->SetKoordinate(koordinate);
        return c;
    }
    QLineEdit *edit(int i) const { return qobject_cast<QLineEdit *>(paras[i]->GetEditControl()); }
    // Every value of the three arrays, to see that a failed import changed nothing.
    QStringList snapshot() const
    {
        QStringList out;
        for (const char *k : {"K10", "K11", "K12"})
            for (int i = 0; i < 6; ++i)
                out << wert(QStringLiteral("%1.%2").arg(QLatin1String(k)).arg(i));
        return out;
    }
    QString write(const QString &name, const QByteArray &bytes)
    {
        const QString p = path(name);
        drivewiz::test::writeFile(p, bytes);
        return p;
    }
    static quint32 zlibCrc(const std::vector<qint32> &values)
    {
        QByteArray bytes;
        for (qint32 v : values)
            for (int b = 0; b < 4; ++b)
                bytes += char(quint32(v) >> (8 * b));
        return quint32(crc32(0, reinterpret_cast<const Bytef *>(bytes.constData()), uInt(bytes.size())));
    }

    TArrayGroup *group = nullptr;
    QList<TArrayPara *> paras;
};

// --- length, stepping, controls ----------------------------------------------------------

TEST_F(ArrayGroupForm, StartsWithTheTablesLengthAndShowsElementZero)
{
    EXPECT_EQ(group->ArrayLen(), 4);
    EXPECT_EQ(group->Params(), QStringList({"K10", "K11", "K12"}));
    EXPECT_EQ(group->Controls().size(), 3);
    EXPECT_EQ(paras[0]->koordinateLabel()->text(), QStringLiteral("K10.0"));
    EXPECT_EQ(paras[0]->property("wizKoordinate").toString(), QStringLiteral("K10"));
    EXPECT_EQ(paras[1]->GetText(), QStringLiteral("10"));
    EXPECT_EQ(paras[0]->GetParamName(), QStringLiteral("Position"));

    auto *named = makePara(QStringLiteral("K11.3"));
    EXPECT_EQ(named->ArrayKoordinate(), QStringLiteral("K11"));
    named->SetKoordinate(QStringLiteral("1.K12"));
    EXPECT_EQ(named->ArrayKoordinate(), QStringLiteral("1.K12"));
    EXPECT_EQ(named->RecordName(2), QStringLiteral("1.K12.2"));

    auto *mixed = makeGroup(QStringLiteral("K10, K13"));
    mixed->Loaded();
    EXPECT_EQ(messages(), QStringList({"Error in TArrayGroup.InitArrayLength: Different arrays "
                                       "lengths occured:\r\rK10: Len=4\rK13: Len=5"}));
    EXPECT_EQ(mixed->ArrayLen(), 4);
}

TEST_F(ArrayGroupForm, SteppingStoresWhatWasTypedAndShowsTheNextElement)
{
    QSignalSpy changed(group, &TArrayGroup::arrayIndexChanged);
    int events = 0;
    group->OnChangeArrayIndex = [&events](QObject *) { ++events; };
    edit(0)->setFocus(Qt::TabFocusReason);
    edit(0)->selectAll();
    QTest::keyClicks(edit(0), QStringLiteral("150"));
    group->StepArrayIndex(1); // the field still has the focus
    EXPECT_EQ(wert(QStringLiteral("K10.0")), QStringLiteral("150"));
    EXPECT_EQ(group->ArrayIndex(), 1);
    EXPECT_EQ(paras[0]->koordinateLabel()->text(), QStringLiteral("K10.1"));
    EXPECT_EQ(paras[0]->GetText(), QStringLiteral("200"));
    EXPECT_TRUE(edit(0)->hasFocus()) << "the focus stays in the array's field";

    group->SetArrayIndex(99);
    EXPECT_EQ(group->ArrayIndex(), 3);
    group->StepArrayIndex(-10);
    EXPECT_EQ(group->ArrayIndex(), 0);
    EXPECT_EQ(paras[0]->GetText(), QStringLiteral("150"));
    EXPECT_EQ(changed.count(), 3);
    EXPECT_EQ(events, 3);
    group->SetArrayIndex(0);
    EXPECT_EQ(changed.count(), 3);
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(ArrayGroupForm, LengthChangesAreCheckedAskedAndMakeTheirRecords)
{
    group->SetArrayIndex(3);
    group->SetArrayLen(1);
    EXPECT_EQ(messages(), QStringList({"Array length must be at least 2 !!!"}));
    EXPECT_EQ(group->ArrayLen(), 4);

    QList<std::pair<int, int>> asked;
    bool allow = false;
    group->BeforeLengthChange = [&](QObject *sender, int oldLen, int newLen, bool &ok) {
        EXPECT_EQ(sender, group);
        asked << std::make_pair(oldLen, newLen);
        ok = allow;
    };
    group->SetArrayLen(6);
    EXPECT_EQ(group->ArrayLen(), 4);
    EXPECT_EQ(wert(QStringLiteral("K10.4")), QStringLiteral("<none>"));
    allow = true;
    QSignalSpy lengthChanged(group, &TArrayGroup::arrayLengthChanged);
    group->SetArrayLen(6);
    EXPECT_EQ(asked, (QList<std::pair<int, int>>{{4, 6}, {4, 6}}));
    EXPECT_EQ(group->ArrayLen(), 6);
    EXPECT_EQ(lengthChanged.count(), 1);
    EXPECT_EQ(wert(QStringLiteral("K10.5")), QStringLiteral("0")); // the default value
    EXPECT_EQ(wert(QStringLiteral("K12.16382")), QStringLiteral("6"));
    EXPECT_EQ(group->GetParaTableArrayLen(QStringLiteral("K11"), QStringLiteral("1")), 6);
    group->SetArrayIndex(5);
    EXPECT_EQ(paras[0]->koordinateLabel()->text(), QStringLiteral("K10.5"));

    group->SetArrayLen(3);
    EXPECT_EQ(group->ArrayIndex(), 2);
    EXPECT_EQ(paras[2]->koordinateLabel()->text(), QStringLiteral("K12.2"));
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(ArrayGroupForm, ElementAccessReportsUnknownElements)
{
    auto &rec = drivewiz::test::recorder();
    EXPECT_FALSE(paras[1]->GetArrayElement(7));
    ASSERT_FALSE(rec.entries().empty());
    EXPECT_EQ(rec.entries().back().kind, DialogRecorder::Kind::Message);
    // The coordinate runs straight into the element's text, misspelling and all.
    EXPECT_EQ(messages(), QStringList({"WizardError in TArrayPara.GetArrayElement\rControl name: "
                                       "P_K11\rKooridnate: K11Array-Element unknown (7)"}));
    EXPECT_EQ(paras[1]->Element(), 0);
    EXPECT_FALSE(paras[1]->SetArrayElement(7));
    EXPECT_EQ(messages(), QStringList({"TArrayPara.SetArrayElement: K11.7 unbekannt!"}));

    QString values;
    EXPECT_EQ(group->GetAllValues(0, values, QLatin1Char(',')), 4);
    EXPECT_EQ(values, QStringLiteral("100,200,300,400"));
    EXPECT_EQ(group->GetAllValues(3, values, QLatin1Char(',')), -1);
}

TEST_F(ArrayGroupForm, CopyRecordCopiesIntoTheCurrentElementButNotInReadBack)
{
    group->SetArrayIndex(1);
    EXPECT_TRUE(group->CopyRecord(3));
    EXPECT_EQ(wert(QStringLiteral("K10.1")), QStringLiteral("400"));
    EXPECT_EQ(wert(QStringLiteral("K11.1")), QStringLiteral("40"));
    EXPECT_EQ(paras[0]->GetText(), QStringLiteral("400"));

    table->SetOnline(omRueckdoku);
    EXPECT_FALSE(group->CopyRecord(0));
    EXPECT_EQ(messages(),
              QStringList({"\"CopyRecord\" not available with reverse documentation!"}));
    EXPECT_EQ(wert(QStringLiteral("K10.1")), QStringLiteral("400"));
}

// --- the drive ------------------------------------------------------------------------------

TEST_F(ArrayGroupForm, ArraysGoToTheDriveAndComeBack)
{
    goOnline();
    drive.clearLog();
    setWert(QStringLiteral("K11.2"), QStringLiteral("33"));
    EXPECT_TRUE(group->StoreArraysInTool());
    const QStringList log = drive.log();
    EXPECT_EQ(log.size(), 12);
    EXPECT_TRUE(log.contains(QStringLiteral("K11.2 (1) = 33"))) << log.join('\n').toStdString();

    drive.setValue(drive.addressOf(QStringLiteral("K10.3"), 1), QStringLiteral("-7"));
    EXPECT_TRUE(group->UpdateArraysFromTool());
    EXPECT_EQ(wert(QStringLiteral("K10.3")), QStringLiteral("-7"));
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(ArrayGroupForm, AMissingRecordStopsTheTransfer)
{
    goOnline();
    auto *ghost = makeGroup(QStringLiteral("K10,K13"));
    {
        FormLoadScope loading;
        auto *g = new TArrayGroup(&form);
        ghost->deleteLater();
        ghost = g;
        g->SetParamList(QStringLiteral("K13,K10"));
        g->SetArrayLen(5); // K10 has only four elements
        g->SetwizParaSource(table);
    }
    drive.clearLog();
    EXPECT_FALSE(ghost->StoreArraysInTool());
    EXPECT_EQ(messages(), QStringList({"Error in TArrayGroup.StoreArraysInTool: \"K10.4\" not "
                                       "found!\rParameter transfer for the rest of this array "
                                       "group aborted!"}));
    EXPECT_EQ(drive.log().size(), 5 + 4);
}

// --- export, import, checksum ---------------------------------------------------------------

TEST_F(ArrayGroupForm, ExportWritesATitleLineAndOneLinePerElement)
{
    const QString file = path(QStringLiteral("out.csv"));
    ASSERT_TRUE(group->ExportCSV(file));
    EXPECT_EQ(drivewiz::test::readFile(file), QByteArray("Index;K10;K11;K12\r\n0;100;10;5\r\n"
                                                        "1;200;20;5\r\n2;300;30;5\r\n3;400;40;5\r\n"));
    EXPECT_EQ(group->LastExportFile(), file);
    ASSERT_TRUE(group->ExportCSV(file, QLatin1Char(',')));
    EXPECT_TRUE(drivewiz::test::readFile(file).startsWith("Index,K10,K11,K12\r\n0,100,10,5\r\n"));

    // An array without a record for an element leaves the field empty.
    TArrayGroup *sparse = nullptr;
    {
        FormLoadScope loading;
        sparse = new TArrayGroup(&form);
        sparse->SetParamList(QStringLiteral("K10,K99,K11"));
        sparse->SetArrayLen(2);
        sparse->SetwizParaSource(table);
    }
    ASSERT_TRUE(sparse->ExportCSV(file));
    EXPECT_EQ(drivewiz::test::readFile(file),
              QByteArray("Index;K10;K99;K11\r\n0;100;;10\r\n1;200;;20\r\n"));
}

TEST_F(ArrayGroupForm, TheFileIsChosenInADialogAndRemembered)
{
    auto &rec = drivewiz::test::recorder();
    rec.answer(QString()); // cancelled
    EXPECT_FALSE(group->ExportCSV(QString()));
    rec.answer(path(QStringLiteral("chosen")));
    EXPECT_TRUE(group->ExportCSV(QString()));
    const auto &e = rec.entries();
    ASSERT_EQ(e.size(), 2u);
    EXPECT_EQ(e[1].kind, DialogRecorder::Kind::SaveFile);
    EXPECT_EQ(e[1].text, QStringLiteral("Export..."));
    EXPECT_EQ(e[1].caption, QStringLiteral("CSV-Dateien (*.csv *.CSV);;Text-Dateien (*.txt *.TXT);;"
                                           "Alle Dateien (*.*)"));
    const QString saved = path(QStringLiteral("chosen.csv")); // the default extension
    EXPECT_TRUE(QFile::exists(saved));
    EXPECT_EQ(group->LastExportFile(), saved);
    EXPECT_TRUE(drivewiz::test::readFile(dir.filePath(QStringLiteral("WizLingua/wiz.cfg")))
                    .contains("LastExpFile_AgTest="));

    rec.answer(saved);
    setWert(QStringLiteral("K10.0"), QStringLiteral("1"));
    EXPECT_TRUE(group->ImportCSV(QString(), QChar(), true));
    EXPECT_EQ(rec.entries().back().kind, DialogRecorder::Kind::OpenFile);
    EXPECT_EQ(rec.entries().back().text, QStringLiteral("Import..."));
    EXPECT_EQ(wert(QStringLiteral("K10.0")), QStringLiteral("100"));
}

TEST_F(ArrayGroupForm, RoundTripKeepsEveryValueAndTheChecksum)
{
    setWert(QStringLiteral("K10.1"), QStringLiteral("-99999"));
    setWert(QStringLiteral("K11.3"), QStringLiteral("0"));
    const QStringList before = snapshot();
    const quint32 crc = group->CalcCRC32(100);
    const QString file = path(QStringLiteral("round.csv"));
    ASSERT_TRUE(group->ExportCSV(file));
    for (const char *k : {"K10.0", "K10.1", "K11.2", "K12.3"})
        setWert(QLatin1String(k), QStringLiteral("1"));
    EXPECT_NE(group->CalcCRC32(100), crc);
    ASSERT_TRUE(group->ImportCSV(file));
    EXPECT_EQ(snapshot(), before);
    EXPECT_EQ(group->CalcCRC32(100), crc);
    EXPECT_EQ(paras[0]->GetText(), QStringLiteral("100"));
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(ArrayGroupForm, ChecksumIsTheCrcOfTheValuesWhateverTheirText)
{
    EXPECT_EQ(group->CalcCRC32(4), zlibCrc({100, 200, 300, 400, 10, 20, 30, 40, 5, 5, 5, 5}));
    EXPECT_EQ(group->CalcCRC32(2), zlibCrc({100, 200, 10, 20, 5, 5}));
    EXPECT_EQ(group->CalcCRC32(0), 0u);
    const quint32 crc = group->CalcCRC32(4);
    setWert(QStringLiteral("K10.0"), QStringLiteral(" 100"));
    setWert(QStringLiteral("K10.1"), QStringLiteral("200.0"));
    setWert(QStringLiteral("K10.2"), QStringLiteral("300.4"));
    setWert(QStringLiteral("K10.3"), QStringLiteral("110010000bin"));
    EXPECT_EQ(group->CalcCRC32(4), crc);
    // An empty value counts as 0. (Element 0 is what the controls show: they would put
    // their text back first.)
    setWert(QStringLiteral("K11.1"), QString());
    EXPECT_EQ(group->CalcCRC32(2), zlibCrc({100, 200, 10, 0, 5, 5}));
}

// Checksum and export keep the values they read until a cell changes, whoever changes it.
TEST_F(ArrayGroupForm, ChecksumAndExportFollowEveryChangeOfAValue)
{
    const QString file = path(QStringLiteral("follow.csv"));
    const auto exported = [&] {
        EXPECT_TRUE(group->ExportCSV(file));
        return drivewiz::test::readFile(file);
    };
    EXPECT_EQ(group->CalcCRC32(4), zlibCrc({100, 200, 300, 400, 10, 20, 30, 40, 5, 5, 5, 5}));
    EXPECT_TRUE(exported().contains("\r\n1;200;20;5\r\n"));

    // Read from the drive, typed into a control (not yet left: both store what the
    // controls show first), written into the table, brought by a longer length.
    goOnline();
    drive.setValue(drive.addressOf(QStringLiteral("K12.2"), 1), QStringLiteral("-2147483648"));
    EXPECT_TRUE(group->UpdateArraysFromTool());
    EXPECT_TRUE(exported().contains("\r\n2;300;30;-2147483648\r\n"));
    goOnline(omOffline);
    edit(1)->setText(QStringLiteral("11"));
    EXPECT_EQ(group->CalcCRC32(1), zlibCrc({100, 11, 5}));
    group->SetArrayIndex(1);
    edit(2)->setText(QStringLiteral("-6"));
    EXPECT_TRUE(exported().contains("\r\n0;100;11;5\r\n1;200;20;-6\r\n"));
    setWert(QStringLiteral("K10.3"), QStringLiteral("4294967295"));
    EXPECT_TRUE(exported().contains("\r\n3;4294967295;40;5\r\n"));
    EXPECT_EQ(group->CalcCRC32(4),
              zlibCrc({100, 200, 300, -1, 11, 20, 30, 40, 5, -6, INT32_MIN, 5}));
    group->SetArrayLen(5);
    EXPECT_EQ(group->CalcCRC32(5), zlibCrc({100, 200, 300, -1, 0, 11, 20, 30, 40, 0, 5, -6,
                                            INT32_MIN, 5, 0}));

    // Text that is not the plain number it stands for goes out as it was written.
    setWert(QStringLiteral("K10.0"), QStringLiteral("007"));
    setWert(QStringLiteral("K11.3"), QStringLiteral("+5"));
    setWert(QStringLiteral("K10.2"), QStringLiteral("1Fhex"));
    setWert(QStringLiteral("K10.4"), QStringLiteral("4294967296"));
    setWert(QStringLiteral("K11.4"), QStringLiteral("-0"));
    EXPECT_EQ(exported(), QByteArray("Index;K10;K11;K12\r\n0;007;11;5\r\n1;200;20;-6\r\n"
                                     "2;1Fhex;30;-2147483648\r\n3;4294967295;+5;5\r\n"
                                     "4;4294967296;-0;0\r\n"));
    EXPECT_EQ(group->CalcCRC32(5), zlibCrc({7, 200, 31, -1, 0, 11, 20, 30, 5, 0, 5, -6,
                                            INT32_MIN, 5, 0}));
    // A separator that numbers are written with reads every cell as text.
    ASSERT_TRUE(group->ExportCSV(file, QLatin1Char('-')));
    EXPECT_TRUE(drivewiz::test::readFile(file).contains("\r\n1-200-20-\"-6\"\r\n"));
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(ArrayGroupForm, HostileImportsChangeNothingAndSayWhere)
{
    const struct
    {
        const char *content;
        const char *where;
    } cases[] = {
        {"Index;K10;K11;K12\r\n0;1;2;3\r\n1;1;2\r\n", "Zeile 3, Spalte 4: zu wenige Werte"},
        {"Index;K10;K11;K12\r\n0;1;2;3;4\r\n", "Zeile 2, Spalte 5: zu viele Werte"},
        {"Index;K10;K77\r\n0;1;2\r\n", "Zeile 1, Spalte 3: Koordinate \"K77\" gehört nicht"},
        {"Index;K10;k10\r\n0;1;2\r\n", "Zeile 1, Spalte 3: Koordinate \"k10\" kommt doppelt"},
        {"Nr;K10\r\n0;1\r\n", "Zeile 1, Spalte 1: \"Index\" erwartet"},
        {"Index;K10;K11\r\n0;1;2\r\n1;x1;2\r\n", "Zeile 3, Spalte 2: \"x1\" ist keine Zahl (K10)"},
        {"Index;K11\r\n0;1\r\n1;6001\r\n", "Zeile 3, Spalte 2: 6001 liegt ausserhalb der Grenzen"},
        {"Index;K11\r\n0;1\r\n1;2.5\r\n2;3\r\n", ""}, // rounds: accepted, checked below
        {"Index;K10\r\n0;1\r\n0;2\r\n", "Zeile 3, Spalte 1: Index 0 kommt doppelt vor"},
        {"Index;K10\r\n0;1\r\n5;2\r\n", "Zeile 3, Spalte 1: Index 5 ausserhalb"},
        {"Index;K10\r\nabc;1\r\n", "Zeile 2, Spalte 1: Index \"abc\" ist keine ganze Zahl"},
        {"Index;K10\r\n\r\n", "die Datei enthält keine Elemente"},
        {"", "Zeile 0"},
    };
    const QStringList before = snapshot();
    for (const auto &c : cases) {
        if (!*c.where) continue;
        const QString file = write(QStringLiteral("bad.csv"), c.content);
        EXPECT_FALSE(group->ImportCSV(file)) << c.content;
        const QStringList m = messages();
        ASSERT_EQ(m.size(), 1) << c.content;
            EXPECT_TRUE(m[0].startsWith(QStringLiteral("Import abgebrochen, nichts wurde geändert: ")))
            << m[0].toStdString();
        if (QByteArray(c.where) != "Zeile 0") {
            EXPECT_TRUE(m[0].contains(QString::fromUtf8(c.where))) << m[0].toStdString();
        }
        EXPECT_EQ(snapshot(), before) << c.content;
        EXPECT_EQ(group->ArrayLen(), 4);
    }

    QByteArray huge = "Index;K10\r\n0;";
    huge += QByteArray(10 * 1024 * 1024, '7');
    EXPECT_FALSE(group->ImportCSV(write(QStringLiteral("huge.csv"), huge)));
    const QStringList m = messages();
    ASSERT_EQ(m.size(), 1);
    EXPECT_TRUE(m[0].contains(QStringLiteral("Zeile 2: die Zeile ist länger als"))) << m[0].toStdString();
    EXPECT_FALSE(group->ImportCSV(path(QStringLiteral("missing.csv"))));
    EXPECT_TRUE(messages()[0].contains(QStringLiteral("kann nicht gelesen werden")));
    EXPECT_EQ(snapshot(), before);
}

TEST_F(ArrayGroupForm, ImportsAcceptWhatSpreadsheetsWrite)
{
    // Any column order, a subset of the arrays, quotes, blanks, decimal commas, indexes
    // in any order, trailing separators and empty lines; an empty field keeps its value.
    const QString file = write(QStringLiteral("sheet.csv"),
                               "\xEF\xBB\xBF\"Index\";\"K12\";K10;;\r\n"
                               "3; 7 ;\"-4\";;\r\n"
                               "1;8;;\r\n"
                               "\r\n"
                               "0;9;1,0\n"
                               "2;10;2\r\n");
    ASSERT_TRUE(group->ImportCSV(file)) << messages().join('|').toStdString();
    EXPECT_EQ(wert(QStringLiteral("K12.3")), QStringLiteral("7"));
    EXPECT_EQ(wert(QStringLiteral("K10.3")), QStringLiteral("-4"));
    EXPECT_EQ(wert(QStringLiteral("K10.1")), QStringLiteral("200"));
    EXPECT_EQ(wert(QStringLiteral("K10.0")), QStringLiteral("1,0"));
    EXPECT_EQ(wert(QStringLiteral("K11.2")), QStringLiteral("30"));

    const QString commas = write(QStringLiteral("commas.csv"), "Index,K11\n0,1\n1,2\n2,3\n3,4\n");
    ASSERT_TRUE(group->ImportCSV(commas));
    EXPECT_EQ(wert(QStringLiteral("K11.3")), QStringLiteral("4"));
}

TEST_F(ArrayGroupForm, ALengthChangeByImportIsAskedAndOnlineRefused)
{
    const QString six = write(QStringLiteral("six.csv"), "Index;K10;K11;K12\r\n0;1;1;1\r\n1;2;2;2\r\n"
                                                         "2;3;3;3\r\n3;4;4;4\r\n4;5;5;5\r\n5;6;6;6\r\n");
    group->BeforeLengthChange = [](QObject *, int, int, bool &allow) { allow = false; };
    const QStringList before = snapshot();
    EXPECT_FALSE(group->ImportCSV(six));
    EXPECT_EQ(messages().size(), 1);
    EXPECT_EQ(snapshot(), before);

    group->BeforeLengthChange = nullptr;
    goOnline();
    EXPECT_FALSE(group->ImportCSV(six));
    EXPECT_EQ(messages(), QStringList({"Der Import im Online-Betrieb ist nur bei gleicher "
                                       "Array-Länge gestattet."}));
    EXPECT_EQ(snapshot(), before);

    table->SetOnline(omOffline);
    EXPECT_TRUE(group->ImportCSV(six));
    EXPECT_EQ(group->ArrayLen(), 6);
    EXPECT_EQ(wert(QStringLiteral("K12.5")), QStringLiteral("6"));
    EXPECT_FALSE(group->ImportCSV(write(QStringLiteral("one.csv"), "Index;K10\r\n0;1\r\n")));
    EXPECT_EQ(messages(), QStringList({"Array length must be at least 2 !!!"}));
}

TEST_F(ArrayGroupForm, OnlineImportOfEqualLengthGoesToTheDrive)
{
    goOnline();
    drive.clearLog();
    ASSERT_TRUE(group->ImportCSV(write(QStringLiteral("four.csv"), "Index;K11\r\n0;1\r\n1;2\r\n2;3\r\n3;4\r\n")));
    EXPECT_TRUE(drive.log().contains(QStringLiteral("K11.3 (1) = 4")));
    EXPECT_EQ(drive.value(drive.addressOf(QStringLiteral("K11.1"), 1)), QStringLiteral("2"));
}

TEST_F(ArrayGroupForm, AnonymousFilesAreReadByPosition)
{
    ASSERT_TRUE(group->ImportAnonymousCSV(write(QStringLiteral("a1.csv"), "1;2;3\r\n4;5;6\r\n7;8;9\r\n10;11;12\r\n")));
    EXPECT_EQ(wert(QStringLiteral("K10.3")), QStringLiteral("10"));
    EXPECT_EQ(wert(QStringLiteral("K12.0")), QStringLiteral("3"));
    ASSERT_TRUE(group->ImportAnonymousCSV(write(QStringLiteral("a2.csv"),
                                                "Nr;A;B;C\r\n1;0;0;0\r\n0;1;1;1\r\n3;3;3;3\r\n2;2;2;2\r\n")));
    EXPECT_EQ(wert(QStringLiteral("K11.0")), QStringLiteral("1"));
    EXPECT_EQ(wert(QStringLiteral("K11.1")), QStringLiteral("0"));
    EXPECT_FALSE(group->ImportAnonymousCSV(write(QStringLiteral("a3.csv"), "1;2\r\n3;4\r\n")));
    EXPECT_TRUE(messages()[0].contains(QStringLiteral("Zeile 1, Spalte 1: 3 Spalten erwartet")));

    goOnline();
    EXPECT_FALSE(group->ImportAnonymousCSV(write(QStringLiteral("a4.csv"), "1;2;3\r\n4;5;6\r\n")));
    EXPECT_EQ(messages(), QStringList({"Der Import im Online-Betrieb ist nur bei gleicher "
                                       "Array-Länge gestattet."}));
}

TEST_F(ArrayGroupForm, ReadOnlyArraysTakeNothingFromAFile)
{
    auto *readOnly = makeGroup(QStringLiteral("K10"));
    table->SetMaxRLevel(0);
    EXPECT_FALSE(readOnly->ImportCSV(write(QStringLiteral("ro.csv"), "Index;K10\r\n0;1\r\n1;2\r\n")));
    EXPECT_TRUE(messages()[0].contains(QStringLiteral("K10 ist schreibgeschützt")));
}
