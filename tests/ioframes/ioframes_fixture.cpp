#include "ioframes_fixture.h"

#include "ioframes/BE.h"
#include "ioframes/BitLeiste.h"
#include "lang/wizSprache.h"
#include "platform/messages.h"
#include "platform/screen.h"

#include <QApplication>
#include <QDir>
#include <QTest>

using namespace drivewiz;

namespace {

// The address of a coordinate of axis 0 or 1: group letter in bits 29-24, number in 23-14.
QByteArray address(const char *koordinate)
{
    const quint32 letter = quint32(koordinate[0] - 64);
    const quint32 number = quint32(QByteArray(koordinate + 1).toUInt());
    return QByteArray::number((letter << 24) | (number << 14), 16).rightJustified(8, '0') + 'h';
}

QByteArray row(const char *name, const char *k, const char *axis, const char *value,
               const char *art, const char *type, const char *unit, const char *write,
               const char *deflt, const char *ogw, const char *ugw, const char *decimals)
{
    return QByteArray(name) + ';' + k + ';' + axis + ';' + value + ';' + art + ';' + address(k) +
           ';' + type + ';' + unit + ';' + write + ";1;" + deflt + ';' + ogw + ';' + ugw + ';' +
           decimals + ";0;\r\n";
}

QByteArray descriptions()
{
    QByteArray csv = "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Datentyp;Einheit;"
                     "Write-Level;Read-Level;Defaultwert;OGW;UGW;Nachkommastellen;"
                     "Skalierungsfunktion;Skalierung BUS\r\n";
    const char *source = "0: Low-Pegel (0V)";
    csv += row("Schnellhalt Quelle", "A60", "1", "3: BE1", "1", "U8", "", "2", source, "28", "0", "0");
    csv += row("Quittierung Quelle", "A61", "1", "4: BE1 invers", "1", "U8", "", "2", source, "28",
               "0", "0");
    csv += row("Endschalter Quelle", "A62", "1", "2: Feldbus-Bit", "1", "U8", "", "2", source, "28",
               "0", "0");
    csv += row("Ohne Null Quelle", "A68", "1", "3: BE1", "1", "U8", "", "2", "1: High-Pegel (+24V)",
               "28", "1", "0");
    csv += row("Verschoben Quelle", "A69", "1", "5: BE1", "1", "U8", "", "2", source, "5", "0", "0");
    for (const char *k : {"A310", "A311", "A312"})
        csv += row("Zustand", k, "1", "0: LOW", "1", "B", "", "6", "0: LOW", "1", "0", "0");
    csv += row("Steuerwort", "A180", "1", "0000000101010101bin", "4", "U16", "", "2",
               "0000000000000000bin", "65535", "0", "0");
    csv += row("Maske", "A181", "1", "00000101bin", "4", "U8", "", "2", "00000000bin", "255", "0",
               "0");
    csv += row("Zahl", "A182", "1", "-1", "0", "I32", "", "2", "0", "2147483647", "-2147483648",
               "0");
    csv += row("Gerätefamilie", "E50", "0", "VKP 4102", "2", "STR16", "", "6", "", "", "", "0");
    csv += row("Optionsplatine oben", "E54", "0", "", "2", "STR16", "", "6", "", "", "", "0");
    csv += row("Optionsplatine unten", "E58", "0", "KBQ 7700", "2", "STR16", "", "6", "", "", "", "0");
    for (const char *k : {"E10", "E11", "E74"})
        csv += row("AE-Pegel", k, "0", "1.00", "0", "I16", "V", "6", "0.00", "10.50", "-10.50", "2");
    for (const char *k : {"F11", "F21", "F31"})
        csv += row("AE-Offset", k, "0", "0.000", "0", "I16", "V", "2", "0.000", "10.000", "-10.000",
                   "3");
    for (const char *k : {"F12", "F22", "F32"})
        csv += row("AE-Faktor", k, "0", "1.00", "0", "I16", "", "2", "1.00", "4.00", "-4.00", "2");
    csv += row("Sollwertfaktor", "I70", "1", "100.0", "0", "I16", "%", "2", "100.0", "400.0",
               "-400.0", "1");
    csv += row("Analogsollwert Quelle", "I130", "1", "1: AE1", "1", "U8", "", "2", "0: keine", "4",
               "0", "0");
    csv += row("Feldbus-Sollwert", "I210", "1", "0.00", "0", "I16", "%", "2", "0.00", "200.00",
               "-200.00", "2");
    csv += row("Analogsollwert", "I330", "1", "0.00", "0", "I16", "%", "6", "0.00", "200.00",
               "-200.00", "2");
    csv += row("Sollwert vor Faktor", "I331", "1", "0.00", "0", "I16", "%", "6", "0.00", "200.00",
               "-200.00", "2");
    return csv;
}

QByteArray selections()
{
    QByteArray csv = "Koordinate;Nummer;Wert;Text\r\n";
    QList<QByteArray> texts = {"Low-Pegel (0V)", "High-Pegel (+24V)", "Feldbus-Bit"};
    for (int k = 1; k <= 13; ++k) {
        texts << "BE" + QByteArray::number(k);
        texts << "BE" + QByteArray::number(k) + " invers";
    }
    for (const char *k : {"A60", "A61", "A62", "A68"}) {
        const int from = QByteArray(k) == "A68" ? 1 : 0;
        for (int i = from; i < texts.size(); ++i)
            csv += QByteArray(k) + ';' + QByteArray::number(i - from) + ';' +
                   QByteArray::number(i) + ';' + texts.at(i) + "\r\n";
    }
    csv += "A69;0;0;Low-Pegel (0V)\r\nA69;1;5;BE1\r\n";
    for (const char *k : {"A310", "A311", "A312"})
        csv += QByteArray(k) + ";0;0;LOW\r\n" + QByteArray(k) + ";1;1;HIGH\r\n";
    const char *analog[] = {"keine", "AE1", "AE2", "AE3", "Parameter"};
    for (int i = 0; i < 5; ++i)
        csv += "I130;" + QByteArray::number(i) + ';' + QByteArray::number(i) + ';' + analog[i] +
               "\r\n";
    return csv;
}

} // namespace

void InputForm::SetUp()
{
    oldCwd = QDir::currentPath();
    QDir(dir.path()).mkpath(QStringLiteral("work"));
    test::writeFile(dir.filePath(QStringLiteral("WizLingua/wizling.1")), "[ComStr]\r\n");
    QDir::setCurrent(dir.filePath(QStringLiteral("work")));
    const QString params = QDir::current().filePath(QStringLiteral("Parameter.csv"));
    test::writeFile(params, descriptions());
    test::writeFile(QDir::current().filePath(QStringLiteral("Auswahlen.csv")), selections());
    ASSERT_TRUE(drive.load(params));
    sim::SimulatedDrive::setCurrent(&drive);
    form = std::make_unique<QWidget>();
    form->resize(700, 600);
    table = new TParaTable(form.get());
    table->setObjectName(QStringLiteral("ParaTable"));
    table->SetParamFileName(params);
    table->SetWizIdString(QStringLiteral("InputTest"));
    table->ReloadCSVFile();
    form->show();
    QApplication::setActiveWindow(form.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    test::recorder().clear();
}

void InputForm::TearDown()
{
    form.reset();
    sim::SimulatedDrive::setCurrent(nullptr);
    SetScreenPixelsPerInchOverride(0);
    ResetCommonStrings();
    QDir::setCurrent(oldCwd);
}

TParaClass *InputForm::control(const QString &koordinate, QWidget *parent)
{
    auto *c = new TParaClass(parent ? parent : form.get());
    c->setObjectName(QStringLiteral("P_") + koordinate);
    c->SetwizParaSource(table);
    c->show();
    c->SetKoordinate(koordinate);
    return c;
}

TBEinput *InputForm::binaryInput(const QString &koordinate, const QString &display, int bit,
                                 QWidget *parent)
{
    auto *input = new TBEinput(parent ? parent : form.get());
    input->setObjectName(QStringLiteral("BE_") + koordinate);
    input->SetwizBusParName(QStringLiteral("A180"));
    input->SetwizBusParBit(bit);
    input->SetwizAnzeigeParName(display);
    input->SetwizKoordinate(koordinate);
    input->SetwizParaSource(table);
    input->resize(438, 28);
    input->show();
    input->Loaded(); // as the loader does once the form is complete
    return input;
}

TBitLeiste *InputForm::bitBar(const QString &master, int first, const QStringList &captions,
                              QWidget *parent)
{
    QWidget *on = parent ? parent : form.get();
    TParaClass *c = control(master, on);
    c->SetwizEnabled(pReadOnly); // the bar edits, the master shows
    auto *bar = new TBitLeiste(on);
    bar->setObjectName(QStringLiteral("BitLeiste1"));
    bar->resize(200, 30);
    bar->SetwizBitAnfang(first);
    bar->SetwizCaptions(captions);
    bar->SetwizParaControl(c);
    bar->show();
    return bar;
}

void InputForm::setValue(const QString &koordinate, const QString &value)
{
    const int row = table->GetRecNo(koordinate, false);
    ASSERT_GE(row, 0) << koordinate.toStdString();
    table->SetCell(row, QStringLiteral("Wert"), value);
}

void InputForm::useLanguage(int language, const QByteArray &ini)
{
    test::writeFile(dir.filePath(QStringLiteral("WizLingua/wizling.%1").arg(language)), ini);
    table->SetLanguage(language);
    test::recorder().clear(); // the note that a central language folder is in use
}

void InputForm::goOnline()
{
    // Descriptions come from the file, as in the demo host.
    dwz_callbacks cb = sim::SimulatedDrive::callbacks();
    cb.get_para_info = nullptr;
    cb.get_auswahl_info = nullptr;
    table->SetCallbacks(cb);
    PostMessage(table->WindowHandle(), wmToolOnlineMode, quintptr(omOnline), 0);
    settle();
}

void InputForm::settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}
