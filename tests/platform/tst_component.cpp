#include "platform/component.h"

#include <gtest/gtest.h>

using namespace drivewiz;

namespace {
class Loader : public Component
{
public:
    int loadedCalls = 0;
    void Loaded() override
    {
        Component::Loaded();
        ++loadedCalls;
    }
};
} // namespace

TEST(Component, LoadedClearsLoadingAndReadingOnly)
{
    Loader c;
    EXPECT_EQ(c.componentState(), ComponentState());
    c.setComponentState(csLoading | csReading | csDesigning);
    EXPECT_TRUE(c.isLoading());
    EXPECT_TRUE(c.isDesigning());
    c.Loaded();
    EXPECT_EQ(c.loadedCalls, 1);
    EXPECT_FALSE(c.isLoading());
    EXPECT_EQ(c.componentState(), ComponentState(csDesigning));
}

TEST(Component, FlagsAreAddedAndRemovedIndividually)
{
    Component c;
    c.addComponentState(csDestroying);
    c.addComponentState(csReading);
    c.removeComponentState(csDestroying);
    EXPECT_EQ(c.componentState(), ComponentState(csReading));
    EXPECT_FALSE(c.isDesigning());
    EXPECT_EQ(int(csLoading | csReading | csDesigning | csDestroying), 15);
}

TEST(Component, ApplicationTagIsLibraryWide)
{
    EXPECT_EQ(ApplicationTag(), 0);
    SetApplicationTag(999);
    EXPECT_EQ(ApplicationTag(), 999);
    SetApplicationTag(0);
}
