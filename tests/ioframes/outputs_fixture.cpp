#include "outputs_fixture.h"

#include "host/wizFormLoader.h"
#include "lang/wizSprache.h"
#include "paramtable/coordinates.h"
#include "platform/convert.h"

#include <QComboBox>
#include <QDir>

using namespace drivewiz;

namespace {

const std::vector<OutputsForm::Row> &baseRows()
{
    using R = OutputsForm::Row;
    static const std::vector<R> rows = {
        // output sources
        R{"Drehzahl Regelabweichung", "E14", 1, "0", 0, "I16", "Upm", 1, "3000", "-3000", 0, 0,
          "16384 = 3000 Upm"},
        R{"Drehzahl Regelabweichung", "E14", 2, "0", 0, "I16", "Upm", 1, "3000", "-3000", 0, 0,
          "16384 = 3000 Upm"},
        R{"Motorstrom", "E00", 1, "1.25", 0, "I16", "A", 1, "40.00", "-40.00", 2, 0,
          "16384 = 20 A"},
        R{"Drehzahl Istwert", "E08", 1, "1480", 0, "I16", "Upm", 1, "12000", "-12000", 0, 3},
        R{"Drehmoment", "E02", 1, "1.12", 0, "I16", "Nm", 1, "50.00", "-50.00", 2, 7},
        R{"Drehzahl Sollwert", "E09", 1, "1500", 0, "I16", "Upm", 1, "12000", "-12000", 0, 0},
        R{"Position Istwert", "E05", 1, "125.4", 0, "I32", "mm", 1, "1000", "-1000", 1, 3,
          "16384 = 10 mm"},
        R{"Zwischenkreisspannung", "E03", 0, "565", 0, "U16", "V", 1, "1000", "0", 0, 0,
          "16384 = 1000 V"},
        R{"Geheimer Wert", "E04", 1, "0", 0, "I16", "A", 4, "10", "-10", 1, 0, "16384 = 10 A"},
        R{"Kaputte Skalierung", "E06", 1, "0", 0, "I16", "A", 1, "10", "-10", 1, 0, "x = 10 A"},
        R{"Null-Skalierung", "E07", 1, "0", 0, "I16", "A", 1, "10", "-10", 1, 0, "30 A"},
        // binary signals
        R{"Betriebsbereit", "E17", 1, "1", 0, "B", "", 1, "1", "0"},
        R{"Betriebsbereit", "E17", 2, "1", 0, "B", "", 1, "1", "0"},
        R{"Störung aktiv", "E18", 1, "0", 0, "B", "", 3, "1", "0"},
        R{"Störung aktiv", "E18", 2, "0", 0, "B", "", 3, "1", "0"},
        R{"Drehzahl erreicht", "E20", 1, "1", 0, "B", "", 1, "1", "0"},
        R{"Bremse", "E21", 1, "0", 0, "U8", "", 1, "1", "0"},
        R{"Zähler", "E22", 1, "7", 0, "U8", "", 1, "28", "0"},
        R{"Service-Bit", "E23", 1, "0", 0, "B", "", 4, "1", "0"},
        R{"Zustand", "E24", 1, "0: LOW", 1, "B", "", 1, "1", "0"},
        // the outputs
        R{"Analogausgang 1 Quelle", "F40", 0, "E14", 6, "U32", "", 2},
        R{"Analogausgang 1 Offset", "F41", 0, "0.00", 0, "I16", "V", 2, "10.00", "-10.00", 2},
        R{"Analogausgang 1 Faktor", "F42", 0, "100.0", 0, "I16", "%", 2, "1000.0", "-1000.0", 1},
        R{"Analogausgang 1 Filterzeit", "F43", 0, "10", 0, "U16", "ms", 2, "1000", "0"},
        R{"Analogausgang 1 Betrag", "F44", 0, "0: aus", 1, "U8", "", 2, "1", "0"},
        R{"Analogausgang 2 Quelle", "F50", 0, "E00", 6, "U32", "", 2},
        R{"Analogausgang 2 Offset", "F51", 0, "0.00", 0, "I16", "V", 2, "10.00", "-10.00", 2},
        R{"Analogausgang 2 Faktor", "F52", 0, "100.0", 0, "I16", "%", 2, "1000.0", "-1000.0", 1},
        R{"Analogausgang 2 Filterzeit", "F53", 0, "20", 0, "U16", "ms", 2, "1000", "0"},
        R{"Analogausgang 2 Betrag", "F54", 0, "0: aus", 1, "U8", "", 2, "1", "0"},
        R{"Quelle BA1", "F61", 0, "E17", 6, "U32"},
        R{"Quelle BA2", "F62", 0, "E18", 6, "U32"},
        R{"Quelle BA3", "F63", 0, "2.E17", 6, "U32"},
        R{"Quelle BA4", "F64", 0, "E20", 6, "U32"},
        R{"Quelle BA5", "F65", 0, "E17", 6, "U32"},
        R{"Quelle BA6", "F66", 0, "E17", 6, "U32"},
        R{"Quelle BA7", "F67", 0, "E17", 6, "U32"},
        R{"Quelle BA8", "F68", 0, "E17", 6, "U32"},
        R{"Quelle BA9", "F69", 0, "E17", 6, "U32"},
        R{"Quelle BA10", "F70", 0, "E17", 6, "U32"},
        // scaling references
        R{"Bezugsdrehzahl", "R04", 0, "3000", 0, "U16", "Upm", 1, "12000", "100"},
        R{"Nennleistung", "B11", 1, "1.10", 0, "R64", "kW", 1, "100.00", "0.01", 2},
        R{"Nenndrehzahl", "B13", 1, "3000", 0, "U16", "Upm", 1, "12000", "0"},
        R{"Nennmoment", "B17", 1, "3.50", 0, "R64", "Nm", 1, "500.00", "0.01", 2},
        R{"Motortyp", "B20", 1, "64", 0, "U8", "", 1, "65", "1"},
        R{"Motorencoder", "B26", 1, "2: X4", 1, "U8", "", 1, "4", "0"},
        // hardware
        R{"Gerätefamilie", "E50", 0, "VKP 4102", 2, "STR16"},
        R{"Optionsplatine oben", "E54", 0, "", 2, "STR16"},
        R{"Optionsplatine unten", "E58", 0, "KBQ 7700", 2, "STR16"},
        // encoders
        R{"X4 Funktion", "H00", 1, "0: inaktiv", 1, "U8", "", 1, "65", "0"},
        R{"X4 Strichzahl", "H01", 1, "2048", 0, "U16", "Ink/U", 1, "16384", "1"},
        R{"X4 Drehrichtung", "H02", 1, "0: normal", 1, "U8", "", 1, "1", "0"},
        R{"X4 SSI-Code", "H05", 1, "1: Gray", 1, "U8", "", 1, "1", "0"},
        R{"X4 SSI-Datenbits", "H06", 1, "25: 25 Bit", 1, "U8", "", 1, "25", "13"},
        R{"X4 Geberversorgung", "H10", 1, "0: 5 V", 1, "U8", "", 1, "2", "0"},
        R{"BE-Encoder Funktion", "H40", 1, "0: inaktiv", 1, "U8", "", 1, "2", "0"},
        R{"BE-Encoder Strichzahl", "H41", 1, "1024", 0, "U16", "Ink/U", 1, "16384", "1"},
        R{"BE-Encoder Drehrichtung", "H42", 1, "0: normal", 1, "U8", "", 1, "1", "0"},
        R{"X120 Funktion", "H120", 1, "0: inaktiv", 1, "U8", "", 1, "82", "0"},
        R{"X120 Strichzahl", "H121", 1, "4096", 0, "U16", "Ink/U", 1, "16384", "1"},
        R{"X120 Drehrichtung", "H122", 1, "0: normal", 1, "U8", "", 1, "1", "0"},
        R{"X120 SSI-Code", "H125", 1, "1: Gray", 1, "U8", "", 1, "1", "0"},
        R{"X120 SSI-Taktfrequenz", "H126", 1, "1: 300 kHz", 1, "U8", "", 1, "2", "0"},
        R{"X120 SSI-Datenbits", "H130", 1, "13: 13 Bit", 1, "U8", "", 1, "25", "13"},
        R{"X140 Funktion", "H140", 1, "0: inaktiv", 1, "U8", "", 1, "71", "0"},
        R{"X140 Drehrichtung", "H142", 1, "0: normal", 1, "U8", "", 1, "1", "0"},
        R{"X140 Resolver-Polpaare", "H148", 1, "1", 0, "U8", "", 1, "8", "1"},
        R{"X140 Sin/Cos-Strichzahl", "H149", 1, "2048", 0, "U16", "Ink/U", 1, "16384", "1"},
        R{"Geberanschluss", "I02", 1, "0: Motorencoder", 1, "U8", "", 1, "6", "0"},
    };
    return rows;
}

QByteArray line(const OutputsForm::Row &r)
{
    const quint32 address = GetQ7Addresse(QString::fromUtf8(r.koord), r.axis);
    const QStringList cells = {QString::fromUtf8(r.name),   QString::fromUtf8(r.koord),
                               QString::number(r.axis),     QString::fromUtf8(r.wert),
                               QString::number(r.art),      IntToHex(address, 8) + QLatin1Char('h'),
                               QString::fromUtf8(r.type),   QString::fromUtf8(r.unit),
                               QStringLiteral("1"),         QString::number(r.readLevel),
                               QString::fromUtf8(r.wert),   QString::fromUtf8(r.ogw),
                               QString::fromUtf8(r.ugw),    QString::number(r.decimals),
                               QString::number(r.function), QString::fromUtf8(r.bus)};
    return cells.join(QLatin1Char(';')).toUtf8() + "\r\n";
}

} // namespace

QByteArray OutputsForm::descriptions(const std::vector<Row> &extra, const QStringList &without)
{
    QByteArray csv = "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Datentyp;Einheit;Write-Level;"
                     "Read-Level;Defaultwert;OGW;UGW;Nachkommastellen;Skalierungsfunktion;"
                     "Skalierung BUS\r\n";
    for (const Row &r : baseRows()) {
        if (!without.contains(QString::fromUtf8(r.koord))) csv += line(r);
    }
    for (const Row &r : extra)
        csv += line(r);
    return csv;
}

QByteArray OutputsForm::selections()
{
    QByteArray csv = "Koordinate;Nummer;Wert;Text\r\n";
    const auto list = [&csv](const char *koord,
                             std::initializer_list<std::pair<int, const char *>> entries) {
        int n = 0;
        for (const auto &[key, text] : entries)
            csv += QByteArray(koord) + ';' + QByteArray::number(n++) + ';' +
                   QByteArray::number(key) + ';' + text + "\r\n";
    };
    list("F44", {{0, "aus"}, {1, "ein"}});
    list("F54", {{0, "aus"}, {1, "ein"}});
    list("E24", {{0, "LOW"}, {1, "HIGH"}});
    list("B26", {{0, "keiner"}, {1, "BE"}, {2, "X4"}, {3, "X140"}, {4, "X120"}});
    list("H00", {{0, "inaktiv"}, {3, "Inkremental"}, {64, "EnDat"}, {65, "SSI"}});
    list("H02", {{0, "normal"}, {1, "invertiert"}});
    list("H05", {{0, "Binär"}, {1, "Gray"}});
    list("H06", {{13, "13 Bit"}, {25, "25 Bit"}});
    list("H10", {{0, "5 V"}, {1, "12 V"}, {2, "24 V"}});
    list("H40", {{0, "inaktiv"}, {1, "Inkremental"}, {2, "Schritt/Richtung"}});
    list("H42", {{0, "normal"}, {1, "invertiert"}});
    list("H120", {{0, "inaktiv"},
                  {4, "Inkremental"},
                  {5, "Schritt"},
                  {67, "SSI"},
                  {68, "SSI-Slave"},
                  {80, "Inkremental-Simulation"},
                  {81, "Schritt-Simulation"},
                  {82, "SSI-Simulation"}});
    list("H122", {{0, "normal"}, {1, "invertiert"}});
    list("H125", {{0, "Binär"}, {1, "Gray"}});
    list("H126", {{0, "150 kHz"}, {1, "300 kHz"}, {2, "600 kHz"}});
    list("H130", {{13, "13 Bit"}, {25, "25 Bit"}});
    list("H140", {{0, "inaktiv"}, {66, "Resolver"}, {71, "Sin/Cos"}});
    list("H142", {{0, "normal"}, {1, "invertiert"}});
    list("I02", {{0, "Motorencoder"},
                 {1, "BE"},
                 {2, "X4"},
                 {3, "X140"},
                 {4, "X120"},
                 {5, "X120 Slave"},
                 {6, "Zukunft"}});
    return csv;
}

void OutputsForm::SetUp()
{
    params = dir.filePath(QStringLiteral("Parameter.csv"));
    test::writeFile(params, descriptions());
    test::writeFile(dir.filePath(QStringLiteral("Auswahlen.csv")), selections());
    ASSERT_TRUE(drive.load(params));
    sim::SimulatedDrive::setCurrent(&drive);
    form = std::make_unique<QWidget>();
    form->resize(900, 700);
    neutral = new QLineEdit(form.get());
    neutral->setObjectName(QStringLiteral("Neutral"));
    table = new TParaTable(form.get());
    table->setObjectName(QStringLiteral("ParaTable"));
    table->SetParamFileName(params);
    table->ReloadCSVFile();
    form->show();
    QApplication::setActiveWindow(form.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    test::recorder().clear();
}

void OutputsForm::TearDown()
{
    form.reset();
    if (!oldCwd.isEmpty()) {
        QDir::setCurrent(oldCwd);
        ResetCommonStrings();
    }
    sim::SimulatedDrive::setCurrent(nullptr);
}

void OutputsForm::reload(const std::vector<Row> &extra, const QStringList &without)
{
    test::writeFile(params, descriptions(extra, without));
    ASSERT_TRUE(drive.load(params));
    table->ReloadCSVFile();
}

void OutputsForm::setValue(const QString &koordinate, const QString &text, int axis)
{
    quint32 address = 0;
    const int row = table->FindRecord(koordinate, QString::number(axis), address);
    ASSERT_GE(row, 0) << koordinate.toStdString();
    table->SetCell(row, QStringLiteral("Wert"), text);
    drive.setValue(drive.addressOf(koordinate, axis), text);
}

QString OutputsForm::value(const QString &koordinate, int axis) const
{
    quint32 address = 0;
    const int row = table->FindRecord(koordinate, QString::number(axis), address);
    return table->Cell(row, QStringLiteral("Wert"));
}

void OutputsForm::load(QWidget *frame)
{
    TwizFormLoader::CallLoaded(frame);
}

void OutputsForm::goOnline(tOnlineModus mode)
{
    connectDrive();
    table->SetOnline(mode);
    QApplication::processEvents();
}

QStringList OutputsForm::items(TParaClass *c)
{
    QStringList l;
    auto *combo = qobject_cast<QComboBox *>(c->GetEditControl());
    for (int i = 0; combo && i < combo->count(); ++i)
        l << combo->itemText(i);
    return l;
}

void OutputsForm::languageFile(int n, const QByteArray &text)
{
    if (oldCwd.isEmpty()) oldCwd = QDir::currentPath();
    QDir(dir.path()).mkpath(QStringLiteral("work"));
    test::writeFile(dir.filePath(QStringLiteral("WizLingua/wizling.1")), "[ComStr]\r\n");
    test::writeFile(dir.filePath(QStringLiteral("WizLingua/wizling.%1").arg(n)), text);
    QDir::setCurrent(dir.filePath(QStringLiteral("work")));
}

void OutputsForm::languageChanged()
{
    for (int i = 0; i < 3; ++i)
        QApplication::processEvents();
}

void OutputsForm::connectDrive()
{
    // As a host with a description file: values from the drive, descriptions from the file.
    dwz_callbacks cb = sim::SimulatedDrive::callbacks();
    cb.get_para_info = nullptr;
    cb.get_auswahl_info = nullptr;
    table->SetCallbacks(cb);
}

void OutputsForm::enter(QWidget *w)
{
    w->setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
}

void OutputsForm::leave()
{
    neutral->setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
    QApplication::processEvents();
}
