#include "platform/dialogs.h"
#include "support/testing.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

using namespace drivewiz;

TEST(DialogRecorder, KeepsTextsAndAnswersFromTheScript)
{
    auto &rec = test::recorder();
    ShowMessage(QStringLiteral("Hallo"));
    rec.answer(int(mrNo));
    EXPECT_EQ(MessageDlg(QStringLiteral("Sicher?"), MsgDlgType::Confirmation, mbYesNo), mrNo);
    // Without a scripted answer the first button in dialog order is taken, like Enter.
    EXPECT_EQ(MessageDlg(QStringLiteral("Weiter?"), MsgDlgType::Confirmation, mbYesNoCancel),
              mrYes);
    EXPECT_EQ(MessageDlg(QStringLiteral("Fehler"), MsgDlgType::Error, mbCancel), mrCancel);
    Beep();
    EXPECT_EQ(rec.messages(), QStringList({"Hallo", "Sicher?", "Weiter?", "Fehler"}));
    EXPECT_EQ(rec.beeps(), 1);
    EXPECT_EQ(rec.entries()[1].type, MsgDlgType::Confirmation);
    EXPECT_EQ(rec.takeMessages().size(), 4);
    ShowMessage(QStringLiteral("danach"));
    EXPECT_EQ(rec.takeMessages(), QStringList({"danach"}));
}

TEST(DialogRecorder, InputBoxKeepsDefaultOnCancel)
{
    auto &rec = test::recorder();
    rec.answer(QStringLiteral("B33"));
    EXPECT_EQ(
        InputBox(QStringLiteral("Koordinate"), QStringLiteral("Eingabe"), QStringLiteral("A00")),
        QStringLiteral("B33"));
    rec.answer(QVariant()); // cancel
    EXPECT_EQ(
        InputBox(QStringLiteral("Koordinate"), QStringLiteral("Eingabe"), QStringLiteral("A00")),
        QStringLiteral("A00"));
    QString value = QStringLiteral("x");
    rec.answer(QVariant());
    EXPECT_FALSE(InputQuery(QStringLiteral("c"), QStringLiteral("p"), value));
    EXPECT_EQ(value, QStringLiteral("x"));
    EXPECT_EQ(rec.entries().size(), 3u);
    EXPECT_EQ(rec.entries()[0].caption, QStringLiteral("Koordinate"));
}

TEST(DialogRecorder, FileDialogsAnswerScriptedNamesOrCancel)
{
    auto &rec = test::recorder();
    rec.answer(QStringLiteral("/tmp/a.csv"));
    EXPECT_EQ(dialogService()->getSaveFileName("Export", "/tmp", "*.csv"), "/tmp/a.csv");
    EXPECT_TRUE(dialogService()->getOpenFileName("Import", "/tmp", "*.csv").isEmpty());
}

TEST(DialogGuard, RealModalDialogFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(QtDialogService().showMessage(QStringLiteral("echt")),
                            "a real modal dialog opened: echt");
}
