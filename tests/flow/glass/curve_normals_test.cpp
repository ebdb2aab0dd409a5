#include "tests/flow/glass/curves.h"

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

FlowPoint anyNormal(const Bezier& curve)
{
    return orientedNormals(sampleCurve(curve))[30];
}

TEST(CurveNormalsTest, AreTheTangentTurnedFromXTowardsY)
{
    const CurveNormals normals = unitNormals(sampleCurve(line({0.0, 0.0}, {80.0, 60.0})));
    for (const FlowPoint& normal : normals) {
        EXPECT_NEAR(normal.x, -0.6, 1e-9);
        EXPECT_NEAR(normal.y, 0.8, 1e-9);
    }
}

TEST(CurveNormalsTest, TangentsReachFromTheSampleBeforeToTheSampleAfter)
{
    const CurveSamples samples = sampleCurve({{0.0, 0.0}, {40.0, 0.0}, {80.0, 40.0}, {80.0, 80.0}});
    const CurveNormals normals = unitNormals(samples);
    const auto across = [&](std::size_t sample, std::size_t from, std::size_t to) {
        const double dx = samples.points[to].x - samples.points[from].x;
        const double dy = samples.points[to].y - samples.points[from].y;
        return normals[sample].x * dx + normals[sample].y * dy;
    };
    EXPECT_NEAR(across(0, 0, 1), 0.0, 1e-12);
    EXPECT_NEAR(across(50, 49, 51), 0.0, 1e-12);
    EXPECT_NEAR(across(96, 95, 96), 0.0, 1e-12);
}

TEST(CurveNormalsTest, PointUpWhicheverWayAFlowGoes)
{
    const Bezier right = line({0.0, 50.0}, {100.0, 50.0});
    EXPECT_NEAR(anyNormal(right).y, -1.0, 1e-9);
    EXPECT_NEAR(anyNormal(reversed(right)).y, -1.0, 1e-9);
}

TEST(CurveNormalsTest, PointLeftWhereATubeStands)
{
    const Bezier down = line({50.0, 0.0}, {50.0, 100.0});
    EXPECT_NEAR(anyNormal(down).x, -1.0, 1e-9);
    EXPECT_NEAR(anyNormal(reversed(down)).x, -1.0, 1e-9);
}

TEST(CurveNormalsTest, ATubeThatLeansALittleIsLitFromAbove)
{
    const Bezier leaning = line({50.0, 0.0}, {51.0, 100.0});
    EXPECT_LT(anyNormal(leaning).y, 0.0);
    const FlowPoint normal = anyNormal(line({50.0, 0.0}, {50.05, 100.0}));
    EXPECT_LT(normal.x, 0.0) << "nearly standing: the left side decides";
    EXPECT_GT(normal.y, 0.0);
}

TEST(CurveNormalsTest, TheMiddleDecidesForAll)
{
    // Down, along the bottom, and up again.
    const CurveSamples samples = sampleCurve({{0.0, 0.0}, {0.0, 80.0}, {90.0, 80.0}, {90.0, 0.0}});
    const CurveNormals normals = orientedNormals(samples);
    EXPECT_LT(normals[48].y, -0.9);
    EXPECT_GT(normals[0].x, 0.9); // inside of the bend, as in the middle
    EXPECT_LT(normals[96].x, -0.9);
}

TEST(CurveNormalsTest, PointsThatCoincideHaveNoDirection)
{
    const FlowPoint place{7.0, 7.0};
    for (const FlowPoint& normal : unitNormals(sampleCurve({place, place, place, place})))
        EXPECT_NEAR(std::hypot(normal.x, normal.y), 0.0, 1e-9);
}

} // namespace
} // namespace amperly::glass
