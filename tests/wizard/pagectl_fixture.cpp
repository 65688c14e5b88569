#include "pagectl_fixture.h"

#include "host/wizFormLoader.h"
#include "lang/wizSprache.h"
#include "platform/component.h"
#include "platform/messages.h"
#include "platform/screen.h"

#include <QDir>
#include <QTreeWidgetItemIterator>

using namespace drivewiz;

const QByteArray &WizardForm::descriptions()
{
    static const QByteArray csv =
        "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Datentyp;Einheit;Write-Level;"
        "Read-Level;Defaultwert;OGW;UGW;Nachkommastellen;Skalierungsfunktion;Skalierung BUS\r\n"
        "Zeit;A10;1;10;0;01028000h;I16;ms;1;1;10;100;-100;0;0;\r\n"
        "Modus;A12;1;1: ein;1;01030000h;U8;;1;1;0: aus;2;0;0;0;\r\n"
        "Nur lesen;A16;1;7;0;01040000h;U16;;6;1;7;100;0;0;0;\r\n"
        "Leistung;B11;1;1.5;0;0202C000h;U16;kW;1;1;1;100;0;1;0;\r\n"
        "Gerätezustand;E48;1;2: Bereit;1;050C0000h;U8;;6;1;0;5;0;0;0;\r\n";
    return csv;
}

const QByteArray &WizardForm::selections()
{
    static const QByteArray csv = "Koordinate;Nummer;Wert;Text\r\n"
                                  "A12;0;0;aus\r\nA12;1;1;ein\r\nA12;2;2;auto\r\n"
                                  "E48;0;0;Selbsttest\r\nE48;2;2;Bereit\r\nE48;5;5;Störung\r\n";
    return csv;
}

QString WizardForm::writeDescriptions()
{
    const QString params = QDir::current().filePath(QStringLiteral("Parameter.csv"));
    test::writeFile(params, descriptions());
    test::writeFile(QDir::current().filePath(QStringLiteral("Auswahlen.csv")), selections());
    return params;
}

void WizardForm::SetUp()
{
    oldCwd = QDir::currentPath();
    QDir(dir.path()).mkpath(QStringLiteral("work"));
    test::writeFile(dir.filePath(QStringLiteral("WizLingua/wizling.1")), "[ComStr]\r\n");
    QDir::setCurrent(dir.filePath(QStringLiteral("work")));
    const QString params = writeDescriptions();
    ASSERT_TRUE(drive.load(params));
    sim::SimulatedDrive::setCurrent(&drive);

    form = std::make_unique<QWidget>();
    form->resize(640, 480);
    {
        FormLoadScope loading; // as the form loader builds a form
        table = new TParaTable(form.get());
        table->SetParamFileName(params);
        table->SetWizIdString(QStringLiteral("WizTest"));
        pc = new TwizPageControl(form.get());
        pc->setObjectName(QStringLiteral("PageControl"));
        pc->setGeometry(0, 0, 480, 480);
        const char *captions[] = {"Start", "Modus", "Grenzen", "Leistung", "Ende"};
        const char *koordinaten[] = {"A10", "A12", "A16", "B11", nullptr};
        for (int n = 0; n < 5; ++n) {
            auto *p = new QWidget;
            p->setObjectName(QStringLiteral("Seite%1").arg(n));
            if (n >= 3) p->setProperty("Tag", 1);
            pc->addTab(p, QString::fromUtf8(captions[n]));
            if (!koordinaten[n]) continue;
            auto *c = new TParaClass(p);
            c->setObjectName(QStringLiteral("P_") + QLatin1String(koordinaten[n]));
            c->setGeometry(10, 60, 300, 50);
            c->SetwizParaSource(table);
            c->SetKoordinate(QLatin1String(koordinaten[n]));
        }
        hint = new TwizLabel(QStringLiteral("Hinweis: Zeitbasis"), page(1));
        hint->setObjectName(QStringLiteral("LblHinweis"));
        hint->move(10, 130);
        tree = new TwizTreeView(form.get());
        tree->setGeometry(490, 0, 150, 400);
        back = new TwizButton(QStringLiteral("Zurück"), form.get());
        back->setObjectName(QStringLiteral("BtnBack"));
        back->setGeometry(200, 440, 75, 25);
        pc->SetwizParaSource(table);
        pc->SetwizTreeView(tree);
        pc->SetBtnBack(back);
        pc->SetFlashDelay(0);
    }
    TwizFormLoader::CallLoaded(form.get());
    form->show();
    QApplication::setActiveWindow(form.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    test::recorder().clear();
}

void WizardForm::TearDown()
{
    form.reset();
    sim::SimulatedDrive::setCurrent(nullptr);
    SetScreenPixelsPerInchOverride(0);
    ResetCommonStrings();
    QDir::setCurrent(oldCwd);
}

TParaClass *WizardForm::control(const QString &koordinate) const
{
    return form->findChild<TParaClass *>(QStringLiteral("P_") + koordinate);
}

QLineEdit *WizardForm::edit(const QString &koordinate) const
{
    return qobject_cast<QLineEdit *>(control(koordinate)->GetEditControl());
}

QStringList WizardForm::treeTexts() const
{
    QStringList texts;
    for (QTreeWidgetItemIterator it(tree); *it; ++it)
        texts << (*it)->text(0);
    return texts;
}

void WizardForm::hostMode(tOnlineModus mode)
{
    table->SetCallbacks(sim::SimulatedDrive::callbacks());
    PostMessage(table->WindowHandle(), wmToolOnlineMode, quintptr(mode), 0);
    settle();
}

void WizardForm::settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}
