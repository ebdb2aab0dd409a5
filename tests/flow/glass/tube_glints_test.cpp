#include "flow/glass/tube_glints.h"
#include "tests/flow/glass/curves.h"

#include <initializer_list>

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

    [[nodiscard]] std::size_t count() const { return TubeGlints(profile, 16.0).size(); }

    TubeProfile profile{};
};

TEST_F(TubeGlintsTest, SitOnTheUpperHalfOfAPeak)
{
    swell(20, {0.7, 0.8, 0.7});
    const TubeGlints glints(profile, 16.0);
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
    EXPECT_NEAR(TubeGlints(profile, 9.0).begin()->size, 2.2 * 0.8, 1e-12);
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
    const TubeGlints glints(profile, 16.0);
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
        const TubeGlints glints(profileOf(curve, 16.0, 12.0), 16.0);
        EXPECT_GE(glints.size(), 1U);
        for (const TubeGlint& glint : glints)
            EXPECT_LT(glint.centre.y, 47.5);
    }
}

} // namespace
} // namespace amperly::glass
