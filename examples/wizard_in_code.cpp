// A wizard built in code, without Qt Designer: a parameter table over the sample drive's
// descriptions, a page control with two pages, three parameter controls, and the Qt
// signals a C++ host connects to.
//
//     wizard_in_code [language] [data folder] [--auto]
//
// The language is 1 (German) or 2 (English). The data folder holds Parameter.csv,
// Auswahlen.csv and the language files (the sample drive by default). With --auto the
// program plays a user (types a value, goes to the next page, presses OK) and exits,
// printing what it saw; that is how `make test` runs it, on Qt's offscreen platform.

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "paramtable/coordinates.h"
#include "platform/component.h"
#include "widgets/wizEdit.h"
#include "wizard/wizPageControl.h"

// The form loader's start-up pass (tables, then controls, then page controls) serves
// forms built in code as well as loaded ones.
#include "host/wizFormLoader.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>

#include <cstdio>
#include <cstring>

using namespace drivewiz;

namespace {

void say(const QString &line)
{
    std::printf("%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

// The host's write callback: here it only says what would go to the drive.
char writeToDrive(const char *value, uint32_t, uint32_t address, int32_t)
{
    std::printf("  drive <- %s = %s\n", GetKoordinateAusQ7Adr(address).toUtf8().constData(),
                value);
    return 0;
}

struct Wizard
{
    QDialog form;
    TParaTable *table = nullptr;
    TwizPageControl *pages = nullptr;
    TParaClass *address = nullptr; // A80, a number with limits
    TParaClass *name = nullptr;    // A01, a text
    TParaClass *voltage = nullptr; // A35, a selection
};

TParaClass *addControl(QWidget *page, TParaTable *table, const char *koordinate, int top)
{
    auto *c = new TParaClass(page);
    c->setObjectName(QStringLiteral("P_") + QLatin1String(koordinate));
    c->setGeometry(10, top, 300, 45);
    // Table and coordinate may be given in either order.
    c->SetKoordinate(QLatin1String(koordinate));
    c->SetwizParaSource(table);
    return c;
}

void build(Wizard &w, const QString &dataFolder)
{
    w.form.setObjectName(QStringLiteral("WizardInCode"));
    w.form.resize(520, 300);
    FormLoadScope loading; // the components wait for the start-up pass
    w.table = new TParaTable(&w.form);
    w.table->SetParamFileName(dataFolder + QStringLiteral("/Parameter.csv"));
    w.table->SetWizIdString(QStringLiteral("WizardInCode"));
    w.table->SetfcbtSetParaValue(writeToDrive);

    w.pages = new TwizPageControl(&w.form);
    w.pages->setGeometry(0, 0, 520, 260);
    w.pages->SetwizParaSource(w.table);
    auto *general = new QWidget;
    auto *supply = new QWidget;
    w.pages->addTab(general, QStringLiteral("Allgemein"));
    w.pages->addTab(supply, QStringLiteral("Versorgung"));
    w.address = addControl(general, w.table, "A80", 50);
    w.name = addControl(general, w.table, "A01", 100);
    w.voltage = addControl(supply, w.table, "A35", 50);

    auto *back = new TwizButton(QStringLiteral("Zurück"), &w.form);
    back->setObjectName(QStringLiteral("BtnBack"));
    back->setGeometry(20, 265, 90, 28);
    w.pages->SetBtnBack(back); // makes the next, OK and Cancel buttons
}

void connectSignals(Wizard &w)
{
    QObject::connect(w.address, &TParaClass::valueChanged, [](const QString &text) {
        say(QStringLiteral("  A80 shows %1").arg(text));
    });
    QObject::connect(w.address, &TParaClass::left, [] { say(QStringLiteral("  A80 left")); });
    QObject::connect(w.voltage, &TParaClass::valueChanged, [](const QString &text) {
        say(QStringLiteral("  A35 shows %1").arg(text));
    });
    QObject::connect(w.pages, &TwizPageControl::pageChanged, [&w](int index) {
        say(QStringLiteral("  page %1: %2").arg(index).arg(w.pages->tabText(index)));
    });
    QObject::connect(w.pages, &TwizPageControl::beforeSave,
                     [] { say(QStringLiteral("  saving")); });
}

// What a user would do: type into A80, leave it, go on, choose a voltage, press OK.
int playUser(Wizard &w)
{
    auto *field = qobject_cast<QLineEdit *>(w.address->GetEditControl());
    if (!field) return 1;
    say(QStringLiteral("typing 12 into A80 (%1)").arg(w.address->GetParamName()));
    field->setFocus(Qt::TabFocusReason);
    field->selectAll();
    field->insert(QStringLiteral("12"));
    w.name->GetEditControl()->setFocus(Qt::TabFocusReason);
    say(QStringLiteral("next: \"%1\"").arg(s_Next));
    w.pages->BtnMoveNextClick();
    w.voltage->SetAuswahl(2);
    say(QStringLiteral("OK"));
    w.pages->BtnOK()->click();
    const bool ok = w.form.result() == QDialog::Accepted && w.address->GetText() == "12";
    say(ok ? QStringLiteral("done") : QStringLiteral("FAILED"));
    return ok ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    const bool automatic = args.contains(QStringLiteral("--auto"));
    QStringList rest = args.mid(1);
    rest.removeAll(QStringLiteral("--auto"));
    const QString dataFolder = rest.value(1, QStringLiteral(DRIVEWIZ_SAMPLE_DIR));
    // The language files lie with the data, not beside this program.
    SetConfigFolder(dataFolder);

    Wizard w;
    build(w, dataFolder);
    TwizFormLoader::CallLoaded(&w.form); // start-up: reads files, builds, lays out
    if (rest.value(0).toInt() > 0) w.table->SetLanguage(rest.value(0).toInt());
    connectSignals(w);
    w.form.show();
    if (automatic) {
        QApplication::setActiveWindow(&w.form); // no window manager to activate it
        return playUser(w);
    }
    return w.form.exec() == QDialog::Accepted ? 0 : 2;
}
