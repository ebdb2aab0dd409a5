#include "flow/glass/tube_place.h"
#include "tests/flow/glass/curves.h"

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

class TubePlaceTest : public testing::Test {
protected:
    TubePlace placeOn(const Bezier& curve, const FlowPoint& point)
    {
        samples = sampleCurve(curve);
        normals = orientedNormals(samples);
        TubePlaces places(samples, normals);
        EXPECT_TRUE(places.narrow(point, 0.0, 1000.0));
        return places.place(point);
    }

    CurveSamples samples{};
    CurveNormals normals{};
};

TEST_F(TubePlaceTest, IsLengthAlongAndDistanceUpwards)
{
    const TubePlace place = placeOn(line({10.0, 50.0}, {106.0, 50.0}), {40.25, 43.0});
    EXPECT_NEAR(place.arc, 30.25, 1e-9);
    EXPECT_NEAR(place.distance, 7.0, 1e-9);
    EXPECT_NEAR(place.inside, 30.25, 1e-9);
    EXPECT_EQ(place.sample, 30U);
    EXPECT_NEAR(place.beyond, 0.25, 1e-9);
}

TEST_F(TubePlaceTest, UpIsUpForAFlowToTheLeftToo)
{
    const TubePlace place = placeOn(line({106.0, 50.0}, {10.0, 50.0}), {40.25, 43.0});
    EXPECT_NEAR(place.arc, 65.75, 1e-9);
    EXPECT_NEAR(place.distance, 7.0, 1e-9);
}

TEST_F(TubePlaceTest, BeforeTheStartAndBehindTheEndIsOutside)
{
    const Bezier curve = line({10.0, 50.0}, {106.0, 50.0});
    const TubePlace before = placeOn(curve, {8.0, 53.0});
    EXPECT_NEAR(before.inside, -2.0, 1e-9);
    EXPECT_NEAR(before.distance, -3.0, 1e-9);
    const TubePlace behind = placeOn(curve, {109.0, 45.0});
    EXPECT_NEAR(behind.inside, -3.0, 1e-9);
    EXPECT_NEAR(behind.distance, 5.0, 1e-9);
    EXPECT_EQ(behind.arc, samples.length());
}

TEST_F(TubePlaceTest, TheNearerEndCounts)
{
    EXPECT_NEAR(placeOn(line({10.0, 50.0}, {106.0, 50.0}), {100.0, 50.0}).inside, 6.0, 1e-9);
}

TEST_F(TubePlaceTest, IsFoundAgainFromEverySection)
{
    for (const Bezier& curve : diagramCurves(308.0, 200.0)) {
        const TubeProfile profile = profileOf(curve, 20.0, 30.0);
        for (std::size_t i = 1; i < 96; i += 5) {
            for (const double fraction : {-0.9, -0.3, 0.4, 1.0}) {
                const TubePlace place = placeOn(curve, profile[i].at(fraction));
                EXPECT_NEAR(place.arc, samples.lengths[i], 0.02);
                EXPECT_NEAR(place.distance, fraction * profile[i].half, 0.01);
            }
        }
    }
}

TEST_F(TubePlaceTest, LookingAtFewerSamplesChangesNothing)
{
    const Bezier curve{{20.0, 20.0}, {200.0, 20.0}, {-60.0, 90.0}, {120.0, 90.0}};
    samples = sampleCurve(curve);
    normals = orientedNormals(samples);
    TubePlaces all(samples, normals);
    ASSERT_TRUE(all.narrow({70.0, 55.0}, 500.0, 1000.0));
    TubePlaces few(samples, normals);
    int near = 0;
    for (double y = 0.0; y < 110.0; y += 7.0) {
        for (double x = 0.0; x < 140.0; x += 16.0) {
            if (!few.narrow({x + 8.0, y}, 8.0, 20.0))
                continue;
            for (double dx = 0.5; dx < 16.0; dx += 2.5, ++near)
                EXPECT_EQ(few.place({x + dx, y}).arc, all.place({x + dx, y}).arc);
        }
    }
    EXPECT_GT(near, 100);
}

TEST_F(TubePlaceTest, FarFromTheTubeNothingIsLookedFor)
{
    samples = sampleCurve(line({10.0, 50.0}, {106.0, 50.0}));
    normals = orientedNormals(samples);
    TubePlaces places(samples, normals);
    EXPECT_FALSE(places.narrow({50.0, 80.1}, 10.0, 20.0));
    EXPECT_TRUE(places.narrow({50.0, 79.9}, 10.0, 20.0));
    EXPECT_FALSE(places.narrow({130.0, 72.0}, 8.0, 20.0)); // within the box, but around the corner
}

} // namespace
} // namespace amperly::glass
