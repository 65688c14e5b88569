#include "platform/screen.h"

#include <gtest/gtest.h>

using namespace drivewiz;

TEST(Screen, PixelsPerInchCanBeFixedForTests)
{
    EXPECT_GT(ScreenPixelsPerInch(), 0);
    SetScreenPixelsPerInchOverride(120);
    EXPECT_EQ(ScreenPixelsPerInch(), 120);
    SetScreenPixelsPerInchOverride(0);
    EXPECT_NE(ScreenPixelsPerInch(), 0);
}
