#include "platform/linux/desktop/kde_animations.h"

#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(KdeAnimationsTest, TheFactorStandsInTheGroupOfTheDesktop)
{
    EXPECT_EQ(animationFactor("[General]\nfont=x\n\n[KDE]\nAnimationDurationFactor=0\n"), 0.0);
    EXPECT_EQ(animationFactor("[KDE]\nSingleClick=false\nAnimationDurationFactor=0.5"), 0.5);
}

TEST(KdeAnimationsTest, TheSameKeyInAnotherGroupIsAnotherSetting)
{
    EXPECT_EQ(animationFactor("[KDE]\n[Other]\nAnimationDurationFactor=0\n"), std::nullopt);
}

TEST(KdeAnimationsTest, BlanksAroundTheNumberDoNotMatter)
{
    EXPECT_EQ(animationFactor("[KDE]\r\n AnimationDurationFactor = 0 \r\n"), 0.0);
}

TEST(KdeAnimationsTest, WhatIsNoNumberIsNothing)
{
    for (const char* const text : {"", "[KDE]", "[KDE]\nAnimationDurationFactor=",
             "[KDE]\nAnimationDurationFactor=0x", "AnimationDurationFactor=0"})
        EXPECT_EQ(animationFactor(text), std::nullopt) << text;
}

TEST(KdeAnimationsTest, TheFileNeedNotBeThere)
{
    const TemporaryFolder folder;
    EXPECT_EQ(animationFactorIn(folder / "kdeglobals"), std::nullopt);
    folder.write("kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
    EXPECT_EQ(animationFactorIn(folder / "kdeglobals"), 0.0);
}

} // namespace
} // namespace amperly
