#include "flow/frame_stats.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace amperly {
namespace {

class FrameStatsTest : public testing::Test {
protected:
    FrameStatsTest() : output(open_memstream(&text, &length), &std::fclose), stats(output.get()) { }
    ~FrameStatsTest() override
    {
        output.reset();
        std::free(text);
    }

    /// What has been flushed so far.
    [[nodiscard]] std::string printed() const
    {
        return length == 0 ? std::string() : std::string(text, length);
    }

    char* text = nullptr;
    std::size_t length = 0;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> output;
    FrameStats stats;
};

TEST_F(FrameStatsTest, NothingIsPrintedBeforeASecondHasPassed)
{
    stats.frame(5.0);
    stats.frame(5.5);
    stats.frame(5.999);
    EXPECT_EQ(printed(), "");
}

TEST_F(FrameStatsTest, ALineIsFlushedOnceASecondHasPassed)
{
    for (int frame = 0; frame <= 50; ++frame)
        stats.frame(5.0 + frame / 50.0);
    EXPECT_EQ(printed(), "fps 51  worst gap 20 ms\n");
}

TEST_F(FrameStatsTest, TheWorstGapIsTheLongestOfThePeriod)
{
    stats.frame(0.0);
    stats.frame(0.1);
    stats.frame(0.35);
    stats.frame(1.0);
    EXPECT_EQ(printed(), "fps 4  worst gap 650 ms\n");
}

TEST_F(FrameStatsTest, EachPeriodCountsForItself)
{
    for (int frame = 0; frame <= 128; ++frame)
        stats.frame(frame / 64.0);
    EXPECT_EQ(printed(), "fps 65  worst gap 16 ms\nfps 64  worst gap 16 ms\n");
}

TEST_F(FrameStatsTest, FramesAreCountedOverTheTimeThatReallyPassed)
{
    stats.frame(0.0);
    stats.frame(0.9);
    stats.frame(2.0);
    EXPECT_EQ(printed(), "fps 2  worst gap 1100 ms\n");
}

TEST(FrameStatsEnabledTest, WithoutTheVariableItIsOff)
{
    ASSERT_EQ(std::getenv("AMPERLY_FPS"), nullptr) << "the test must run without it";
    EXPECT_FALSE(FrameStats::enabled());
    setenv("AMPERLY_FPS", "1", 1);
    EXPECT_FALSE(FrameStats::enabled()) << "the environment is looked at once";
    unsetenv("AMPERLY_FPS");
}

// In a process of its own, which has not looked yet.
TEST(FrameStatsDeathTest, WhateverTheVariableHoldsItIsOn)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const char* const value : {"", "0", "1"}) {
        EXPECT_EXIT(
            {
                setenv("AMPERLY_FPS", value, 1);
                std::_Exit(FrameStats::enabled() ? EXIT_SUCCESS : EXIT_FAILURE);
            },
            testing::ExitedWithCode(EXIT_SUCCESS), "")
            << '"' << value << '"';
    }
}

} // namespace
} // namespace amperly
