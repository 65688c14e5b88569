// The analog input frame and the analog input that drives it.

#include "ioframes_fixture.h"

#include "ioframes/AE.h"
#include "ioframes/BE.h"
#include "lang/wizSprache.h"
#include "widgets/wizCombo.h"

#include <QApplication>
#include <QLabel>
#include <QTabWidget>

using namespace drivewiz;

class AnalogFrame : public InputForm
{
protected:
    TAnalogEin *frame()
    {
        auto *f = new TAnalogEin(form.get());
        f->setObjectName(QStringLiteral("AnalogEin1"));
        f->SetwizParaSource(table);
        f->show();
        return f;
    }
    TAEinput *analogInput(TAnalogEin *f)
    {
        auto *input = new TAEinput(form.get());
        input->SetwizKoordinate(QStringLiteral("I130"));
        input->SetwizBusParName(QStringLiteral("I210"));
        input->SetwizParFaktor(QStringLiteral("$I70"));
        input->SetwizAnzeigeParName(QStringLiteral("I330"));
        input->SetwizQuellAnzeigParName(QStringLiteral("I331"));
        input->SetwizAE(f);
        input->SetwizParaSource(table);
        input->show();
        input->Loaded();
        return input;
    }
    void choose(TInput *input, int key)
    {
        auto *combo = qobject_cast<TwizComboBox *>(input->P_Quelle->GetEditControl());
        combo->showPopup();
        combo->setCurrentIndex(key); // I130's keys are its positions
        combo->hidePopup();
        QApplication::setActiveWindow(form.get()); // the list's window had the focus
        settle();
    }
};

TEST_F(AnalogFrame, TheTableReachesEveryControlInsideAndTheFormsCoordinatesStand)
{
    TAnalogEin *f = frame();
    for (int page = 1; page <= 4; ++page) {
        for (int role = TAnalogEin::Pegel; role <= TAnalogEin::QuellAnzeige; ++role) {
            TParaClass *c = f->Control(page, TAnalogEin::Role(role));
            ASSERT_TRUE(c) << page << " " << role;
            EXPECT_EQ(c->wizParaSource(), table);
            EXPECT_TRUE(c->GetEditControl()) << c->objectName().toStdString();
        }
    }
    EXPECT_EQ(f->Control(3, TAnalogEin::Pegel)->GetKoordinate(), QStringLiteral("E74"));
    EXPECT_EQ(f->Control(2, TAnalogEin::Offset)->GetKoordinate(), QStringLiteral("F21"));
    EXPECT_EQ(f->Control(4, TAnalogEin::Faktor)->GetKoordinate(), QStringLiteral("F12"));
    EXPECT_EQ(f->Control(4, TAnalogEin::Faktor2)->GetKoordinate(), QStringLiteral("I70"));
    EXPECT_EQ(f->Label(2, QStringLiteral("LblQuelleWahl"))->text(), QStringLiteral("2:AE2"));
    EXPECT_EQ(f->Label(4, QStringLiteral("LblQuelleWahl"))->text(), QStringLiteral("1:AE1"));
    EXPECT_TRUE(f->PageControl1->tabBar()->isHidden());
}

TEST_F(AnalogFrame, WizAEChoosesThePageAndZeroHidesTheFrame)
{
    TAnalogEin *f = frame();
    f->SetwizAE(3);
    EXPECT_EQ(f->PageControl1->currentIndex(), 2);
    f->SetwizAE(4);
    EXPECT_EQ(f->PageControl1->currentIndex(), 3);
    f->SetwizAE(9);
    EXPECT_EQ(f->wizAE(), 5); // page count + 1 at most
    EXPECT_EQ(f->PageControl1->currentIndex(), 3);
    f->SetwizAE(0);
    EXPECT_TRUE(f->isHidden());
    f->SetwizAE(-2);
    EXPECT_EQ(f->wizAE(), 0);
    f->SetwizAE(1);
    EXPECT_FALSE(f->isHidden());
}

TEST_F(AnalogFrame, TheChosenPathCanBeSetUpAndTheOtherOneOnlySeen)
{
    TAnalogEin *f = frame();
    f->SetAEParams(2, QStringLiteral("I130"), QStringLiteral("I210"), QStringLiteral("I70"),
                   QStringLiteral("x"), QStringLiteral("I330"), QStringLiteral("I331"));
    const auto enabled = [f](int page, TAnalogEin::Role role) {
        return f->Control(page, role)->GetEditControl()->isEnabled();
    };
    EXPECT_TRUE(enabled(2, TAnalogEin::Offset));
    EXPECT_TRUE(enabled(2, TAnalogEin::Faktor));
    EXPECT_FALSE(enabled(2, TAnalogEin::FeldbusPar));
    EXPECT_FALSE(enabled(2, TAnalogEin::Anzeige));
    EXPECT_EQ(f->Label(2, QStringLiteral("LblQuelle"))->text(), QStringLiteral("I130"));
    EXPECT_EQ(f->Label(2, QStringLiteral("LblQuelle"))->toolTip(),
              QStringLiteral("Analogsollwert Quelle"));
    f->SetAEParams(4, QStringLiteral("I130"), QStringLiteral("I210"), QStringLiteral("I70"),
                   QStringLiteral("x"), QStringLiteral("I330"), QStringLiteral("I331"));
    EXPECT_FALSE(enabled(4, TAnalogEin::Offset));
    EXPECT_TRUE(enabled(4, TAnalogEin::FeldbusPar));
    EXPECT_TRUE(f->Label(4, QStringLiteral("LblUnknownPar"))->isHidden());
    f->SetAEParams(5, QStringLiteral("X"), QString(), QString(), QString(), QString(), QString());
    EXPECT_EQ(f->Label(4, QStringLiteral("LblQuelle"))->text(), QStringLiteral("I130"));
}

TEST_F(AnalogFrame, PlainTextsStandInForParametersAndUnknownOnesAreNamedNotReported)
{
    TAnalogEin *f = frame();
    f->SetAEParams(1, QStringLiteral("I130"), QStringLiteral("I210"), QStringLiteral("2,5"),
                   QStringLiteral("*"), QStringLiteral("I399"), QString());
    EXPECT_TRUE(f->Control(1, TAnalogEin::Faktor2)->isHidden());
    EXPECT_FALSE(f->Label(1, QStringLiteral("Label1"))->isHidden());
    EXPECT_EQ(f->Label(1, QStringLiteral("Label1"))->text(), QStringLiteral("* 2,5"));
    EXPECT_TRUE(f->Label(1, QStringLiteral("LabelFaktorZeichen"))->isHidden());
    EXPECT_TRUE(f->Control(1, TAnalogEin::Anzeige)->isHidden());
    QLabel *unknown = f->Label(1, QStringLiteral("LblUnknownPar"));
    EXPECT_FALSE(unknown->isHidden());
    EXPECT_EQ(unknown->text(), s_ParUnknown + QStringLiteral(": I399"));
    // An empty display text keeps the form's I331; a plain one hides it with a note.
    EXPECT_FALSE(f->Control(1, TAnalogEin::QuellAnzeige)->isHidden());
    EXPECT_TRUE(f->Label(1, QStringLiteral("LblNoQuellAnzeigePar"))->isHidden());
    f->SetAEParams(1, QStringLiteral("I130"), QString(), QStringLiteral("$I70"), QString(),
                   QStringLiteral("I330"), QStringLiteral("-"));
    EXPECT_TRUE(f->Control(1, TAnalogEin::QuellAnzeige)->isHidden());
    EXPECT_FALSE(f->Label(1, QStringLiteral("LblNoQuellAnzeigePar"))->isHidden());
    EXPECT_FALSE(f->Control(1, TAnalogEin::Faktor2)->isHidden());
    EXPECT_EQ(f->Label(1, QStringLiteral("LabelFaktorZeichen"))->text(), QStringLiteral("x"));
    EXPECT_TRUE(f->Label(1, QStringLiteral("LblUnknownPar"))->isHidden());
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(AnalogFrame, TheAnalogInputShowsThePathOfItsSource)
{
    TAnalogEin *f = frame();
    TAEinput *input = analogInput(f);
    EXPECT_EQ(input->Kind(), ikAE);
    EXPECT_EQ(f->PageControl1->currentIndex(), 0); // "1: AE1"
    EXPECT_EQ(input->GetKlemmeninfo(),
              QStringLiteral("Analogeingang AE1\nKlemme X100 Pins 1(+)  3(-)"));
    choose(input, 3);
    EXPECT_EQ(f->PageControl1->currentIndex(), 2);
    EXPECT_EQ(input->GetKlemmeninfo(),
              QStringLiteral("Analogeingang AE3\nKlemme X102 Pins 1(+)  2(-)"));
    choose(input, 4);
    EXPECT_EQ(f->PageControl1->currentIndex(), 3);
    EXPECT_TRUE(f->Control(4, TAnalogEin::FeldbusPar)->GetEditControl()->isEnabled());
    choose(input, 0);
    EXPECT_TRUE(f->isHidden());
    EXPECT_TRUE(input->ImgArrow->isHidden());
    choose(input, 2);
    EXPECT_FALSE(f->isHidden());
    EXPECT_FALSE(input->ImgArrow->isHidden());
    input->ArrowClick();
    EXPECT_TRUE(f->Control(2, TAnalogEin::Offset)->GetEditControl()->hasFocus());
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(AnalogFrame, CaptionsComeFromTheLanguageFile)
{
    TAnalogEin *f = frame();
    useLanguage(2, "[TAnalogEin]\r\ncAE1Label200Proz=200% max\r\n");
    f->UpdateLanguage();
    EXPECT_EQ(f->Label(1, QStringLiteral("Label200Proz"))->text(), QStringLiteral("200% max"));
    EXPECT_EQ(f->Label(2, QStringLiteral("Label200Proz"))->text(), QStringLiteral("200% max."));
}
