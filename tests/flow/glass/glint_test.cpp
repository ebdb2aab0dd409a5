#include "flow/glass/glint.h"
#include "tests/flow/glass/curves.h"

#include <cmath>
#include <initializer_list>
#include <vector>

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

class TubeGlintsTest : public testing::Test {
protected:
    TubeGlintsTest()
    {
        for (std::size_t i = 0; i < profile.size(); ++i)
            profile[i] = {.p = {2.0 * static_cast<double>(i), 50.0}, .n = {0.0, -1.0}, .half = 10.0};
    }

    void swell(std::size_t first, std::initializer_list<double> swells)
    {
        for (const double k : swells)
            profile[first++].k = k;
    }

    [[nodiscard]] std::size_t count() const { return tubeGlints(profile, 16.0).size(); }

    TubeProfile profile{};
};

TEST_F(TubeGlintsTest, SitOnTheUpperHalfOfAPeak)
{
    swell(20, {0.7, 0.8, 0.7});
    const AlongTube<TubeGlint> glints = tubeGlints(profile, 16.0);
    ASSERT_EQ(glints.size(), 1U);
    const TubeGlint& glint = *glints.begin();
    EXPECT_NEAR(glint.centre.x, 42.0, 1e-12);
    EXPECT_NEAR(glint.centre.y, 44.8, 1e-12);
    EXPECT_NEAR(glint.size, 3.52 * 0.8, 1e-12);
    EXPECT_EQ(glint.k, 0.8);
}

TEST_F(TubeGlintsTest, OfNarrowTubesAreNotTooSmall)
{
    swell(20, {0.7, 0.8, 0.7});
    EXPECT_NEAR(tubeGlints(profile, 9.0).begin()->size, 2.2 * 0.8, 1e-12);
}

TEST_F(TubeGlintsTest, NeedMoreThanTheLeastSwell)
{
    swell(20, {0.5, 0.55, 0.5});
    EXPECT_EQ(count(), 0U);
    swell(20, {0.5, 0.551, 0.5});
    EXPECT_EQ(count(), 1U);
}

TEST_F(TubeGlintsTest, APlateauGlintsAtItsEndOnly)
{
    swell(20, {0.7, 0.9, 0.9, 0.9, 0.7});
    const AlongTube<TubeGlint> glints = tubeGlints(profile, 16.0);
    ASSERT_EQ(glints.size(), 1U);
    EXPECT_EQ(glints.begin()->centre.x, 46.0);
}

TEST_F(TubeGlintsTest, NeverSitOnTheFirstOrTheLastSection)
{
    swell(0, {0.9, 0.8});
    swell(95, {0.8, 0.9});
    EXPECT_EQ(count(), 0U);
}

TEST_F(TubeGlintsTest, EveryPeakHasItsOwn)
{
    swell(20, {0.7, 0.8, 0.7});
    swell(60, {0.7, 0.9, 0.7});
    EXPECT_EQ(count(), 2U);
}

TEST(TubeGlintsOfTubesTest, SitOnTheUpperSideWhicheverWayTheFlowGoes)
{
    const Bezier right = line({0.0, 50.0}, {192.0, 50.0});
    for (const Bezier& curve : {right, reversed(right)}) {
        const AlongTube<TubeGlint> glints = tubeGlints(profileOf(curve, 16.0, 12.0), 16.0);
        EXPECT_GE(glints.size(), 1U);
        for (const TubeGlint& glint : glints)
            EXPECT_LT(glint.centre.y, 47.5);
    }
}

constexpr double kScale = 20.0; // so many pixels that none is covered in part where the tests look
constexpr int kSide = 800; // pixels
constexpr double kMiddle = 0.5 * kSide / kScale;
constexpr double kSize = 4.0;
constexpr double kTolerance = 0.01;

class GlintLightTest : public testing::Test {
protected:
    /// The opacity at a place in points from the centre of a glint on a swell of `k`.
    static double opacityAt(double dx, double dy, double k = 1.0)
    {
        const GlintLight light({.centre = {kMiddle, kMiddle}, .size = kSize, .k = k}, kSide, kSide, kScale);
        const auto pixel
            = [](double distance) { return static_cast<int>(std::floor((kMiddle + distance) * kScale)); };
        if (pixel(dx) < light.left() || pixel(dx) >= light.right() || pixel(dy) < light.top()
            || pixel(dy) >= light.bottom())
            return 0.0;
        std::vector<std::uint16_t> row(static_cast<std::size_t>(light.right() - light.left()));
        light.row(pixel(dy), row.data());
        return row[static_cast<std::size_t>(pixel(dx) - light.left())] / 65536.0;
    }

    /// What the disc has at this distance from its centre.
    static double disc(double distance, double k = 1.0)
    {
        return 0.35 * k * std::max(1.0 - distance / (2.4 * kSize), 0.0);
    }

    /// One translucent light on another.
    static double over(double below, double above) { return 1.0 - (1.0 - below) * (1.0 - above); }
};

TEST_F(GlintLightTest, TheDiscFadesEvenlyTo24TenthsOfItsSize)
{
    for (const double distance : {1.5, 3.0, 4.8, 7.0, 9.0}) {
        const double aside = distance / std::sqrt(2.0); // between the arms
        EXPECT_NEAR(opacityAt(aside, aside), disc(distance), kTolerance) << distance;
        EXPECT_NEAR(opacityAt(-aside, aside), disc(distance), kTolerance) << distance;
    }
    EXPECT_EQ(opacityAt(9.7 / std::sqrt(2.0), 9.7 / std::sqrt(2.0)), 0.0);
}

TEST_F(GlintLightTest, ArmsReach16TenthsOfItsSizeAcrossAndItsSizeUp)
{
    for (const double side : {-1.0, 1.0}) {
        EXPECT_NEAR(opacityAt(side * 6.3, 0.0), over(disc(6.3), 0.8), kTolerance);
        EXPECT_NEAR(opacityAt(0.0, side * 3.9), over(disc(3.9), 0.8), kTolerance);
        // The caps add no more than half of a line's width.
        EXPECT_NEAR(opacityAt(side * 6.9, 0.0), disc(6.9), kTolerance);
        EXPECT_NEAR(opacityAt(0.0, side * 4.5), disc(4.5), kTolerance);
    }
}

TEST_F(GlintLightTest, ArmsAreEightTenthsOfAPointWide)
{
    for (const double side : {-1.0, 1.0}) {
        EXPECT_NEAR(opacityAt(3.0, side * 0.36), over(disc(3.0), 0.8), kTolerance);
        EXPECT_NEAR(opacityAt(3.0, side * 0.46), disc(3.0), kTolerance);
        EXPECT_NEAR(opacityAt(side * 0.36, 2.0), over(disc(2.0), 0.8), kTolerance);
        EXPECT_NEAR(opacityAt(side * 0.46, 2.0), disc(2.0), kTolerance);
    }
}

TEST_F(GlintLightTest, TheDotHasARadiusOfAPointWhateverTheSize)
{
    const double inside = 0.93 / std::sqrt(2.0);
    const double outside = 1.08 / std::sqrt(2.0);
    EXPECT_NEAR(opacityAt(inside, inside), over(disc(0.93), 0.95), kTolerance);
    EXPECT_NEAR(opacityAt(outside, outside), disc(1.08), kTolerance);
}

TEST_F(GlintLightTest, ASmallerSwellDimsAllOfIt)
{
    constexpr double kHalf = 0.5;
    EXPECT_NEAR(opacityAt(3.0, 3.0, kHalf), disc(std::sqrt(18.0), kHalf), kTolerance);
    EXPECT_NEAR(opacityAt(5.0, 0.0, kHalf), over(disc(5.0, kHalf), 0.8 * kHalf), kTolerance);
    EXPECT_NEAR(opacityAt(0.6, 0.6, kHalf), over(disc(0.85, kHalf), 0.95 * kHalf), kTolerance);
}

TEST_F(GlintLightTest, WhereTheCrossHasTwoArmsItIsNoBrighter)
{
    // The dot lies on both: what is left of it is the arms' alone where the dot is taken off.
    const double withDot = opacityAt(0.0, 0.0);
    EXPECT_NEAR(withDot, over(over(disc(0.0), 0.8), 0.95), kTolerance);
}

TEST_F(GlintLightTest, OfTheCanvasOnlyWhatItReachesIsLit)
{
    const GlintLight light({.centre = {1.0, kMiddle}, .size = kSize, .k = 1.0}, kSide, kSide, kScale);
    EXPECT_EQ(light.left(), 0);
    EXPECT_NEAR(light.right(), (1.0 + 2.4 * kSize) * kScale, 3.0);
    EXPECT_NEAR(light.top(), (kMiddle - 2.4 * kSize) * kScale, 3.0);
    EXPECT_NEAR(light.bottom(), (kMiddle + 2.4 * kSize) * kScale, 3.0);
}

} // namespace
} // namespace amperly::glass
