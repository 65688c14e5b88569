// A form file with every input frame, loaded as a host loads its wizards: the loader
// creates the classes, resolves their links and starts them in order.

#include "ioframes_fixture.h"

#include "host/wizFormLoader.h"
#include "ioframes/AE.h"
#include "ioframes/AllInputViewer.h"
#include "ioframes/BE.h"
#include "ioframes/BitLeiste.h"
#include "ioframes/QuellSelectIntro.h"
#include "ioframes/SystemBEs.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QTabWidget>

using namespace drivewiz;

namespace {

QString prop(const char *name, const QString &value)
{
    return QStringLiteral("<property name=\"%1\" stdset=\"0\"><string notr=\"true\">%2</string>"
                          "</property>")
        .arg(QLatin1String(name), value);
}

QString number(const char *name, int value)
{
    return QStringLiteral("<property name=\"%1\" stdset=\"0\"><number>%2</number></property>")
        .arg(QLatin1String(name))
        .arg(value);
}

QString widget(const char *cls, const char *name, const QString &props)
{
    return QStringLiteral("<widget class=\"%1\" name=\"%2\">%3</widget>\n")
        .arg(QLatin1String(cls), QLatin1String(name), props);
}

} // namespace

class InputFormFile : public InputForm
{
protected:
    QWidget *load()
    {
        const QString table = prop("wizParaSource", QStringLiteral("ParaTable"));
        QString body =
            widget("TParaTable", "ParaTable",
                   prop("FileNameParams", QDir::current().filePath(QStringLiteral("Parameter.csv"))) +
                       prop("wizIdString", QStringLiteral("InputTest"))) +
            widget("TParaClass", "P_A180",
                   table + prop("wizKoordinate", QStringLiteral("A180")) +
                       QStringLiteral("<property name=\"wizEnabled\" stdset=\"0\">"
                                      "<enum>drivewiz::pReadOnly</enum></property>")) +
            widget("TBitLeiste", "BitLeiste1",
                   prop("wizParaControl", QStringLiteral("P_A180")) + number("wizBitHeight", 20) +
                       QStringLiteral("<property name=\"wizCaptions\" stdset=\"0\"><stringlist>"
                                      "<string>null</string><string>eins</string>"
                                      "<string>zwei</string></stringlist></property>")) +
            widget("TSystemBEsFrame", "SystemBEs1", table) +
            widget("TBEinput", "BE_A62",
                   table + prop("wizKoordinate", QStringLiteral("A62")) +
                       prop("wizAnzeigeParName", QStringLiteral("A312")) +
                       prop("wizBusParName", QStringLiteral("A180")) + number("wizBusParBit", 2)) +
            widget("TAEinput", "AEinput1",
                   table + prop("wizKoordinate", QStringLiteral("I130")) +
                       prop("wizAE", QStringLiteral("AnalogEin1"))) +
            widget("TAnalogEin", "AnalogEin1", table) +
            widget("TAllInputViewer", "Viewer", table) +
            widget("TQuellSelektorIntro", "Intro", QString());
        const QString ui = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?><ui version=\"4.0\">"
                                          "<class>F</class><widget class=\"QWidget\" name=\"F\">%1"
                                          "</widget></ui>")
                               .arg(body);
        const QString path = QDir::current().filePath(QStringLiteral("inputs.ui"));
        test::writeFile(path, ui.toUtf8());
        TwizFormLoader loader;
        return loader.loadForm(path); // a form of its own, with its own table
    }
};

TEST_F(InputFormFile, TheLoaderMakesEveryFrameAndStartsThemInOrder)
{
    for (const char *name : {"TBitLeiste", "TInput", "TBEinput", "TAEinput", "TAnalogEin",
                             "TSystemBEsFrame", "TAllInputViewer", "TQuellSelektorIntro"})
        EXPECT_TRUE(TwizFormLoader::libraryClasses().contains(QLatin1String(name))) << name;
    test::writeFile(dir.filePath(QStringLiteral("WizLingua/wizling.1")),
                    "[ComStr]\r\n[InputTest]\r\nBitLeiste1_Bit2=two\r\n"
                    "[TSystemBEsFrame]\r\ncLblEingangFrg=Enable (always on)\r\n"
                    "[TQuellSelektorIntro]\r\ncLabel1=Pick the sources.\r\n");
    std::unique_ptr<QWidget> loaded(load());
    ASSERT_TRUE(loaded);
    auto *bar = loaded->findChild<TBitLeiste *>(QStringLiteral("BitLeiste1"));
    ASSERT_TRUE(bar && bar->wizParaControl());
    EXPECT_EQ(bar->wizParaControl()->objectName(), QStringLiteral("P_A180"));
    ASSERT_EQ(bar->Rows().size(), 3u);
    EXPECT_EQ(bar->Rows().at(2).box->text(), QStringLiteral("two"));
    // Bits 0 and 1 belong to inputs on BE1 (A60, A61), bit 2 to A62 on the fieldbus.
    EXPECT_TRUE(bar->Rows().at(0).box->isHidden());
    EXPECT_TRUE(bar->Rows().at(1).box->isHidden());
    EXPECT_FALSE(bar->Rows().at(2).box->isHidden());
    EXPECT_TRUE(bar->Rows().at(2).box->isEnabled()); // the master is read-only
    auto *input = loaded->findChild<TBEinput *>(QStringLiteral("BE_A62"));
    ASSERT_TRUE(input);
    EXPECT_EQ(input->LampColor(), clLime); // bit 2 of 0101
    EXPECT_EQ(input->StatusPanel()->objectName(), QStringLiteral("StatusPanel_BE_A62"));
    auto *analog = loaded->findChild<TAnalogEin *>(QStringLiteral("AnalogEin1"));
    ASSERT_TRUE(analog);
    EXPECT_EQ(loaded->findChild<TAEinput *>()->wizAE(), analog);
    EXPECT_EQ(analog->PageControl1->currentIndex(), 0);
    auto *system = loaded->findChild<TSystemBEsFrame *>();
    EXPECT_EQ(system->LblEingangFrg->text(), QStringLiteral("Enable (always on)"));
    EXPECT_EQ(loaded->findChild<TQuellSelektorIntro *>()->Label1->text(),
              QStringLiteral("Pick the sources."));
    auto *viewer = loaded->findChild<TAllInputViewer *>();
    viewer->MyUpdate();
    EXPECT_EQ(viewer->BinaryUses().value(1),
              QStringLiteral("Schnellhalt (A60); Quittierung (A61, invers);"));
    // A63, A64 and F100 are not in this drive: their rows are gone without a word (the
    // table notes the central language folder).
    EXPECT_TRUE(system->BEinput4->isHidden());
    const QStringList shown = messages();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first().startsWith(QStringLiteral("Info: Sprache Nr.1")));
}
