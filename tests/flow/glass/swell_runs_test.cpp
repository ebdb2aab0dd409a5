#include "flow/glass/swell_runs.h"
#include "tests/flow/glass/curves.h"

#include <initializer_list>
#include <vector>

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

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
        const SwellRuns found(profile);
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

TEST_F(SwellRunsTest, ARunThatComesBackToItsStartHasOneColour)
{
    swell(10, {0.1, 0.6, 0.2});
    profile[12].p = profile[10].p;
    EXPECT_EQ(swellOfGradient(profile, {10, 12}, {0.0, 0.0}), 0.2);
}

} // namespace
} // namespace amperly::glass
