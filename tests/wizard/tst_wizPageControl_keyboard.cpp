// The wizard with the keyboard only: what the user chose or typed in the field that still
// has the focus when the wizard ends.

#include "pagectl_fixture.h"

#include "widgets/wizCombo.h"

using namespace drivewiz;

using KeyboardOnly = WizardForm;

TEST_F(KeyboardOnly, OkByKeyWritesTheChoiceOfTheFocusedField)
{
    hostMode(omOnline);
    pc->MoveTo(page(1));
    auto *combo = qobject_cast<TwizComboBox *>(control(QStringLiteral("A12"))->GetEditControl());
    ASSERT_NE(combo, nullptr);
    combo->setFocus(Qt::TabFocusReason);
    QTest::keyClick(combo, Qt::Key_Down); // the list never opens
    drive.clearLog();
    pc->SaveAndClose(); // a key that presses OK leaves the focus where it is
    EXPECT_EQ(drive.log(), QStringList({"A12 (1) = 2: auto"}));
    EXPECT_FALSE(form->isVisible());
}

TEST_F(KeyboardOnly, OkByKeyChecksTheTypedValueBeforeSaving)
{
    table->SetCallbacks(sim::SimulatedDrive::callbacks());
    QLineEdit *e = edit(QStringLiteral("A10"));
    e->setFocus(Qt::TabFocusReason);
    e->selectAll();
    QTest::keyClicks(e, QStringLiteral("500"));
    drive.clearLog();
    pc->SaveAndClose();
    EXPECT_EQ(messages().size(), 1); // the limit message
    EXPECT_TRUE(drive.log().contains(QStringLiteral("A10 (1) = 100")));
    EXPECT_FALSE(drive.log().contains(QStringLiteral("A10 (1) = 500")));
}

TEST_F(KeyboardOnly, EnterThatEndsTheWizardKeepsTheFocusedChoice)
{
    hostMode(omOnline);
    pc->MoveTo(page(1));
    auto *combo = qobject_cast<TwizComboBox *>(control(QStringLiteral("A12"))->GetEditControl());
    combo->setFocus(Qt::TabFocusReason);
    QTest::keyClick(combo, Qt::Key_Up);
    drive.clearLog();
    test::recorder().answer(int(mrYes));
    QTest::keyClick(combo, Qt::Key_Return); // "end the wizard? (changes are kept)"
    EXPECT_EQ(messages().size(), 1);
    EXPECT_EQ(drive.log(), QStringList({"A12 (1) = 0: aus"}));
}
