#include "tests/flow/glass/curves.h"

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

TEST(CurveSamplesTest, BeginAndEndWhereTheCurveDoes)
{
    const Bezier curve{{1.0, 2.0}, {30.0, -4.0}, {50.0, 60.0}, {70.0, 8.0}};
    const CurveSamples samples = sampleCurve(curve);
    EXPECT_EQ(samples.points.size(), 97U);
    EXPECT_EQ(samples.points.front(), curve.p0);
    EXPECT_EQ(samples.points.back(), curve.p3);
    EXPECT_EQ(samples.lengths.front(), 0.0);
}

TEST(CurveSamplesTest, LieAtEvenStepsOfTheParameter)
{
    const Bezier curve{{0.0, 0.0}, {0.0, 32.0}, {64.0, 32.0}, {64.0, 0.0}};
    const CurveSamples samples = sampleCurve(curve);
    EXPECT_NEAR(samples.points[48].x, 32.0, 1e-12);
    EXPECT_NEAR(samples.points[48].y, 24.0, 1e-12); // 3/4 of the way to the control points
    EXPECT_NEAR(samples.points[24].x, 10.0, 1e-12); // t = 1/4: 10/64 of all of it
    EXPECT_NEAR(samples.points[24].y, 18.0, 1e-12);
}

TEST(CurveSamplesTest, AStraightLineIsAsLongAsItIs)
{
    const CurveSamples samples = sampleCurve(line({10.0, 20.0}, {40.0, 60.0}));
    EXPECT_NEAR(samples.length(), 50.0, 1e-9);
    EXPECT_NEAR(samples.lengths[48], 25.0, 1e-9);
}

TEST(CurveSamplesTest, AQuarterCircleIsAsLongAsItIs)
{
    constexpr double kControl = 0.5522847498;
    const CurveSamples samples
        = sampleCurve({{100.0, 0.0}, {100.0, 100.0 * kControl}, {100.0 * kControl, 100.0}, {0.0, 100.0}});
    EXPECT_NEAR(samples.length(), 50.0 * 3.14159265, 0.05);
}

TEST(CurveSamplesTest, LengthsNeverFall)
{
    const CurveSamples samples = sampleCurve({{0.0, 0.0}, {90.0, 0.0}, {-30.0, 0.0}, {60.0, 0.0}});
    for (std::size_t i = 1; i < samples.lengths.size(); ++i)
        EXPECT_GE(samples.lengths[i], samples.lengths[i - 1]);
    EXPECT_GT(samples.length(), 60.0); // it turns back on the way
}

TEST(CurveSamplesTest, APointIsNoLength)
{
    const FlowPoint place{7.0, 7.0};
    EXPECT_NEAR(sampleCurve({place, place, place, place}).length(), 0.0, 1e-9);
}

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
