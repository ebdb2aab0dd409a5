#include "platform/linux/power/energy_counter.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(EnergyCounterTest, FirstPointIsNoPower)
{
    EnergyCounter counter(1'000'000'000);
    EXPECT_EQ(counter.watts(5'000'000, 100), std::nullopt);
}

TEST(EnergyCounterTest, PowerIsTheMeanBetweenTwoPoints)
{
    EnergyCounter counter(1'000'000'000);
    static_cast<void>(counter.watts(5'000'000, 100));
    EXPECT_EQ(counter.watts(35'000'000, 102), 15.0);
    EXPECT_EQ(counter.watts(36'000'000, 104), 0.5);
}

TEST(EnergyCounterTest, CounterThatStartedAgainGoesOn)
{
    EnergyCounter counter(100'000'000);
    static_cast<void>(counter.watts(95'000'000, 100));
    EXPECT_EQ(counter.watts(5'000'000, 102), 5.0);
}

TEST(EnergyCounterTest, CounterThatWentBackWithoutKnownRangeIsUnknownOnce)
{
    EnergyCounter counter;
    static_cast<void>(counter.watts(95'000'000, 100));
    EXPECT_EQ(counter.watts(5'000'000, 102), std::nullopt);
    EXPECT_EQ(counter.watts(15'000'000, 104), 5.0);
}

TEST(EnergyCounterTest, CounterThatStandsStillIsUnknown)
{
    EnergyCounter counter(100'000'000);
    static_cast<void>(counter.watts(0, 100));
    EXPECT_EQ(counter.watts(0, 102), std::nullopt);
}

TEST(EnergyCounterTest, TwoReadingsAtOnceShareOneFigure)
{
    EnergyCounter counter(100'000'000);
    static_cast<void>(counter.watts(0, 100));
    EXPECT_EQ(counter.watts(20'000'000, 102), 10.0);
    EXPECT_EQ(counter.watts(20'500'000, 102.01), 10.0);
    EXPECT_EQ(counter.watts(60'000'000, 104), 20.0);
}

TEST(EnergyCounterTest, LongPauseStartsAnew)
{
    EnergyCounter counter(100'000'000);
    static_cast<void>(counter.watts(0, 100));
    EXPECT_EQ(counter.watts(50'000'000, 221), std::nullopt);
    EXPECT_EQ(counter.watts(60'000'000, 223), 5.0);
}

} // namespace
} // namespace amperly
