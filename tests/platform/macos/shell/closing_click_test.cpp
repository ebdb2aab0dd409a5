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
    click.closedByItself(10.0);
    EXPECT_TRUE(click.isRestOfIt(10.0 + ClosingClick::kOneClickSeconds - 0.01));
}

TEST(ClosingClickTest, ALaterClickIsItsOwn)
{
    ClosingClick click;
    click.closedByItself(10.0);
    EXPECT_FALSE(click.isRestOfIt(10.0 + ClosingClick::kOneClickSeconds));
}

TEST(ClosingClickTest, OneClosingTakesOneClick)
{
    ClosingClick click;
    click.closedByItself(10.0);
    EXPECT_TRUE(click.isRestOfIt(10.1));
    EXPECT_FALSE(click.isRestOfIt(10.15));
}

} // namespace
} // namespace amperly
