#include "tests/flow/glass/curves.h"

#include <initializer_list>
#include <vector>

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

const Bezier kLevel = line({0.0, 50.0}, {192.0, 50.0}); // two points between samples

TEST(TubeProfileTest, APassingPulseWidensTheTubeByFourFifths)
{
    const TubeProfile profile = profileOf(kLevel, 16.0, 12.0); // a pulse at 96, the middle
    EXPECT_NEAR(profile[48].k, 1.0, 1e-6);
    EXPECT_NEAR(profile[48].half, 14.4, 1e-5);
    EXPECT_EQ(profile[0].half, 8.0);
    EXPECT_EQ(profile[96].half, 8.0);
}

TEST(TubeProfileTest, HalfFollowsTheSwell)
{
    for (const TubeSection& section : profileOf(kLevel, 10.0, 31.0))
        EXPECT_NEAR(section.half, 5.0 * (1.0 + 0.8 * section.k), 1e-12);
}

TEST(TubeProfileTest, NothingSwellsAtTheEndsOfAnyCurve)
{
    for (const Bezier& curve : diagramCurves(308.0, 200.0)) {
        for (double travelled = 0.0; travelled < 84.0; travelled += 6.0) {
            const TubeProfile profile = profileOf(curve, 16.0, travelled);
            EXPECT_EQ(profile.front().k, 0.0);
            EXPECT_EQ(profile.back().k, 0.0);
        }
    }
}

TEST(TubeProfileTest, APulseOnTheStartDoesNotShowThere)
{
    const TubeProfile profile = profileOf(kLevel, 16.0, 0.0); // centres at -84, 0, 84 …
    EXPECT_EQ(profile[0].k, 0.0);
    EXPECT_NEAR(profile[42].k, 1.0, 1e-6); // at 84
}

TEST(TubeProfileTest, FractionsOfTheHalfWidthCountFromTheCentreLineUp)
{
    const TubeSection section = profileOf(kLevel, 16.0, 12.0)[0];
    EXPECT_EQ(section.at(0.0), section.p);
    EXPECT_NEAR(section.at(0.5).y, 46.0, 1e-12);
    EXPECT_NEAR(section.at(-1.0).y, 58.0, 1e-12);
}

class SwellRunsTest : public testing::Test {
protected:
    /// A level profile, two points between sections, that swells by these much from `first` on.
    void swell(std::size_t first, std::initializer_list<double> swells)
    {
        for (const double k : swells)
            profile[first++].k = k;
    }

    SwellRunsTest()
    {
        for (std::size_t i = 0; i < profile.size(); ++i)
            profile[i].p = {2.0 * static_cast<double>(i), 0.0};
    }

    [[nodiscard]] std::vector<SwellRun> runs() const
    {
        const AlongTube<SwellRun> found = swellRuns(profile);
        return {found.begin(), found.end()};
    }

    TubeProfile profile{};
};

TEST_F(SwellRunsTest, ATubeAtRestHasNone)
{
    EXPECT_TRUE(runs().empty());
}

TEST_F(SwellRunsTest, OnlyMoreThanTheLeastSwellCounts)
{
    swell(10, {0.03, 0.03, 0.03});
    EXPECT_TRUE(runs().empty());
    swell(10, {0.03, 0.031, 0.031, 0.03});
    EXPECT_EQ(runs(), (std::vector<SwellRun>{{11, 12}}));
}

TEST_F(SwellRunsTest, OneSectionAloneIsSkipped)
{
    swell(10, {0.9});
    swell(20, {0.5, 0.5});
    EXPECT_EQ(runs(), (std::vector<SwellRun>{{20, 21}}));
}

TEST_F(SwellRunsTest, AGapOfOneSectionSeparates)
{
    swell(10, {0.5, 0.5, 0.0, 0.5, 0.5});
    EXPECT_EQ(runs(), (std::vector<SwellRun>{{10, 11}, {13, 14}}));
}

TEST_F(SwellRunsTest, ReachTheEndsWhereTheSwellDoes)
{
    swell(0, {0.5, 0.5});
    swell(95, {0.5, 0.5});
    EXPECT_EQ(runs(), (std::vector<SwellRun>{{0, 1}, {95, 96}}));
}

TEST_F(SwellRunsTest, AsManyAsThereCanBe)
{
    for (std::size_t i = 0; i < profile.size(); i += 3)
        swell(i, {0.5});
    for (std::size_t i = 1; i < profile.size(); i += 3)
        swell(i, {0.5});
    EXPECT_EQ(runs().size(), 32U); // 0 and 1, 3 and 4, … 93 and 94; 96 is alone
}

TEST_F(SwellRunsTest, AGradientHasAStopForEachSection)
{
    swell(10, {0.1, 0.6, 0.2});
    const SwellRun run{10, 12};
    EXPECT_NEAR(swellOfGradient(profile, run, {20.0, 0.0}), 0.1, 1e-12);
    EXPECT_NEAR(swellOfGradient(profile, run, {22.0, 5.0}), 0.6, 1e-12);
    EXPECT_NEAR(swellOfGradient(profile, run, {23.0, -5.0}), 0.4, 1e-12);
    EXPECT_NEAR(swellOfGradient(profile, run, {24.0, 0.0}), 0.2, 1e-12);
}

TEST_F(SwellRunsTest, AGradientGoesOnAsItEnds)
{
    swell(10, {0.1, 0.6, 0.2});
    EXPECT_NEAR(swellOfGradient(profile, {10, 12}, {-50.0, 0.0}), 0.1, 1e-12);
    EXPECT_NEAR(swellOfGradient(profile, {10, 12}, {90.0, 0.0}), 0.2, 1e-12);
}

TEST_F(SwellRunsTest, StopsAreEvenlySpacedEvenWhereSectionsAreNot)
{
    swell(10, {0.1, 0.6, 0.2});
    profile[11].p.x = 21.0; // nearer to the first than to the last
    EXPECT_NEAR(swellOfGradient(profile, {10, 12}, {22.0, 0.0}), 0.6, 1e-12);
    EXPECT_LT(swellOfGradient(profile, {10, 12}, {21.0, 0.0}), 0.6);
}

TEST_F(SwellRunsTest, ARunThatComesBackToItsStartHasOneColor)
{
    swell(10, {0.1, 0.6, 0.2});
    profile[12].p = profile[10].p;
    EXPECT_EQ(swellOfGradient(profile, {10, 12}, {0.0, 0.0}), 0.2);
}

} // namespace
} // namespace amperly::glass
