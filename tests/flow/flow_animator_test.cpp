#include "flow/flow_animator.h"

#include "flow/diagram_layout.h"
#include "tests/support/allocation_count.h"
#include "tests/support/print_sample.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace amperly {

void PrintTo(const Flows& flows, std::ostream* out)
{
    *out << flows.chargerToMac << " to the computer, " << flows.chargerToBattery << " to the battery, "
         << flows.batteryToMac << " out of it";
}

namespace {

using testing::DoubleNear;
using testing::Each;
using testing::ElementsAre;

constexpr double kFrame = 1.0 / 60.0;
constexpr double kTimeConstant = 0.45;

const PowerSample kCharging{
    .systemLoad = 14.0, .adapterIn = 30.0, .battery = 16.0, .externalConnected = true};
const PowerSample kOnBattery{.systemLoad = 8.0, .battery = -8.0};
const PowerSample kNothing{};

class FlowAnimatorTest : public testing::Test {
protected:
    /// Lets frames pass with this sample, the first of them at once.
    void run(const PowerSample& sample, double seconds, double interval = kFrame)
    {
        if (!animator.last())
            animator.step(sample, now);
        const auto frames = static_cast<int>(std::lround(seconds / interval));
        const double start = now;
        for (int frame = 1; frame <= frames; ++frame)
            animator.step(sample, now = start + frame * interval);
    }

    FlowAnimator animator;
    double now = 1000.0;
};

// Where the flows go

TEST(FlowTargetsTest, TheChargerFeedsComputerAndBattery)
{
    EXPECT_EQ(flowTargets(kCharging), (Flows{14.0, 16.0, 0.0}));
}

TEST(FlowTargetsTest, TheComputerGetsNoMoreThanTheChargerDelivers)
{
    EXPECT_EQ(
        flowTargets({.systemLoad = 50.0, .adapterIn = 30.0, .battery = -20.0, .externalConnected = true}),
        (Flows{30.0, 0.0, 20.0}));
}

TEST(FlowTargetsTest, AChargerBelowHalfAWattDeliversNothing)
{
    PowerSample sample{.systemLoad = 10.0, .adapterIn = 0.5, .externalConnected = true};
    EXPECT_EQ(flowTargets(sample).chargerToMac, 0.5);
    sample.adapterIn = std::nextafter(0.5, 0.0);
    EXPECT_EQ(flowTargets(sample).chargerToMac, 0.0);
}

TEST(FlowTargetsTest, WithoutExternalPowerOnlyTheBatteryFeeds)
{
    EXPECT_EQ(flowTargets({.systemLoad = 8.0, .adapterIn = 30.0, .battery = 5.0}), Flows{});
    EXPECT_EQ(flowTargets(kOnBattery), (Flows{0.0, 0.0, 8.0}));
}

TEST(FlowTargetsTest, ABatteryThatBarelyMovesIsIdle)
{
    for (const double watts : {-0.3, -0.1, 0.0, 0.1, 0.3})
        EXPECT_EQ(flowTargets({.battery = watts, .externalConnected = true}), Flows{}) << watts;
    EXPECT_GT(flowTargets({.battery = 0.31, .externalConnected = true}).chargerToBattery, 0.0);
    EXPECT_GT(flowTargets({.battery = -0.31, .externalConnected = true}).batteryToMac, 0.0);
}

TEST(FlowTargetsTest, WhatIsNotKnownFeedsNoFlow)
{
    PowerSample sample = kCharging;
    sample.systemLoadKnown = false;
    EXPECT_EQ(flowTargets(sample), (Flows{0.0, 16.0, 0.0}));
    sample = kCharging;
    sample.adapterInKnown = false;
    EXPECT_EQ(flowTargets(sample), (Flows{0.0, 16.0, 0.0}));
    sample = kCharging;
    sample.batteryKnown = false;
    EXPECT_EQ(flowTargets(sample), (Flows{14.0, 0.0, 0.0}));
    sample = kOnBattery;
    sample.batteryKnown = false;
    EXPECT_EQ(flowTargets(sample), Flows{});
}

// Smoothing

TEST_F(FlowAnimatorTest, AFreshOneHasNoFlowNoTravelAndNoLastFrame)
{
    EXPECT_EQ(animator.flows(), Flows{});
    EXPECT_THAT(animator.travelled(), Each(0.0));
    EXPECT_EQ(animator.last(), std::nullopt);
}

TEST_F(FlowAnimatorTest, TheFirstFrameAdvancesNothing)
{
    animator.step(kCharging, now);
    EXPECT_EQ(animator.flows(), Flows{});
    EXPECT_THAT(animator.travelled(), Each(0.0));
    EXPECT_EQ(animator.last(), now);
}

TEST_F(FlowAnimatorTest, AfterOneTimeConstantAFlowHasMadeTwoThirdsOfItsWay)
{
    run(kCharging, kTimeConstant, kTimeConstant / 27.0);
    EXPECT_NEAR(animator.chargerToMac(), 14.0 * (1.0 - std::exp(-1.0)), 1e-9);
    EXPECT_NEAR(animator.chargerToBattery(), 16.0 * (1.0 - std::exp(-1.0)), 1e-9);
}

TEST_F(FlowAnimatorTest, TheRateOfFramesDoesNotMatter)
{
    run(kCharging, 1.0, 1.0 / 144.0);
    FlowAnimator slow;
    for (int frame = 0; frame <= 30; ++frame)
        slow.step(kCharging, 1000.0 + frame / 30.0);
    EXPECT_NEAR(animator.chargerToMac(), slow.chargerToMac(), 1e-9);
    EXPECT_NEAR(animator.travelled()[0], slow.travelled()[0], 0.2);
}

TEST_F(FlowAnimatorTest, UnpluggingLetsBothFlowsOfTheChargerDecayUntilTheyAreNotDrawn)
{
    run(kCharging, 10.0);
    run(kOnBattery, kTimeConstant);
    EXPECT_NEAR(animator.chargerToMac(), 14.0 * std::exp(-1.0), 1e-6);
    EXPECT_NEAR(animator.chargerToBattery(), 16.0 * std::exp(-1.0), 1e-6);
    run(kOnBattery, 3.0);
    EXPECT_LT(animator.chargerToMac(), 0.05);
    EXPECT_LT(animator.chargerToBattery(), 0.05);
    EXPECT_NEAR(animator.batteryToMac(), 8.0, 0.01);
}

TEST_F(FlowAnimatorTest, AnIdleBatteryLetsBothOfItsFlowsDecay)
{
    run(kCharging, 5.0);
    run({.systemLoad = 14.0, .adapterIn = 14.0, .battery = 0.29, .externalConnected = true}, 5.0);
    EXPECT_LT(animator.chargerToBattery(), 0.05);
    run(kOnBattery, 5.0);
    run({.systemLoad = 14.0, .adapterIn = 14.0, .battery = -0.29, .externalConnected = true}, 5.0);
    EXPECT_LT(animator.batteryToMac(), 0.05);
}

// Travel

TEST_F(FlowAnimatorTest, WithoutLoadPulsesMoveAt18PointsASecond)
{
    run(kNothing, 1.0);
    EXPECT_THAT(animator.travelled(), Each(DoubleNear(18.0, 1e-9)));
}

TEST_F(FlowAnimatorTest, At120WattsAndAbovePulsesMoveAt40PointsASecond)
{
    for (const double watts : {120.0, 500.0}) {
        const PowerSample sample{.systemLoad = watts, .adapterIn = watts, .externalConnected = true};
        run(sample, 20.0);
        const double before = animator.travelled()[0];
        run(sample, 1.0);
        EXPECT_NEAR(animator.travelled()[0] - before, 40.0, 1e-6) << watts;
    }
}

TEST_F(FlowAnimatorTest, At60WattsPulsesMoveHalfwayBetween)
{
    const PowerSample sample{.systemLoad = 60.0, .adapterIn = 60.0, .externalConnected = true};
    run(sample, 20.0);
    const double before = animator.travelled()[0];
    run(sample, 1.0);
    EXPECT_NEAR(animator.travelled()[0] - before, 29.0, 1e-6);
}

TEST_F(FlowAnimatorTest, ALateFrameCountsAsATenthOfASecond)
{
    animator.step(kNothing, now);
    animator.step(kNothing, now + 2.0);
    EXPECT_THAT(animator.travelled(), Each(DoubleNear(1.8, 1e-9)));
    EXPECT_EQ(animator.last(), now + 2.0);
}

TEST_F(FlowAnimatorTest, AClockThatRunsBackwardsMovesNothing)
{
    run(kCharging, 1.0);
    const auto before = animator.travelled();
    animator.step(kCharging, now - 5.0);
    EXPECT_EQ(animator.travelled(), before);
}

TEST_F(FlowAnimatorTest, DistancesStartOverAt10000Points)
{
    run(kNothing, 10000.0 / 18.0 - 1.0, 0.1);
    EXPECT_GT(animator.travelled()[0], 9900.0);
    run(kNothing, 2.0);
    EXPECT_THAT(animator.travelled(), Each(testing::AllOf(testing::Ge(0.0), testing::Lt(40.0))));
}

TEST_F(FlowAnimatorTest, WhileAFlowDecaysItsTubeNarrowsAndItsPulsesSlowDown)
{
    run({.systemLoad = 60.0, .adapterIn = 90.0, .battery = 30.0, .externalConnected = true}, 5.0);
    double width = tubeWidth(animator.chargerToMac(), 60.0);
    double advance = 29.0 * kFrame;
    int frames = 0;
    for (; animator.chargerToMac() > kLeastDrawnWatts; ++frames) {
        const double before = animator.travelled()[0];
        animator.step(kOnBattery, now += kFrame);
        const double widthNow = tubeWidth(animator.chargerToMac(), 60.0);
        const double advanceNow = animator.travelled()[0] - before;
        ASSERT_LT(widthNow, width);
        ASSERT_LT(advanceNow, advance);
        width = widthNow;
        advance = advanceNow;
    }
    EXPECT_NEAR(frames * kFrame, kTimeConstant * std::log(60.0 / kLeastDrawnWatts), 2.0 * kFrame);
    EXPECT_NEAR(width, 9.0, 0.02);
    EXPECT_NEAR(advance, 18.0 * kFrame, 0.001);
}

// At rest

TEST_F(FlowAnimatorTest, SettlingGoesToTheTargetsAtOnceAndMovesNoPulse)
{
    animator.settle(kCharging);
    EXPECT_EQ(animator.flows(), (Flows{14.0, 16.0, 0.0}));
    EXPECT_THAT(animator.travelled(), Each(0.0));
}

TEST_F(FlowAnimatorTest, AStepTakesNothingFromTheHeap)
{
    animator.step(kCharging, now);
    const AllocationCount count;
    run(kCharging, 10.0);
    EXPECT_EQ(count.value(), 0);
}

} // namespace
} // namespace amperly
