#include "platform/colors.h"

#include <gtest/gtest.h>

using namespace drivewiz;

TEST(Colors, RgbValuesAreBlueGreenRed)
{
    EXPECT_EQ(ColorToQColor(clRed), QColor(255, 0, 0));
    EXPECT_EQ(ColorToQColor(clNavy), QColor(0, 0, 128));
    EXPECT_EQ(ColorToQColor(clSkyBlue), QColor(0xA6, 0xCA, 0xF0));
    EXPECT_EQ(ColorToQColor(0x123456), QColor(0x56, 0x34, 0x12));
    EXPECT_EQ(QColorToColor(QColor(0x56, 0x34, 0x12)), 0x123456);
    for (TColor c :
         {clBlack, clMaroon, clGreen, clOlive, clPurple, clTeal, clGray, clSilver, clLime, clYellow,
          clBlue, clFuchsia, clAqua, clWhite, clMoneyGreen, clCream, clMedGray})
        EXPECT_EQ(QColorToColor(ColorToQColor(c)), c) << std::hex << c;
    EXPECT_EQ(QColorToColor(QColor(10, 20, 30, 128)), 0x1E140A); // alpha is dropped
}

TEST(Colors, SystemColorsComeFromThePalette)
{
    EXPECT_EQ(quint32(clWindow), 0xFF000005u);
    EXPECT_EQ(quint32(clMenuBar), 0xFF00001Eu);
    QPalette pal;
    pal.setColor(QPalette::Base, QColor(1, 1, 1));
    pal.setColor(QPalette::Window, QColor(2, 2, 2));
    pal.setColor(QPalette::Text, QColor(3, 3, 3));
    pal.setColor(QPalette::Button, QColor(4, 4, 4));
    pal.setColor(QPalette::ButtonText, QColor(5, 5, 5));
    pal.setColor(QPalette::ToolTipBase, QColor(6, 6, 6));
    pal.setColor(QPalette::ToolTipText, QColor(7, 7, 7));
    pal.setColor(QPalette::Highlight, QColor(8, 8, 8));
    pal.setColor(QPalette::Disabled, QPalette::Text, QColor(9, 9, 9));
    EXPECT_EQ(ColorToQColor(clWindow, pal), QColor(1, 1, 1));
    EXPECT_EQ(ColorToQColor(clMenu, pal), QColor(2, 2, 2));
    EXPECT_EQ(ColorToQColor(clWindowText, pal), QColor(3, 3, 3));
    EXPECT_EQ(ColorToQColor(clBtnFace, pal), QColor(4, 4, 4));
    EXPECT_EQ(ColorToQColor(clBtnText, pal), QColor(5, 5, 5));
    EXPECT_EQ(ColorToQColor(clInfoBk, pal), QColor(6, 6, 6));
    EXPECT_EQ(ColorToQColor(clInfoText, pal), QColor(7, 7, 7));
    EXPECT_EQ(ColorToQColor(clHighlight, pal), QColor(8, 8, 8));
    EXPECT_EQ(ColorToQColor(clGrayText, pal), QColor(9, 9, 9));
    for (int i = 0; i <= 30; ++i)
        EXPECT_EQ(ColorToQColor(clSystemColor | i, pal).isValid(), i != 25) << i;
    EXPECT_FALSE(ColorToQColor(clSystemColor | 31, pal).isValid());
    EXPECT_TRUE(ColorToQColor(clBtnFace).isValid()); // the application palette
}

TEST(Colors, NoneAndDefaultAreNotColours)
{
    EXPECT_EQ(ColorToQColor(clNone).alpha(), 0);
    EXPECT_FALSE(ColorToQColor(clDefault).isValid());
    EXPECT_EQ(QColorToColor(QColor()), clDefault);
    EXPECT_EQ(QColorToColor(QColor(Qt::transparent)), clNone);
}
