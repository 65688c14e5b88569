#include "support/testing.h"
#include "widgets/wizCombo.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QSignalSpy>
#include <QTest>

using namespace drivewiz;

class WizComboTest : public testing::Test
{
protected:
    void SetUp() override
    {
        combo.addItems(
            {QStringLiteral("0: Aus"), QStringLiteral("1: Ein"), QStringLiteral("2: Automatik")});
        combo.OnDropDown = [this](QObject *sender) {
            log << QStringLiteral("down%1").arg(listShown() ? " shown" : "");
            EXPECT_EQ(sender, &combo);
        };
        combo.OnCloseUp = [this](QObject *sender) {
            log << QStringLiteral("up at %1").arg(combo.currentIndex());
            EXPECT_EQ(sender, &combo);
        };
        combo.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&combo));
    }

    bool listShown() const { return combo.view()->window()->isVisible(); }
    static void settle()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }

    TwizComboBox combo;
    QStringList log;
};

TEST_F(WizComboTest, EachOpeningAndClosingIsReportedOnce)
{
    QSignalSpy dropped(&combo, &TwizComboBox::droppedDown);
    QSignalSpy closed(&combo, &TwizComboBox::closedUp);
    combo.showPopup();
    combo.showPopup();
    EXPECT_TRUE(listShown());
    combo.hidePopup();
    EXPECT_FALSE(listShown());
    combo.hidePopup();
    settle();
    combo.hidePopup();
    combo.hide();
    settle();
    EXPECT_EQ(log, QStringList({QStringLiteral("down"), QStringLiteral("up at 0")}));
    EXPECT_EQ(dropped.count(), 1);
    EXPECT_EQ(closed.count(), 1);
}

TEST_F(WizComboTest, TheDropDownHandlerCanFillAnEmptyList)
{
    combo.clear();
    combo.OnDropDown = [this](QObject *) { combo.addItem(QStringLiteral("7: (none)")); };
    combo.showPopup();
    EXPECT_TRUE(listShown());
}

TEST_F(WizComboTest, TheCloseUpSeesTheChosenItem)
{
    combo.showPopup();
    combo.view()->setCurrentIndex(combo.model()->index(2, 0));
    QTest::keyClick(combo.view(), Qt::Key_Return);
    settle();
    EXPECT_EQ(log, QStringList({QStringLiteral("down"), QStringLiteral("up at 2")}));

    combo.showPopup();
    QTest::keyClick(combo.view(), Qt::Key_Escape);
    combo.showPopup();
    combo.view()->window()->close(); // as a click outside or losing the focus does
    settle();
    EXPECT_EQ(log.mid(2), QStringList({QStringLiteral("down"), QStringLiteral("up at 2"),
                                       QStringLiteral("down"), QStringLiteral("up at 2")}));
}
