#include "paramctrls_fixture.h"

#include "host/wizFormLoader.h"

using namespace drivewiz;

const QByteArray &ParamCtrlForm::descriptions()
{
    static const QByteArray csv =
        "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Datentyp;Einheit;Write-Level;"
        "Read-Level;Defaultwert;OGW;UGW;Nachkommastellen;Skalierungsfunktion;Skalierung BUS\r\n"
        "Zeit;A10;1;10;0;01028000h;I16;ms;1;1;10;100;-100;0;0;\r\n"
        "Ohne Grenze;A11;1;5;0;0102C000h;I16;V;1;1;5;;;0;0;\r\n"
        "Modus;A12;1;1: ein;1;01030000h;U8;;1;1;0: aus;2;0;0;0;\r\n"
        "Muster;A13;1;00000101bin;4;01034000h;U8;;1;1;0;255;0;0;0;\r\n"
        "Schalter;A14;1;1;0;01038000h;B;;1;1;0;1;0;0;0;\r\n"
        "Text;A15;1;abc;2;0103C000h;STR8;;1;1;abc;;;0;0;\r\n"
        "Nur lesen;A16;1;7;0;01040000h;U16;;6;1;7;100;0;0;0;\r\n"
        "Verweis;A17;1;A10;6;01044000h;VS;;1;1;A10;;;0;0;\r\n"
        "Weg;A18;1;12.5;0;01048000h;I32;<A19>;1;1;0;1000;-1000;1;0;\r\n"
        "Einheit Weg;A19;1;mm;2;0104C000h;STR8;;1;1;mm;;;0;0;\r\n"
        "Drehzahl;E08;1;1500;0;05020000h;I16;rpm;1;1;0;12000;-12000;0;3;\r\n"
        "Moment;E02;1;3;0;05008000h;I16;Nm;1;1;0;100;-100;2;7;\r\n"
        "Strom;E03;1;2;0;0500C000h;I16;A;1;1;0;20;-20;1;0;4096 = 3000 rpm\r\n"
        "Leer;E04;1;1;0;05010000h;I16;A;1;1;0;20;-20;1;0;30 A\r\n"
        "Null;E05;1;1;0;05014000h;I16;A;1;1;0;20;-20;1;0;0 = 10 A\r\n"
        "Bezugsdrehzahl;R04;0;3000;0;12010000h;U16;rpm;1;1;3000;6000;0;0;0;\r\n"
        "Leistung;B11;1;1.5;0;0202C000h;U16;kW;1;1;1;100;0;1;0;\r\n"
        "Nenndrehzahl;B13;1;3000;0;02034000h;U16;rpm;1;1;3000;9000;0;0;0;\r\n"
        "Nennmoment;B17;1;7.5;0;02044000h;U16;Nm;1;1;0;100;0;1;0;\r\n"
        "Motortyp;B20;1;10;0;02050000h;U8;;1;1;0;255;0;0;0;\r\n";
    return csv;
}

void ParamCtrlForm::SetUp()
{
    const QString params = dir.filePath(QStringLiteral("Parameter.csv"));
    test::writeFile(params, descriptions());
    test::writeFile(
        dir.filePath(QStringLiteral("Auswahlen.csv")),
        "Koordinate;Nummer;Wert;Text\r\nA12;0;0;aus\r\nA12;1;1;ein\r\nA12;2;2;auto\r\n");
    ASSERT_TRUE(drive.load(params));
    sim::SimulatedDrive::setCurrent(&drive);
    form.resize(400, 600);
    neutral = new QLineEdit(&form);
    neutral->setObjectName(QStringLiteral("Neutral"));
    table = new TParaTable(&form);
    table->SetParamFileName(params);
    table->ReloadCSVFile();
    form.show();
    QApplication::setActiveWindow(&form);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    test::recorder().clear();
}

void ParamCtrlForm::TearDown()
{
    sim::SimulatedDrive::setCurrent(nullptr);
}

TParaClass *ParamCtrlForm::control(const QString &koordinate, TwizCtrlType type)
{
    auto *c = new TParaClass(&form);
    c->setObjectName(QStringLiteral("P_") + koordinate);
    c->SetwizControlType(type);
    c->SetwizParaSource(table);
    c->show();
    c->SetKoordinate(koordinate);
    return c;
}

void ParamCtrlForm::goOnline(tOnlineModus mode)
{
    table->SetCallbacks(sim::SimulatedDrive::callbacks());
    table->SetOnline(mode);
}

void ParamCtrlForm::enter(TParaClass *c)
{
    c->GetEditControl()->setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
}

void ParamCtrlForm::leave()
{
    neutral->setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
}
