#include "platform/linux/clock/display_frames.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(FramePaceTest, FramesAreDueOnePeriodApart)
{
    FramePace pace(50.0);
    EXPECT_NEAR(pace.dueAfter(10.0), 10.02, 1e-12);
    EXPECT_NEAR(pace.dueAfter(10.02), 10.04, 1e-12);
}

TEST(FramePaceTest, FramesThatComeALittleLateAreNoFewer)
{
    FramePace pace(60.0);
    double now = 100.0;
    int frames = 0;
    for (; now < 101.0; ++frames)
        now = pace.dueAfter(now) + 0.0009;
    EXPECT_EQ(frames, 60);
}

TEST(FramePaceTest, AFrameThatIsMissedIsNotMadeUpFor)
{
    FramePace pace(60.0);
    static_cast<void>(pace.dueAfter(1.0));
    EXPECT_NEAR(pace.dueAfter(3.0), 3.0 + 1.0 / 60.0, 1e-12);
}

TEST(FramePaceTest, AFrameThatComesEarlyDoesNotBringTheNextForward)
{
    FramePace pace(50.0);
    static_cast<void>(pace.dueAfter(1.0));
    EXPECT_NEAR(pace.dueAfter(1.0199), 1.0399, 0.0002);
}

TEST(FramePaceTest, ADisplayWithoutASensibleRateCountsAsOneOf60)
{
    for (const double rate : {0.0, -60.0, 1.0, 1e9})
        EXPECT_EQ(FramePace(rate).periodSeconds(), 1.0 / 60.0) << rate;
    EXPECT_EQ(FramePace(144.0).periodSeconds(), 1.0 / 144.0);
}

} // namespace
} // namespace amperly
