#include "tables_fixture.h"

#include "paramtable/coordinates.h"

#include <QApplication>
#include <QDir>
#include <QTest>

using namespace drivewiz;

namespace {

// One row of an array element; the address is computed from the coordinate.
QByteArray arrayRow(const char *name, const char *pure, int element, const char *value,
                    const char *type, const char *unit, const char *limits)
{
    const QString koordinate = QStringLiteral("%1.%2").arg(QLatin1String(pure)).arg(element);
    const QString address = QStringLiteral("%1h").arg(GetQ7Addresse(koordinate, 1), 8, 16,
                                                      QLatin1Char('0'));
    return QStringLiteral("%1;%2;1;%3;0;%4;%5;%6;1;1;0;%7;0;0;\r\n")
        .arg(QLatin1String(name), koordinate, QLatin1String(value), address.toUpper(),
             QLatin1String(type), QLatin1String(unit), QLatin1String(limits))
        .toLatin1();
}

} // namespace

const QByteArray &TablesForm::descriptions()
{
    static const QByteArray csv = [] {
        QByteArray c = "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Datentyp;Einheit;"
                       "Write-Level;Read-Level;Defaultwert;OGW;UGW;Nachkommastellen;"
                       "Skalierungsfunktion;Skalierung BUS\r\n";
        const char *posValues[] = {"100", "200", "300", "400"};
        for (int i = 0; i < 4; ++i) {
            c += arrayRow("Position", "K10", i, posValues[i], "I32", "mm", "100000;-100000");
            c += arrayRow("Geschwindigkeit", "K11", i, QByteArray::number(10 * (i + 1)), "U16",
                          "rpm", "6000;0");
            c += arrayRow("Zeit", "K12", i, "5", "U16", "ms", "1000;0");
        }
        for (int i = 0; i < 5; ++i)
            c += arrayRow("Kurve", "K13", i, "0", "I16", "", "1000;-1000");
        c += "Steuerwort;A10;1;0;4;01028000h;U16;;1;1;0;65535;0;0;0;\r\n"
             "Sollwert;A11;1;0;0;0102C000h;I32;rpm;1;1;0;6000;-6000;0;0;\r\n"
             "Modus;A12;1;0;0;01030000h;u8;;1;1;0;3;0;0;0;\r\n"
             "Position;A13;1;0;0;01034000h;P64;mm;1;1;0;1000;-1000;0;0;\r\n"
             "Name;A14;1;x;2;01038000h;STR16;;1;1;;;;0;0;\r\n"
             "Faktor;A15;1;1.5;0;0103C000h;R64;;1;1;0;10;0;1;0;\r\n"
             "Schalter;A16;1;0;0;01040000h;B;;1;1;0;1;0;0;0;\r\n"
             "Drehzahl;E08;1;1500;0;05020000h;I16;rpm;6;1;0;12000;-12000;0;0;4096 = 3000 rpm\r\n";
        return c;
    }();
    return csv;
}

void TablesForm::SetUp()
{
    oldCwd = QDir::currentPath();
    QDir(dir.path()).mkpath(QStringLiteral("work"));
    QDir(dir.path()).mkpath(QStringLiteral("WizLingua"));
    drivewiz::test::writeFile(dir.filePath(QStringLiteral("WizLingua/wizling.1")), "[ComStr]\r\n");
    QDir::setCurrent(dir.filePath(QStringLiteral("work")));
    const QString params = path(QStringLiteral("Parameter.csv"));
    drivewiz::test::writeFile(params, descriptions());
    ASSERT_TRUE(drive.load(params));
    sim::SimulatedDrive::setCurrent(&drive);
    form.resize(500, 500);
    neutral = new QLineEdit(&form);
    neutral->setObjectName(QStringLiteral("Neutral"));
    table = new TParaTable(&form);
    table->SetParamFileName(params);
    table->SetWizIdString(QStringLiteral("TablesTest"));
    table->ReloadCSVFile();
    form.show();
    QApplication::setActiveWindow(&form);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    drivewiz::test::recorder().clear();
}

void TablesForm::TearDown()
{
    sim::SimulatedDrive::setCurrent(nullptr);
    QDir::setCurrent(oldCwd);
}

QString TablesForm::path(const QString &name) const
{
    return dir.filePath(QStringLiteral("work/") + name);
}

QString TablesForm::wert(const QString &record) const
{
    const int row = table->GetRecNo(record, false);
    return row < 0 ? QStringLiteral("<none>") : table->Cell(row, QStringLiteral("Wert"));
}

void TablesForm::setWert(const QString &record, const QString &value)
{
    table->SetCell(table->GetRecNo(record, false), QStringLiteral("Wert"), value);
}

void TablesForm::goOnline(tOnlineModus mode)
{
    // Descriptions come from the file, values and writes from the drive.
    dwz_callbacks cb = sim::SimulatedDrive::callbacks();
    cb.get_para_info = nullptr;
    cb.get_auswahl_info = nullptr;
    table->SetCallbacks(cb);
    table->SetOnline(mode);
}
