#include "platform/macos/shell/closing_click.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(ClosingClickTest, WithoutAClosingEveryClickIsItsOwn)
{
    EXPECT_FALSE(ClosingClick().isRestOfIt(10.0));
}

TEST(ClosingClickTest, AClickRightAfterTheClosingBelongsToIt)
{
    ClosingClick click;
    click.closedByPress(10.0);
    EXPECT_TRUE(click.isRestOfIt(10.0 + ClosingClick::kLongestClickSeconds - 0.01));
}

TEST(ClosingClickTest, ALaterClickIsItsOwn)
{
    ClosingClick click;
    click.closedByPress(10.0);
    EXPECT_FALSE(click.isRestOfIt(10.0 + ClosingClick::kLongestClickSeconds));
}

TEST(ClosingClickTest, OneClosingTakesOneClick)
{
    ClosingClick click;
    click.closedByPress(10.0);
    EXPECT_TRUE(click.isRestOfIt(10.1));
    EXPECT_FALSE(click.isRestOfIt(10.15));
}

} // namespace
} // namespace amperly
