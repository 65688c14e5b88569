#include "paramsets_fixture.h"

#include "lang/wizSprache.h"
#include "platform/convert.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTest>

#include <cstring>

namespace drivewiz::test {

namespace {

SetsHost *g_host = nullptr;

int32_t getValue(char *buffer, int32_t size, uint32_t, uint32_t address, uint8_t *status)
{
    if (g_host->failingReads.contains(address)) {
        *status = 7;
        return 0;
    }
    *status = 0;
    const QByteArray v = g_host->values.value(address);
    if (buffer) std::memcpy(buffer, v.constData(), size_t(std::min<int32_t>(int32_t(v.size()), size - 1)));
    return int32_t(v.size());
}

char setValue(const char *value, uint32_t, uint32_t address, int32_t)
{
    g_host->writes.emplace_back(address, QByteArray(value));
    const char answer = g_host->writeAnswers.value(address, 0);
    if (answer == 0) g_host->values[address] = value;
    return answer;
}

const QByteArray kDescriptions =
    "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Datentyp;Einheit;Write-Level;Defaultwert;"
    "OGW;UGW;Nachkommastellen\r\n"
    "Betriebsart;A00;1;\"0: inaktiv\";1;01000000h;U8;;2;\"0: inaktiv\";1;0;0\r\n"
    "Bezeichnung;A01;1;\"Portal; \"\"X\"\" Achse\";2;01004000h;STR24;;2;;;;0\r\n"
    "Steuerwort;A180;1;0000000000010000bin;4;012D0000h;U16;;2;0000000000000000bin;65535;0;0\r\n"
    "Strom;B20;1;1.25;0;02050000h;I16;A;2;0.00;40.00;-40.00;2\r\n"
    "Strom;B20;2;0.84;0;42050000h;I16;A;2;0.00;40.00;-40.00;2\r\n"
    "Rampe\xC2\xA7Hoch;A40.0;1;500;0;010A0000h;U16;ms;2;1000;65000;0;0\r\n"
    "Rampe\xC2\xA7Runter;A40.1;1;600;0;010A0001h;U16;ms;2;1000;65000;0;0\r\n"
    "Familie;E50;1;ZRD-4;2;050C8000h;STR16;;6;;;;0\r\n"
    "Nur lesen;E00;1;7;0;05000000h;I16;;6;0;100;0;0\r\n"
    "Experte;B30;1;5;0;02078000h;U8;;4;5;10;0;0\r\n";

const QByteArray kSelections = "Koordinate;Nummer;Wert;Text\r\n"
                               "A00;1;0;inaktiv\r\n"
                               "A00;2;1;aktiv\r\n";

} // namespace

void ParamSetsTest::SetUp()
{
    ASSERT_TRUE(m_dir.isValid());
    m_oldCwd = QDir::currentPath();
    QDir::setCurrent(m_dir.path());
    SetConfigFolder(m_dir.path());
    writeFile(path(QStringLiteral("Parameter.csv")), kDescriptions);
    writeFile(path(QStringLiteral("Auswahlen.csv")), kSelections);
    table = new TParaTable(&form);
    b20 = new TParaClass(&form);
    b20->SetKoordinate(QStringLiteral("B20"));
    a01 = new TParaClass(&form);
    a01->SetKoordinate(QStringLiteral("A01"));
    other = new TParaClass(&form);
    other->SetKoordinate(QStringLiteral("A40.1"));
    table->SetParamFileName(path(QStringLiteral("Parameter.csv")));
    table->SetWizIdString(QStringLiteral("SetsWizard"));
    table->Loaded();
    g_host = &host;
    for (int p = 0; p < table->RowCount(); ++p)
        host.values[table->AddressOfRow(p)] = table->Cell(p, QStringLiteral("Wert")).toUtf8();
    recorder().clear();
}

void ParamSetsTest::TearDown()
{
    QDir::setCurrent(m_oldCwd);
    SetConfigFolder(QString());
    ResetCommonStrings();
    g_host = nullptr;
}

void ParamSetsTest::connectHost()
{
    table->SetfcbtGetParaValue(getValue);
    table->SetfcbtSetParaValue(setValue);
}

QString ParamSetsTest::wert(const QString &koordinate, const QString &achse) const
{
    return table->Cell(table->FindParam(koordinate, achse), QStringLiteral("Wert"));
}

void ParamSetsTest::typeInto(TParaClass *control, const QString &text)
{
    if (!form.isVisible()) {
        form.show();
        QApplication::setActiveWindow(&form);
    }
    auto *edit = qobject_cast<QLineEdit *>(control->GetEditControl());
    ASSERT_NE(edit, nullptr);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
    other->GetEditControl()->setFocus(); // leaving the field takes the value
    QApplication::processEvents();
}

void ParamSetsTest::useEnglish()
{
    QFile::copy(sourcePath(QStringLiteral("data/sample/wizling.2")), path(QStringLiteral("wizling.2")));
    table->SetLanguage(2);
}

} // namespace drivewiz::test
