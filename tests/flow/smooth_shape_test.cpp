#include "flow/smooth_shape.h"

#include <gtest/gtest.h>

#include <cmath>

namespace amperly {
namespace {

const QRectF kNode(0.0, 0.0, 84.0, 74.0);

TEST(SmoothShapeTest, FillsItsRectangle)
{
    EXPECT_EQ(smoothRectangle(kNode, 14.0).boundingRect(), kNode);
}

TEST(SmoothShapeTest, IsTheSameFromEverySide)
{
    const QPainterPath path = smoothRectangle(kNode, 14.0);
    for (double x = 0.5; x < 20.0; x += 1.0) {
        for (double y = 0.5; y < 20.0; y += 1.0) {
            const bool inside = path.contains(QPointF(x, y));
            EXPECT_EQ(path.contains(QPointF(84.0 - x, y)), inside) << x << ' ' << y;
            EXPECT_EQ(path.contains(QPointF(x, 74.0 - y)), inside) << x << ' ' << y;
            EXPECT_EQ(path.contains(QPointF(84.0 - x, 74.0 - y)), inside) << x << ' ' << y;
        }
    }
}

TEST(SmoothShapeTest, IsAsRoundAsAnArcInTheMiddleOfACorner)
{
    const QPainterPath path = smoothRectangle(kNode, 14.0);
    const double arc = 14.0 * (1.0 - std::sqrt(0.5)); // from the corner, along either side
    EXPECT_FALSE(path.contains(QPointF(arc - 0.3, arc - 0.3)));
    EXPECT_TRUE(path.contains(QPointF(arc + 0.3, arc + 0.3)));
}

TEST(SmoothShapeTest, CornersBeginBeforeAnArcWould)
{
    QPainterPath arcs;
    arcs.addRoundedRect(kNode, 14.0, 14.0);
    const QPointF early(14.2, 0.06); // beyond the arc's beginning
    EXPECT_TRUE(arcs.contains(early));
    EXPECT_FALSE(smoothRectangle(kNode, 14.0).contains(early));
    EXPECT_TRUE(smoothRectangle(kNode, 14.0).contains(QPointF(14.0 * 1.6 + 0.1, 0.05)));
}

TEST(SmoothShapeTest, ACapsuleHasPlainRoundEnds)
{
    const QRectF pill(0.0, 0.0, 80.0, 20.0);
    const QPainterPath path = smoothRectangle(pill, 10.0);
    for (int degrees = 0; degrees < 90; degrees += 10) {
        const double angle = degrees * 3.14159265 / 180.0;
        const QPointF direction(-std::cos(angle), -std::sin(angle));
        EXPECT_TRUE(path.contains(QPointF(10.0, 10.0) + direction * 9.8)) << degrees;
        EXPECT_FALSE(path.contains(QPointF(10.0, 10.0) + direction * 10.2)) << degrees;
    }
}

TEST(SmoothShapeTest, ARadiusThatIsTooLargeIsLimitedAndNoneIsARectangle)
{
    EXPECT_EQ(smoothRectangle(QRectF(0, 0, 10, 10), 50.0).boundingRect(), QRectF(0, 0, 10, 10));
    EXPECT_TRUE(smoothRectangle(QRectF(0, 0, 10, 10), 0.0).contains(QPointF(0.1, 0.1)));
}

} // namespace
} // namespace amperly
