// The system inputs frame, the input viewer and the source-selector introduction.

#include "ioframes_fixture.h"

#include "ioframes/AE.h"
#include "ioframes/AllInputViewer.h"
#include "ioframes/BE.h"
#include "ioframes/QuellSelectIntro.h"
#include "ioframes/SystemBEs.h"

#include <QCheckBox>
#include <QLabel>

using namespace drivewiz;

class InputOverview : public InputForm
{
protected:
    TAllInputViewer *viewer()
    {
        auto *v = new TAllInputViewer(form.get());
        v->SetwizParaSource(table);
        v->resize(400, 200);
        return v;
    }
};

TEST_F(InputOverview, TheSystemFrameHoldsTheSixFixedInputs)
{
    TSystemBEsFrame frame(form.get());
    frame.SetwizParaSource(table);
    const char *expected[][3] = {{"A60", "A300", "0"}, {"A61", "A301", "1"}, {"A62", "A302", "2"},
                                 {"A63", "A303", "3"}, {"A64", "A304", "4"}, {"F100", "F300", "6"}};
    const QList<TBEinput *> inputs = frame.Inputs();
    ASSERT_EQ(inputs.size(), 6);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(inputs[i]->wizKoordinate(), QLatin1String(expected[i][0]));
        EXPECT_EQ(inputs[i]->wizAnzeigeParName(), QLatin1String(expected[i][1]));
        EXPECT_EQ(inputs[i]->wizBusParName(), QStringLiteral("A180"));
        EXPECT_EQ(inputs[i]->wizBusParBit(), QByteArray(expected[i][2]).toInt());
        EXPECT_EQ(inputs[i]->wizParaSource(), table);
    }
    EXPECT_EQ(frame.LblEingangFrg->text(),
              QStringLiteral("Eingang \"Freigabe\" (immer angeschlossen)"));
    EXPECT_EQ(frame.BEinput7->objectName(), QStringLiteral("BEinput7"));
}

TEST_F(InputOverview, TheSystemFrameLaysItsRowsOutInOneColumn)
{
    auto *frame = new TSystemBEsFrame(form.get());
    frame->SetwizParaSource(table);
    frame->SetwizParControlLeft(150);
    frame->resize(520, 240);
    frame->show();
    settle();
    // A63, A64 and F100 are not in this drive: their rows go, the others close up.
    QList<TBEinput *> shown;
    for (TBEinput *input : frame->Inputs()) {
        if (!input->isHidden()) shown << input;
    }
    ASSERT_EQ(shown.size(), 3);
    for (int i = 0; i < shown.size(); ++i) {
        EXPECT_EQ(shown[i]->width(), 520);
        EXPECT_GE(shown[i]->wizControlLeft(), 150);
        EXPECT_GE(shown[i]->wizControlLeft(), shown[i]->NeededControlLeft());
        EXPECT_EQ(shown[i]->wizControlLeft(), shown[0]->wizControlLeft());
        if (i > 0) {
            EXPECT_GE(shown[i]->y(), shown[i - 1]->geometry().bottom());
        }
    }
    EXPECT_GT(shown[0]->y(), frame->LblEingangFrg->geometry().bottom());
    EXPECT_GE(frame->sizeHint().height(), shown.last()->geometry().bottom());
    useLanguage(2, "[TSystemBEsFrame]\r\ncLblEingangFrg=Input \"Enable\" (always connected)\r\n");
    frame->UpdateLanguage();
    EXPECT_EQ(frame->LblEingangFrg->text(), QStringLiteral("Input \"Enable\" (always connected)"));
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(InputOverview, TheViewerListsEachUsedInputWithItsFunctions)
{
    binaryInput(QStringLiteral("A60"), QStringLiteral("A310"), 0); // 3: BE1
    binaryInput(QStringLiteral("A61"), QStringLiteral("A311"), 1); // 4: BE1 invers
    binaryInput(QStringLiteral("A62"), QStringLiteral("A312"), 2); // 2: bus bit, no input
    auto *frame = new TAnalogEin(form.get());
    auto *analog = new TAEinput(form.get());
    analog->SetwizKoordinate(QStringLiteral("I130"));
    analog->SetwizAE(frame);
    analog->SetwizParaSource(table);
    analog->Loaded();
    TAllInputViewer *v = viewer();
    v->MyUpdate();
    EXPECT_EQ(v->BinaryUses().keys(), QList<int>{1});
    EXPECT_EQ(v->BinaryUses().value(1),
              QStringLiteral("Schnellhalt (A60); Quittierung (A61, invers);"));
    EXPECT_EQ(v->AnalogUses().value(1), QStringLiteral("Analogsollwert (I130);"));
    EXPECT_EQ(v->toPlainText(), QStringLiteral("Verwendete Binäreingänge:\nBE 1: \t"
                                               "Schnellhalt (A60); Quittierung (A61, invers);\n\n"
                                               "Verwendete Analogeingänge:\nAE 1: \t"
                                               "Analogsollwert (I130);"));
    EXPECT_EQ(v->document()->defaultFont().family(), QStringLiteral("Arial"));
}

TEST_F(InputOverview, TheViewerSkipsSuppressedInputsAndDisagreeingSources)
{
    TBEinput *hidden = binaryInput(QStringLiteral("A60"), QStringLiteral("A310"), 0);
    hidden->SetSuppressInInutViewer(true);
    binaryInput(QStringLiteral("A69"), QStringLiteral("A311"), 1); // "5: BE1": index 5 is BE2
    TAllInputViewer *v = viewer();
    v->show(); // showing refreshes
    EXPECT_TRUE(v->BinaryUses().isEmpty());
    EXPECT_EQ(v->toPlainText(), QStringLiteral("Verwendete Binäreingänge:\n"
                                               "Es wird kein BE-Eingang verwendet.\n\n"
                                               "Verwendete Analogeingänge:\n"
                                               "Es wird kein AE-Eingang verwendet."));
    hidden->SetSuppressInInutViewer(false);
    v->hide();
    v->show();
    EXPECT_EQ(v->BinaryUses().value(1), QStringLiteral("Schnellhalt (A60);"));
}

TEST_F(InputOverview, TheViewersHeadingsAndTheIntroductionAreTranslated)
{
    useLanguage(2, "[TAllInputViewer]\r\ns1=Binary inputs in use:\r\ns4=No analog input.\r\n"
                   "[TQuellSelektorIntro]\r\ncLabel1=Choose a source.\r\n");
    TAllInputViewer *v = viewer();
    v->UpdateLanguage();
    v->MyUpdate();
    EXPECT_EQ(v->Texts().at(0), QStringLiteral("Binary inputs in use:"));
    EXPECT_EQ(v->Texts().at(1), QStringLiteral("Es wird kein BE-Eingang verwendet."));
    EXPECT_TRUE(v->toPlainText().endsWith(QStringLiteral("No analog input.")));

    TQuellSelektorIntro intro(form.get());
    const QString german = intro.Label1->text();
    EXPECT_TRUE(german.startsWith(QStringLiteral("Wählen Sie")));
    intro.UpdateLanguage(nullptr); // no table: the text stays
    EXPECT_EQ(intro.Label1->text(), german);
    intro.UpdateLanguage(table);
    EXPECT_EQ(intro.Label1->text(), QStringLiteral("Choose a source."));
    intro.show();
    intro.resize(200, 10);
    EXPECT_GE(intro.height(), intro.Label1->heightForWidth(intro.Label1->width()));
}
