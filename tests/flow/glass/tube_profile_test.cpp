#include "tests/flow/glass/curves.h"

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

} // namespace
} // namespace amperly::glass
