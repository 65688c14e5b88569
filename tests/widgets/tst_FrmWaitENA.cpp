#include "support/testing.h"
#include "widgets/FrmWaitENA.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace drivewiz;

class WaitForEnableTest : public testing::Test
{
protected:
    void TearDown() override { delete FrmWaitForEnable; }
};

TEST_F(WaitForEnableTest, AbortOnlySetsTheFlagAndShowingAgainClearsIt)
{
    TFrmWaitForEnable *dialog = WaitForEnableDialog();
    EXPECT_EQ(WaitForEnableDialog(), dialog);
    dialog->Label1->setText("Bitte Freigabe ausschalten");
    dialog->show();
    EXPECT_FALSE(dialog->aborted());

    QTest::mouseClick(dialog->BitBtn1, Qt::LeftButton);
    EXPECT_TRUE(dialog->aborted());
    EXPECT_TRUE(dialog->isVisible()); // the caller closes it

    dialog->close();
    EXPECT_FALSE(dialog->isVisible());
    dialog->show();
    EXPECT_FALSE(dialog->aborted());
}

TEST_F(WaitForEnableTest, EscapeAbortsWithoutClosing)
{
    TFrmWaitForEnable *dialog = WaitForEnableDialog();
    dialog->show();
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog->aborted());
    EXPECT_TRUE(dialog->isVisible());
}
