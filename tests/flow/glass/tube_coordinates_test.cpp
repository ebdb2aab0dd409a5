#include "flow/glass/tube_coordinates.h"
#include "tests/flow/glass/curves.h"

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

class TubeCoordinatesTest : public testing::Test {
protected:
    TubeCoordinates coordinatesOn(const Bezier& curve, const FlowPoint& point)
    {
        samples = sampleCurve(curve);
        normals = orientedNormals(samples);
        TubeLocator locator(samples, normals);
        EXPECT_TRUE(locator.narrow(point, 0.0, 1000.0));
        return locator.locate(point);
    }

    CurveSamples samples{};
    CurveNormals normals{};
};

TEST_F(TubeCoordinatesTest, IsLengthAlongAndDistanceUpwards)
{
    const TubeCoordinates found = coordinatesOn(line({10.0, 50.0}, {106.0, 50.0}), {40.25, 43.0});
    EXPECT_NEAR(found.arc, 30.25, 1e-9);
    EXPECT_NEAR(found.distance, 7.0, 1e-9);
    EXPECT_NEAR(found.inside, 30.25, 1e-9);
    EXPECT_EQ(found.sample, 30U);
    EXPECT_NEAR(found.beyond, 0.25, 1e-9);
}

TEST_F(TubeCoordinatesTest, UpIsUpForAFlowToTheLeftToo)
{
    const TubeCoordinates found = coordinatesOn(line({106.0, 50.0}, {10.0, 50.0}), {40.25, 43.0});
    EXPECT_NEAR(found.arc, 65.75, 1e-9);
    EXPECT_NEAR(found.distance, 7.0, 1e-9);
}

TEST_F(TubeCoordinatesTest, BeforeTheStartAndBehindTheEndIsOutside)
{
    const Bezier curve = line({10.0, 50.0}, {106.0, 50.0});
    const TubeCoordinates before = coordinatesOn(curve, {8.0, 53.0});
    EXPECT_NEAR(before.inside, -2.0, 1e-9);
    EXPECT_NEAR(before.distance, -3.0, 1e-9);
    const TubeCoordinates behind = coordinatesOn(curve, {109.0, 45.0});
    EXPECT_NEAR(behind.inside, -3.0, 1e-9);
    EXPECT_NEAR(behind.distance, 5.0, 1e-9);
    EXPECT_EQ(behind.arc, samples.length());
}

TEST_F(TubeCoordinatesTest, TheNearerEndCounts)
{
    EXPECT_NEAR(coordinatesOn(line({10.0, 50.0}, {106.0, 50.0}), {100.0, 50.0}).inside, 6.0, 1e-9);
}

TEST_F(TubeCoordinatesTest, IsFoundAgainFromEverySection)
{
    for (const Bezier& curve : diagramCurves(308.0, 200.0)) {
        const TubeProfile profile = profileOf(curve, 20.0, 30.0);
        for (std::size_t i = 1; i < 96; i += 5) {
            for (const double fraction : {-0.9, -0.3, 0.4, 1.0}) {
                const TubeCoordinates found = coordinatesOn(curve, profile[i].at(fraction));
                EXPECT_NEAR(found.arc, samples.lengths[i], 0.02);
                EXPECT_NEAR(found.distance, fraction * profile[i].half, 0.01);
            }
        }
    }
}

TEST_F(TubeCoordinatesTest, LookingAtFewerSamplesChangesNothing)
{
    const Bezier curve{{20.0, 20.0}, {200.0, 20.0}, {-60.0, 90.0}, {120.0, 90.0}};
    samples = sampleCurve(curve);
    normals = orientedNormals(samples);
    TubeLocator all(samples, normals);
    ASSERT_TRUE(all.narrow({70.0, 55.0}, 500.0, 1000.0));
    TubeLocator few(samples, normals);
    int near = 0;
    for (double y = 0.0; y < 110.0; y += 7.0) {
        for (double x = 0.0; x < 140.0; x += 16.0) {
            if (!few.narrow({x + 8.0, y}, 8.0, 20.0))
                continue;
            for (double dx = 0.5; dx < 16.0; dx += 2.5, ++near)
                EXPECT_EQ(few.locate({x + dx, y}).arc, all.locate({x + dx, y}).arc);
        }
    }
    EXPECT_GT(near, 100);
}

TEST_F(TubeCoordinatesTest, FarFromTheTubeNothingIsLookedFor)
{
    samples = sampleCurve(line({10.0, 50.0}, {106.0, 50.0}));
    normals = orientedNormals(samples);
    TubeLocator locator(samples, normals);
    EXPECT_FALSE(locator.narrow({50.0, 80.1}, 10.0, 20.0));
    EXPECT_TRUE(locator.narrow({50.0, 79.9}, 10.0, 20.0));
    EXPECT_FALSE(locator.narrow({130.0, 72.0}, 8.0, 20.0)); // within the box, but around the corner
}

} // namespace
} // namespace amperly::glass
