#include "flow/motion.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace amperly {
namespace {

constexpr Spring kAppearance{.response = 0.45, .damping = 0.75};

/// When the appearance's swing is at its widest, and how far it is beyond its goal there: what the
/// equation of a damped oscillator gives for half of its period.
double peakTime()
{
    return kAppearance.response / 2.0 / std::sqrt(1.0 - 0.75 * 0.75);
}

TEST(SpringTest, StartsAtZeroAndAtRest)
{
    EXPECT_EQ(kAppearance.at(0.0), 0.0);
    EXPECT_LT(kAppearance.at(0.001), 0.001);
    EXPECT_EQ(kAppearance.at(-1.0), 0.0);
}

TEST(SpringTest, OvershootsByAThirtyFifthAtItsPeak)
{
    const double peak = kAppearance.at(peakTime());
    EXPECT_NEAR(peak, 1.0 + std::exp(-std::numbers::pi * 0.75 / std::sqrt(1.0 - 0.75 * 0.75)), 1e-9);
    EXPECT_NEAR(peak, 1.0284, 0.0001);
    EXPECT_LT(kAppearance.at(peakTime() - 0.02), peak);
    EXPECT_LT(kAppearance.at(peakTime() + 0.02), peak);
}

TEST(SpringTest, RestsAtExactlyOneWithoutAJump)
{
    const double settled = kAppearance.settlingSeconds();
    EXPECT_EQ(kAppearance.at(settled), 1.0);
    EXPECT_EQ(kAppearance.at(1000.0), 1.0);
    EXPECT_NEAR(kAppearance.at(settled - 1e-6), 1.0, 0.0006);
    EXPECT_LT(settled, 1.0);
}

TEST(EaseInOutTest, StartsAndEndsAtRestAndIsHalfwayInTheMiddle)
{
    EXPECT_EQ(easeInOut(0.0), 0.0);
    EXPECT_NEAR(easeInOut(0.5), 0.5, 1e-9);
    EXPECT_EQ(easeInOut(1.0), 1.0);
    EXPECT_LT(easeInOut(0.01), 0.001);
    EXPECT_GT(easeInOut(0.99), 0.999);
}

TEST(EaseInOutTest, IsTheSameSeenFromEitherEnd)
{
    for (int percent = 0; percent <= 100; percent += 5)
        EXPECT_NEAR(easeInOut(percent / 100.0), 1.0 - easeInOut(1.0 - percent / 100.0), 1e-9);
}

TEST(EaseInOutTest, NeverGoesBackNorBeyondItsEnds)
{
    for (int step = 1; step <= 1000; ++step)
        EXPECT_GE(easeInOut(step / 1000.0), easeInOut((step - 1) / 1000.0));
    EXPECT_EQ(easeInOut(-3.0), 0.0);
    EXPECT_EQ(easeInOut(7.0), 1.0);
}

TEST(EaseInOutTest, LiesOnTheUsualCurve)
{
    // The cubic through (0.42, 0) and (0.58, 1) at t = 0.25.
    EXPECT_NEAR(easeInOut(0.2743750), 0.15625, 1e-6);
}

TEST(BreathingTest, SwellsFadesAndSwellsAgain)
{
    EXPECT_EQ(breathe(0.0, 2.8), 0.0);
    EXPECT_NEAR(breathe(1.4, 2.8), 0.5, 1e-9);
    EXPECT_NEAR(breathe(2.8, 2.8), 1.0, 1e-9);
    EXPECT_NEAR(breathe(4.2, 2.8), 0.5, 1e-9);
    EXPECT_NEAR(breathe(5.6, 2.8), 0.0, 1e-9);
    EXPECT_NEAR(breathe(5.6 * 1000 + 2.8, 2.8), 1.0, 1e-6);
}

TEST(BreathingTest, BeforeItsTimeItIsAtRest)
{
    EXPECT_EQ(breathe(-1.0, 2.8), 0.0);
}

} // namespace
} // namespace amperly
