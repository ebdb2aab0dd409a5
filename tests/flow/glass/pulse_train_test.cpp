#include "flow/glass/pulse_train.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

TEST(PulseTrainTest, BeginsOneSpacingBeforeTheStart)
{
    const PulseTrain pulses(0.0, 140.0);
    EXPECT_EQ(pulses.firstCentre(), -84.0);
    ASSERT_EQ(pulses.count(), 4);
    EXPECT_EQ(pulses.centre(1), 0.0);
    EXPECT_EQ(pulses.centre(3), 168.0);
}

TEST(PulseTrainTest, TheLastPulseMayBeAWholeSpacingBehindTheEnd)
{
    EXPECT_EQ(PulseTrain(0.0, 84.0).count(), 4); // -84, 0, 84 and 168, which is the end and a spacing
    EXPECT_EQ(PulseTrain(0.0, 83.99).count(), 3);
    EXPECT_EQ(PulseTrain(83.0, 84.0).count(), 3);
}

TEST(PulseTrainTest, AWholeSpacingFurtherIsTheSamePlace)
{
    for (const double travelled : {0.0, 0.125, 41.5, 83.875, 4200.25}) {
        const PulseTrain one(travelled, 140.0);
        const PulseTrain other(travelled + 84.0, 140.0);
        EXPECT_EQ(one.firstCentre(), other.firstCentre());
        EXPECT_EQ(one.count(), other.count());
        EXPECT_EQ(one.swell(70.0), other.swell(70.0));
    }
}

TEST(PulseTrainTest, APulseIsAGaussianAlongTheTube)
{
    const PulseTrain pulses(70.0, 200.0);
    EXPECT_NEAR(pulses.swell(70.0), 1.0, 1e-6);
    EXPECT_NEAR(pulses.swell(85.0), std::exp(-0.5), 1e-4);
    EXPECT_NEAR(pulses.swell(100.0), std::exp(-2.0) + std::exp(-0.5 * 3.6 * 3.6), 1e-9); // with the next one
    EXPECT_NEAR(pulses.swell(112.0), 2.0 * std::exp(-0.5 * 2.8 * 2.8), 1e-9);
}

TEST(PulseTrainTest, NeverSwellsMoreThanAll)
{
    const PulseTrain pulses(70.0, 200.0);
    EXPECT_LE(pulses.swell(70.0), 1.0);
}

TEST(PulseTrainTest, NothingSwellsAtEitherEnd)
{
    for (double travelled = 0.0; travelled < 84.0; travelled += 7.0) {
        const PulseTrain pulses(travelled, 140.0);
        EXPECT_EQ(pulses.swell(0.0), 0.0);
        EXPECT_EQ(pulses.swell(140.0), 0.0);
    }
}

TEST(PulseTrainTest, TheTaperIsASmoothStepFromTheEndsOn)
{
    EXPECT_EQ(endTaper(-3.0, 140.0), 0.0);
    EXPECT_EQ(endTaper(0.0, 140.0), 0.0);
    EXPECT_NEAR(endTaper(8.5, 140.0), 0.15625, 1e-12);
    EXPECT_NEAR(endTaper(17.0, 140.0), 0.5, 1e-12);
    EXPECT_EQ(endTaper(34.0, 140.0), 1.0);
    EXPECT_EQ(endTaper(70.0, 140.0), 1.0);
    EXPECT_NEAR(endTaper(123.0, 140.0), 0.5, 1e-12);
    EXPECT_EQ(endTaper(141.0, 140.0), 0.0);
}

TEST(PulseTrainTest, AShortTubeNeverSwellsFully)
{
    const PulseTrain pulses(17.0, 34.0);
    EXPECT_NEAR(pulses.swell(17.0), 0.5, 1e-6);
}

TEST(PulseTrainTest, ADistanceThatIsNoNumberHasNoPulses)
{
    const PulseTrain pulses(std::numeric_limits<double>::quiet_NaN(), 140.0);
    EXPECT_EQ(pulses.count(), 0);
    EXPECT_EQ(pulses.swell(70.0), 0.0);
}

} // namespace
} // namespace amperly::glass
