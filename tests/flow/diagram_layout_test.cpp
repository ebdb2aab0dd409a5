#include "flow/diagram_layout.h"

#include <gtest/gtest.h>

namespace amperly {

void PrintTo(const FlowPoint& point, std::ostream* out)
{
    *out << point.x << ", " << point.y;
}

namespace {

const DiagramLayout kLayout = diagramLayout(308.0, 200.0);

TEST(DiagramLayoutTest, NodesStandTopLeftTopRightAndBottomCentre)
{
    EXPECT_EQ(kLayout.charger, (FlowPoint{42.0, 41.0}));
    EXPECT_EQ(kLayout.computer, (FlowPoint{266.0, 41.0}));
    EXPECT_EQ(kLayout.battery, (FlowPoint{154.0, 163.0}));
}

TEST(DiagramLayoutTest, NodesFollowTheSizeOfTheDiagram)
{
    const DiagramLayout layout = diagramLayout(400.0, 260.0);
    EXPECT_EQ(layout.charger, (FlowPoint{42.0, 41.0}));
    EXPECT_EQ(layout.computer, (FlowPoint{358.0, 41.0}));
    EXPECT_EQ(layout.battery, (FlowPoint{200.0, 223.0}));
}

TEST(DiagramLayoutTest, ChargerToComputerRunsBetweenTheirFacingEdges)
{
    EXPECT_EQ(kLayout.chargerToMac.p0, (FlowPoint{84.0, 41.0}));
    EXPECT_EQ(kLayout.chargerToMac.p1, (FlowPoint{154.0, 41.0}));
    EXPECT_EQ(kLayout.chargerToMac.p2, (FlowPoint{154.0, 41.0}));
    EXPECT_EQ(kLayout.chargerToMac.p3, (FlowPoint{224.0, 41.0}));
}

TEST(DiagramLayoutTest, ChargerToBatteryLeavesStraightDownAndArrivesHorizontally)
{
    const Bezier& curve = kLayout.chargerToBattery;
    EXPECT_EQ(curve.p0, (FlowPoint{42.0, 78.0}));
    EXPECT_EQ(curve.p3, (FlowPoint{112.0, 163.0}));
    EXPECT_EQ(curve.p1.x, curve.p0.x);
    EXPECT_DOUBLE_EQ(curve.p1.y, 78.0 + 85.0 * 0.55);
    EXPECT_EQ(curve.p2.y, curve.p3.y);
    EXPECT_DOUBLE_EQ(curve.p2.x, 112.0 - 70.0 * 0.55);
}

TEST(DiagramLayoutTest, BatteryToComputerLeavesHorizontallyAndArrivesStraightUp)
{
    const Bezier& curve = kLayout.batteryToMac;
    EXPECT_EQ(curve.p0, (FlowPoint{196.0, 163.0}));
    EXPECT_EQ(curve.p3, (FlowPoint{266.0, 78.0}));
    EXPECT_EQ(curve.p1.y, curve.p0.y);
    EXPECT_DOUBLE_EQ(curve.p1.x, 196.0 + 70.0 * 0.55);
    EXPECT_EQ(curve.p2.x, curve.p3.x);
    EXPECT_DOUBLE_EQ(curve.p2.y, 78.0 + 85.0 * 0.55);
}

TEST(FullScaleTest, IsNeverLessThan60Watts)
{
    EXPECT_EQ(fullScaleWatts({.systemLoad = 12.0}), 60.0);
    EXPECT_EQ(fullScaleWatts({.systemLoad = 12.0, .adapterRating = 30}), 60.0);
}

TEST(FullScaleTest, IsTheLargestOfRatingLoadAndInput)
{
    EXPECT_EQ(fullScaleWatts({.systemLoad = 80.0, .adapterIn = 90.0, .adapterRating = 140}), 140.0);
    EXPECT_EQ(fullScaleWatts({.systemLoad = 150.0, .adapterIn = 90.0, .adapterRating = 140}), 150.0);
    EXPECT_EQ(fullScaleWatts({.systemLoad = 80.0, .adapterIn = 90.5}), 90.5);
}

TEST(TubeWidthTest, Is9PointsWithoutPowerAnd23AtFullScale)
{
    EXPECT_EQ(tubeWidth(0.0, 60.0), 9.0);
    EXPECT_EQ(tubeWidth(30.0, 60.0), 16.0);
    EXPECT_EQ(tubeWidth(60.0, 60.0), 23.0);
}

TEST(TubeWidthTest, SaturatesBeyondFullScale)
{
    EXPECT_EQ(tubeWidth(300.0, 60.0), 23.0);
}

} // namespace
} // namespace amperly
