// Forms with parameter controls loaded at run time and built by uic-style code.

#include "paramctrls_fixture.h"

#include "host/wizFormLoader.h"
#include "platform/component.h"
#include "widgets/wizEdit.h"

#include <QCheckBox>

using namespace drivewiz;

namespace {

QByteArray formUi(const QString &descriptions)
{
    return QStringLiteral(
               "<?xml version=\"1.0\" encoding=\"UTF-8\"?><ui version=\"4.0\"><class>F</class>"
               "<widget class=\"QWidget\" name=\"F\">"
               "<widget class=\"TParaClass\" name=\"P_A12\"><property name=\"geometry\"><rect>"
               "<x>0</x><y>0</y><width>200</width><height>40</height></rect></property>"
               "<property name=\"wizKoordinate\" stdset=\"0\"><string notr=\"true\">A12</string>"
               "</property><property name=\"wizControlType\" stdset=\"0\">"
               "<enum>drivewiz::wctRadioButtons</enum></property>"
               "<property name=\"wizParaSource\" stdset=\"0\"><string notr=\"true\">Tabelle"
               "</string></property></widget>"
               "<widget class=\"QFrame\" name=\"Box\"><widget class=\"TParaClass\" name=\"P_A10\">"
               "<property name=\"wizKoordinate\" stdset=\"0\"><string notr=\"true\">A10</string>"
               "</property></widget></widget>"
               "<widget class=\"TParaClass\" name=\"P_A10b\"><property name=\"wizKoordinate\" "
               "stdset=\"0\"><string notr=\"true\">A10</string></property></widget>"
               "<widget class=\"TParaTable\" name=\"Tabelle\"><property name=\"FileNameParams\" "
               "stdset=\"0\"><string notr=\"true\">%1</string></property></widget>"
               "</widget></ui>")
        .arg(descriptions)
        .toUtf8();
}

} // namespace

class FormLoading : public ParamCtrlForm
{
};

TEST_F(FormLoading, RunTimeFormsBindBuildAndStartEqual)
{
    const QString ui = dir.filePath(QStringLiteral("form.ui"));
    test::writeFile(ui, formUi(dir.filePath(QStringLiteral("Parameter.csv"))));
    TwizFormLoader loader;
    std::unique_ptr<QWidget> f(loader.loadForm(ui));
    ASSERT_NE(f, nullptr);
    auto *t = f->findChild<TParaTable *>(QStringLiteral("Tabelle"));
    ASSERT_NE(t, nullptr);
    EXPECT_GT(t->RowCount(), 10); // the table was loaded before the controls were built
    auto *radio = f->findChild<TParaClass *>(QStringLiteral("P_A12"));
    ASSERT_NE(radio, nullptr);
    EXPECT_EQ(radio->wizParaSource(), t); // the table named in the form, though it comes later
    EXPECT_EQ(radio->wizControlType(), wctRadioButtons);
    EXPECT_NE(qobject_cast<TMyRadioGroup *>(radio->GetEditControl()), nullptr);
    EXPECT_EQ(radio->GetText(), QStringLiteral("1: ein"));
    auto *a10 = f->findChild<TParaClass *>(QStringLiteral("P_A10"));
    auto *a10b = f->findChild<TParaClass *>(QStringLiteral("P_A10b"));
    EXPECT_EQ(a10->GetText(), QStringLiteral("10"));
    EXPECT_EQ(a10b->GetText(), QStringLiteral("10"));
    ASSERT_EQ(a10->SameParameterControls().size(), 1);
    EXPECT_EQ(a10->SameParameterControls().first(), a10b);
    EXPECT_EQ(t->FindParaControl(a10->Q7adr()), a10); // depth first: inside the box first
    EXPECT_FALSE(a10->isLoading());
    EXPECT_EQ(messages(), QStringList());
}

TEST_F(FormLoading, BrokenFormFilesGiveNoForm)
{
    TwizFormLoader loader;
    EXPECT_EQ(loader.loadForm(dir.filePath(QStringLiteral("missing.ui"))), nullptr);
    const QString bad = dir.filePath(QStringLiteral("bad.ui"));
    test::writeFile(bad, "<ui version=\"4.0\"><widget class=\"TParaClass\" name=\"x\">");
    std::unique_ptr<QWidget> f(loader.loadForm(bad));
    SUCCEED(); // whatever Qt makes of it, nothing crashes
}

// What uic-generated code does: create, set properties, then run the start-up pass.
TEST_F(FormLoading, UicStyleFormsWaitForTheStartUpPass)
{
    QWidget f;
    TParaClass *c = nullptr;
    {
        FormLoadScope scope;
        c = new TParaClass(&f);
        EXPECT_TRUE(c->isLoading());
        c->SetKoordinate(QStringLiteral("A10"));
        c->SetwizParaSource(table);
        EXPECT_EQ(c->GetEditControl(), nullptr); // nothing is built while the form loads
    }
    TwizFormLoader::CallLoaded(&f);
    ASSERT_NE(c->GetEditControl(), nullptr);
    EXPECT_EQ(c->GetText(), QStringLiteral("10"));
}

TEST_F(FormLoading, OddDescriptionRowsBuildWithoutFaults)
{
    const QString params = dir.filePath(QStringLiteral("odd.csv"));
    test::writeFile(params, "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Datentyp;Einheit;"
                            "Write-Level;Defaultwert;OGW;UGW;Nachkommastellen\r\n"
                            "Leer;B10;1;5;;02028000h;I16;<>;;;;;\r\n"
                            "Kaputt;B11;1;5;x;0202C000h;I16;<B>;zwei;;zehn;-zehn;viele\r\n"
                            "Bits;B12;1;7;0;02030000h;U99;;1;0;255;0;0\r\n");
    TParaTable t(&form);
    t.SetParamFileName(params);
    t.ReloadCSVFile();
    test::recorder().clear();
    const auto make = [&](const char *k, TwizCtrlType type = wctDefault) {
        auto *c = new TParaClass(&form);
        c->SetwizControlType(type);
        c->SetwizParaSource(&t);
        c->SetKoordinate(QString::fromLatin1(k));
        return c;
    };
    TParaClass *empty = make("B10");
    EXPECT_EQ(empty->GetEinheit(), QStringLiteral("<>")); // too short to point anywhere
    EXPECT_TRUE(std::isinf(empty->GetOGW()));
    TParaClass *broken = make("B11");
    EXPECT_EQ(broken->GetEinheit(), QStringLiteral("B")); // "<B>" names no parameter
    EXPECT_EQ(broken->Art(), 0);
    EXPECT_EQ(broken->GetwriteLevel(), 0);
    EXPECT_TRUE(std::isinf(broken->GetUGW()));
    TParaClass *bits = make("B12", wctBinaryCheckBoxes); // "U99": no more than 32 boxes
    EXPECT_EQ(bits->bitCheckBoxes().size(), 32);
    EXPECT_EQ(messages(), QStringList());
}
