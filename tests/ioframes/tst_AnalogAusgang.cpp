// The analog output frame: binding, the output model both ways, the source check, the
// source list and a drive without outputs.

#include "outputs_fixture.h"

#include "ioframes/AnalogAusgang.h"
#include "lang/wizSprache.h"
#include "platform/convert.h"
#include "wizard/wizPageControl.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>

#include <cmath>

using namespace drivewiz;

namespace {

class AnalogOut : public OutputsForm
{
protected:
    TAnalogAus *make(TAnalogAusgang ausgang = AnalogAus1, const QString &liste = QString())
    {
        auto *f = new TAnalogAus(form.get());
        f->setGeometry(10, 40, 800, 400);
        f->SetParameterListe(liste);
        f->SetAnalogAusgang(ausgang);
        f->SetwizParaSource(table);
        load(f);
        f->show();
        QApplication::processEvents();
        return f;
    }
    // Types into an edit as a user does: select all, type, each key released.
    void type(QLineEdit *edit, const QString &text)
    {
        enter(edit);
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }
    void source(TAnalogAus *f, const QString &text) { f->P_Quelle->SetText(text); }
};

} // namespace

// --- binding ----------------------------------------------------------------------------------

TEST_F(AnalogOut, EachOutputBindsItsOwnRowsAndInactiveHidesTheFrame)
{
    TAnalogAus *f = make(AnalogAus1);
    EXPECT_EQ(f->P_Quelle->GetKoordinate(), "F40");
    EXPECT_EQ(f->P_Offset->GetKoordinate(), "F41");
    EXPECT_EQ(f->P_Faktor->GetKoordinate(), "F42");
    EXPECT_EQ(f->P_Tau->GetKoordinate(), "F43");
    EXPECT_EQ(f->P_Abs->GetKoordinate(), "F44");
    EXPECT_TRUE(f->isVisible());

    f->SetAnalogAusgang(AnalogAus2);
    EXPECT_EQ(f->P_Quelle->GetKoordinate(), "F50");
    EXPECT_EQ(f->P_Abs->GetKoordinate(), "F54");
    EXPECT_TRUE(f->P_Quelle->GetText().startsWith("E00"));

    f->SetAnalogAusgang(AnalogAus_inaktiv);
    EXPECT_EQ(f->P_Quelle->GetKoordinate(), "");
    EXPECT_FALSE(f->isVisible());
}

TEST_F(AnalogOut, WithoutATableNothingIsBoundOrComputed)
{
    auto *f = new TAnalogAus(form.get());
    f->SetAnalogAusgang(AnalogAus1);
    load(f);
    EXPECT_EQ(f->P_Quelle->GetKoordinate(), "$F40");
    f->Edit10V->setText("1000");
    f->Edit10VKeyUp(f->Edit10V);
    f->UpdateCustomEdits();
    EXPECT_EQ(f->Edit10V->text(), "1000");
    EXPECT_EQ(beeps(), 0);
    EXPECT_TRUE(messages().isEmpty());
}

// --- the output model -------------------------------------------------------------------------

TEST_F(AnalogOut, TypedValuesGiveFactorAndOffset)
{
    TAnalogAus *f = make();
    ASSERT_DOUBLE_EQ(f->GetFullScaleVal(table->GetRecNo("E14", false)), 3000);
    type(f->Edit10V, "3000");
    type(f->Edit0V, "0");
    EXPECT_EQ(f->P_Faktor->GetText(), "100.0");
    EXPECT_EQ(f->P_Offset->GetText(), "0.00");

    type(f->Edit10V, "1500");
    type(f->Edit0V, "-1500");
    EXPECT_EQ(f->P_Faktor->GetText(), "100.0");
    EXPECT_EQ(f->P_Offset->GetText(), "5.00");
    EXPECT_EQ(beeps(), 0); // the "-" alone is a number still being typed

    // Back from the drive's side: factor and offset give the two values again.
    leave();
    EXPECT_EQ(f->Edit10V->text(), "1500");
    EXPECT_EQ(f->Edit0V->text(), "-1500");
    f->P_Offset->SetText("0.00");
    f->P_Faktor->SetText("100.0");
    EXPECT_EQ(f->Edit10V->text(), "3000");
    EXPECT_EQ(f->Edit0V->text(), "0");
}

TEST_F(AnalogOut, EqualValuesChangeNothingAndSayNothing)
{
    TAnalogAus *f = make();
    f->Edit10V->setText("700");
    f->Edit0V->setText("700.0000001");
    f->Edit10VKeyUp(f->Edit0V);
    EXPECT_EQ(f->P_Faktor->GetText(), "100.0");
    EXPECT_EQ(f->P_Offset->GetText(), "0.00");
    EXPECT_EQ(beeps(), 0);
    f->UpdateCustomEdits();
    EXPECT_EQ(f->Edit10V->text(), "3000");
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(AnalogOut, KeysThatChangeNoTextMoveNothing)
{
    TAnalogAus *f = make();
    f->P_Faktor->SetText("-250.5");
    f->P_Offset->SetText("-10.00"); // shown as -2395 and -1198, rounded
    enter(f->Edit0V);
    QTest::keyClick(f->Edit0V, Qt::Key_Left);
    QTest::keyClick(f->Edit0V, Qt::Key_Shift);
    leave();
    EXPECT_EQ(f->P_Faktor->GetText(), "-250.5");
    EXPECT_EQ(f->P_Offset->GetText(), "-10.00");
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(AnalogOut, TextThatIsNoNumberBeepsAndChangesNothing)
{
    TAnalogAus *f = make();
    type(f->Edit10V, "1500x"); // each key release converts; "1500x" is no number
    EXPECT_EQ(beeps(), 1);
    EXPECT_EQ(f->P_Faktor->GetText(), "200.0");
    leave();
    EXPECT_EQ(f->Edit10V->text(), "1500");
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(AnalogOut, ZeroFullScaleBeepsAndChangesNothing)
{
    TAnalogAus *f = make();
    source(f, "E07"); // "30 A": no counts, so no full-scale value
    EXPECT_TRUE(f->LblError->isVisible());
    EXPECT_EQ(f->LblError->text(), f->P_Quelle->GetText().trimmed() + ": " + s_SkalingError);
    f->Edit10V->setText("10");
    f->Edit0V->setText("0");
    f->Edit10VKeyUp(f->Edit10V);
    EXPECT_EQ(beeps(), 1);
    EXPECT_EQ(f->P_Faktor->GetText(), "100.0");
}

TEST_F(AnalogOut, ACommaOrAPointIsTheDecimalSeparator)
{
    TAnalogAus *f = make(AnalogAus2); // E00: 16384 = 20 A, two decimals
    type(f->Edit10V, "10,5");
    type(f->Edit0V, "0.5");
    EXPECT_EQ(f->P_Faktor->GetText(), "200.0");
    EXPECT_EQ(f->P_Offset->GetText(), "-0.50");
    EXPECT_EQ(beeps(), 0);
}

TEST_F(AnalogOut, TheDrivesLimitsAdjustTypedValuesAndLeavingSaysSo)
{
    TAnalogAus *f = make();
    // 100 for 10 V and 0 for 0 V need 3000 %; at the drive's 1000 % the offset that comes
    // closest to both values is taken.
    type(f->Edit10V, "100");
    EXPECT_EQ(f->P_Faktor->GetText(), "1000.0");
    EXPECT_EQ(f->P_Offset->GetText(), "3.33");
    EXPECT_FALSE(f->Edit10V->toolTip().isEmpty());
    EXPECT_EQ(beeps(), 0);
    leave();
    const QStringList shown = messages();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first().startsWith(s_ValOutOfLims));
    EXPECT_TRUE(shown.first().contains("F42"));
    EXPECT_TRUE(shown.first().endsWith(s_ValAdjusted));
    EXPECT_EQ(f->Edit10V->text(), "200");
    EXPECT_EQ(f->Edit0V->text(), "-100");
    EXPECT_TRUE(f->Edit10V->toolTip().isEmpty());
}

TEST_F(AnalogOut, ValuesBelowTheSmallestStepAreRaisedToItButZeroStays)
{
    TAnalogAus *f = make(AnalogAus2); // E00: 20 A full scale, two decimals
    f->P_Faktor->SetText("1000.0");   // k = 2 A
    f->P_Offset->SetText("9.99");     // 10 V at 0.002 A, 0 V at -1.998 A
    EXPECT_EQ(f->Edit10V->text(), "0.01");
    EXPECT_EQ(f->Edit0V->text(), "-2.00");
    f->P_Offset->SetText("10.00"); // exactly 0 A for 10 V
    EXPECT_EQ(f->Edit10V->text(), "0.00");
    f->P_Offset->SetText("-9.99");
    EXPECT_EQ(f->Edit0V->text(), "2.00");
    f->P_Faktor->SetText("-1000.0");
    f->P_Offset->SetText("9.99"); // 10 V at -0.002 A keeps its sign
    EXPECT_EQ(f->Edit10V->text(), "-0.01");
}

TEST_F(AnalogOut, AZeroFactorLeavesNoValueForTenVolts)
{
    TAnalogAus *f = make();
    f->P_Faktor->SetText("0.0");
    EXPECT_EQ(f->Edit10V->text(), "");
    EXPECT_EQ(f->Edit0V->text(), "");
    EXPECT_EQ(beeps(), 0);
}

// Factor and offset written back as two values and typed again come back within one step
// of the source's decimals, over the factors and offsets the drive takes.
TEST_F(AnalogOut, RoundTripOverFactorsAndOffsets)
{
    struct Source
    {
        TAnalogAusgang out;
        const char *koord;
        double step;
    };
    for (const Source &s : {Source{AnalogAus1, "E14", 1.0}, Source{AnalogAus2, "E00", 0.01}}) {
        TAnalogAus *f = make(s.out);
        source(f, s.koord);
        for (double factor : {-1000.0, -250.5, -12.3, 12.3, 50.0, 100.0, 333.3, 999.9}) {
            for (double offset : {-10.0, -7.5, -0.01, 0.0, 0.5, 3.33, 9.99}) {
                f->P_Faktor->SetASFloat(factor);
                f->P_Offset->SetASFloat(offset);
                const QString shown10 = f->Edit10V->text(), shown0 = f->Edit0V->text();
                type(f->Edit10V, shown10);
                type(f->Edit0V, shown0);
                leave();
                const double back10 = StrToFloat(f->Edit10V->text());
                const double back0 = StrToFloat(f->Edit0V->text());
                EXPECT_NEAR(back10, StrToFloat(shown10), s.step * 1.0001)
                    << s.koord << " F=" << factor << " O=" << offset;
                EXPECT_NEAR(back0, StrToFloat(shown0), s.step * 1.0001)
                    << s.koord << " F=" << factor << " O=" << offset;
            }
        }
        delete f;
    }
    EXPECT_TRUE(messages().isEmpty());
}

// --- the source check -----------------------------------------------------------------------

TEST_F(AnalogOut, SourcesThatCannotBeScaledSayWhyInPlaceOfTheEditor)
{
    TAnalogAus *f = make();
    struct Case
    {
        const char *source;
        QString shown;
        bool editor;
    };
    const QList<Case> cases = {
        {"E14", QString(), true},
        {"E08", QString(), true}, // scaled by the reference speed
        {"E02", QString(), true}, // scaled by the motor's rated torque
        {"E09", "E09: Drehzahl Sollwert: " + s_ScaleReadDoc + ".", false},
        {"E05", s_AADataTypeI32Message, false}, // I32 whatever its scaling says
        {"E03", s_AAValueUndefined, false},
        {"E06", "E06: Kaputte Skalierung: " + s_SkalingError, false},
        {"XYZ99", "XYZ99: " + s_ParUnknown, false},
        {"Q1", QString(), false}, // too short to name a parameter
    };
    for (const Case &c : cases) {
        source(f, c.source);
        EXPECT_EQ(f->Panel1->isVisible(), c.editor) << c.source;
        EXPECT_EQ(f->LblError->isVisible(), !c.editor) << c.source;
        if (!c.editor) {
            EXPECT_EQ(f->LblError->text(), c.shown) << c.source;
        }
    }
    EXPECT_EQ(beeps(), 0);
}

TEST_F(AnalogOut, AnUnknownSourceHidesScalingFilterAndAbsoluteValue)
{
    TAnalogAus *f = make();
    source(f, "XYZ99");
    for (TParaClass *c : {f->P_Offset, f->P_Faktor, f->P_Tau, f->P_Abs})
        EXPECT_FALSE(c->isVisible()) << c->objectName().toStdString();
    source(f, "E14");
    for (TParaClass *c : {f->P_Offset, f->P_Faktor, f->P_Tau, f->P_Abs})
        EXPECT_TRUE(c->isVisible()) << c->objectName().toStdString();
    EXPECT_EQ(f->LblAnaAusDim10->text(), "Upm");
    EXPECT_EQ(f->LblAnaAusDim0->text(), "Upm");
}

// --- the source list ----------------------------------------------------------------------------

TEST_F(AnalogOut, TheSourceListOffersTheListedParametersAnOutputCanShow)
{
    TAnalogAus *f = make(AnalogAus1, "E14, E00;E05 E03 E17 E04 R04");
    // E17 (type B) and E04 (read level 4) are left out; E14 also on axis 2.
    EXPECT_EQ(items(f->P_Quelle),
              QStringList({"E14: Drehzahl Regelabweichung", "2.E14: Drehzahl Regelabweichung",
                           "E00: Motorstrom", "E05: Position Istwert", "E03: Zwischenkreisspannung",
                           "R04: Bezugsdrehzahl"}));
    EXPECT_EQ(f->P_Quelle->GetText(), "E14: Drehzahl Regelabweichung");

    table->SetMaxRLevel(4);
    f->SetParameterListe("E0*");
    EXPECT_EQ(
        items(f->P_Quelle),
        QStringList({"E00: Motorstrom", "E02: Drehmoment", "E03: Zwischenkreisspannung",
                     "E04: Geheimer Wert", "E05: Position Istwert", "E06: Kaputte Skalierung",
                     "E07: Null-Skalierung", "E08: Drehzahl Istwert", "E09: Drehzahl Sollwert"}));
}

TEST_F(AnalogOut, AnOddListTextOffersWhatItCanAndNothingElse)
{
    TAnalogAus *f = make(AnalogAus1, " ,;E1[ ** \n 9. .E 2.e1? E00.3 $E14 ");
    // "**" matches every coordinate; "2.e1?" adds nothing new; the others name nothing.
    EXPECT_TRUE(items(f->P_Quelle).contains("E00: Motorstrom"));
    EXPECT_TRUE(items(f->P_Quelle).contains("2.E14: Drehzahl Regelabweichung"));
    EXPECT_EQ(items(f->P_Quelle).removeDuplicates(), 0);
    f->SetParameterListe("E1[, 9., .E");
    EXPECT_TRUE(items(f->P_Quelle).isEmpty());
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(AnalogOut, ChoosingASourceFromTheListUpdatesTheEditor)
{
    TAnalogAus *f = make(AnalogAus1, "E14 E00 E09");
    auto *combo = qobject_cast<QComboBox *>(f->P_Quelle->GetEditControl());
    ASSERT_TRUE(combo);
    combo->setCurrentIndex(combo->findText("E00: Motorstrom"));
    EXPECT_EQ(f->LblAnaAusDim10->text(), "A");
    EXPECT_EQ(f->Edit10V->text(), "20.00");
    combo->setCurrentIndex(combo->findText("E09: Drehzahl Sollwert"));
    EXPECT_FALSE(f->Panel1->isVisible());
}

TEST_F(AnalogOut, LeavingTheSourceFieldWithAnUnknownParameterBringsBackTheLastOne)
{
    TAnalogAus *f = make(AnalogAus1, "E14 E00");
    auto *combo = qobject_cast<QComboBox *>(f->P_Quelle->GetEditControl());
    ASSERT_TRUE(combo && combo->isEditable());
    enter(combo);
    combo->lineEdit()->selectAll();
    QTest::keyClicks(combo, "Z77");
    EXPECT_EQ(f->LblError->text(), "Z77: " + s_ParUnknown);
    leave();
    EXPECT_EQ(messages(), QStringList({QString(s_ParamInvalid).replace("%s", "Z77")}));
    EXPECT_EQ(f->P_Quelle->GetText(), "E14: Drehzahl Regelabweichung");
    EXPECT_TRUE(f->Panel1->isVisible());

    enter(combo);
    combo->lineEdit()->selectAll();
    QTest::keyClicks(combo, "e00");
    leave();
    EXPECT_EQ(f->P_Quelle->GetText(), "E00: Motorstrom");
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(AnalogOut, TabRunsThroughTheFrameInReadingOrderAlsoAfterARebuild)
{
    TAnalogAus *f = make();
    for (int round = 0; round < 2; ++round) {
        QApplication::processEvents();
        enter(f->P_Quelle->GetEditControl());
        for (QWidget *next : {static_cast<QWidget *>(f->Edit10V), static_cast<QWidget *>(f->Edit0V),
                              f->P_Offset->GetEditControl(), f->P_Faktor->GetEditControl(),
                              f->P_Tau->GetEditControl()}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            EXPECT_EQ(QApplication::focusWidget(), next)
                << "round " << round << " at "
                << QApplication::focusWidget()->objectName().toStdString() << " in "
                << QApplication::focusWidget()->parentWidget()->objectName().toStdString();
        }
        goOnline(); // every field of the frame is made anew
    }
}

// --- online -------------------------------------------------------------------------------------

TEST_F(AnalogOut, OnlineEveryConvertedValueReachesTheDrive)
{
    TAnalogAus *f = make();
    goOnline();
    type(f->Edit10V, "1500");
    type(f->Edit0V, "-1500");
    leave();
    EXPECT_EQ(drive.value(drive.addressOf("F42")), "100.0");
    EXPECT_EQ(drive.value(drive.addressOf("F41")), "5.00");
    EXPECT_TRUE(drive.log().contains("F41 (0) = 5.00"));
    // After a switch of the online mode the rebuilt source field has its list again.
    EXPECT_GE(items(f->P_Quelle).size(), 2);
}

TEST_F(AnalogOut, TheValuesCanBeTypedOnlyWhereFactorAndOffsetCanBeChanged)
{
    TAnalogAus *f = make();
    EXPECT_FALSE(f->Edit10V->isReadOnly());
    goOnline(omRueckdoku); // read-back: nothing may be changed
    EXPECT_TRUE(f->Edit10V->isReadOnly());
    EXPECT_TRUE(f->Edit0V->isReadOnly());
    type(f->Edit10V, "1");
    EXPECT_EQ(f->P_Faktor->GetText(), "100.0");
    EXPECT_EQ(beeps(), 0);
    goOnline(omOffline);
    EXPECT_FALSE(f->Edit10V->isReadOnly());
    f->P_Faktor->SetwizEnabled(pReadOnly); // a form that shows the factor only
    EXPECT_TRUE(f->Edit0V->isReadOnly());
}

// --- a drive without analog outputs ---------------------------------------------------------

TEST_F(AnalogOut, ADriveWithoutLowerOptionBoardHidesFrameAndWizardPage)
{
    setValue("E58", "");
    auto *pages = new TwizPageControl(form.get());
    auto *tree = new TwizTreeView(form.get());
    pages->SetwizTreeView(tree);
    auto *first = new QWidget;
    auto *outputs = new QWidget;
    pages->addTab(first, "Allgemein");
    pages->addTab(outputs, "Analogausgang");
    pages->UpdateTreeView(true);
    ASSERT_EQ(tree->topLevelItemCount(), 2);

    auto *f = new TAnalogAus(outputs);
    f->SetAnalogAusgang(AnalogAus1);
    f->SetwizParaSource(table);
    load(f);
    EXPECT_TRUE(f->isHidden());
    EXPECT_EQ(outputs->property("Tag").toInt(), 1);
    EXPECT_EQ(tree->topLevelItemCount(), 1);

    // A slot reported as dashes is empty too.
    setValue("E58", "---");
    auto *second = new TAnalogAus(outputs);
    second->SetAnalogAusgang(AnalogAus2);
    second->SetwizParaSource(table);
    load(second);
    EXPECT_TRUE(second->isHidden());

    // Once per frame: a board reported later does not bring it back.
    setValue("E58", "KBQ 7700");
    f->HideIfNoOutputs();
    EXPECT_TRUE(f->isHidden());
}

// --- language -----------------------------------------------------------------------------------

TEST_F(AnalogOut, CaptionsFollowTheTablesLanguageAndTheReasonStays)
{
    languageFile(2, "[ComStr]\r\ns64=I32 value: the upper 16 bits are output\r\n"
                    "[TAnalogAus]\r\ncLblAnAusgang=Analog output:\r\ncLblError=Error:\r\n");
    TAnalogAus *f = make();
    source(f, "E05");
    table->SetLanguage(2); // the host chooses the language after loading
    languageChanged();
    EXPECT_EQ(f->LblAnAusgang->text(), "Analog output:");
    EXPECT_EQ(f->LblError->text(), "I32 value: the upper 16 bits are output");
}
