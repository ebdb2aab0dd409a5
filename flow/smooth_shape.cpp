#include "flow/smooth_shape.h"

#include <QTransform>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace amperly {

namespace {

/// How much of a corner's quarter turn is taken over by the transitions beside the arc.
constexpr double kSmoothing = 0.6;

/// The lengths of one corner, along the side that it begins on and away from it.
struct Corner {
    double reach = 0.0; ///< from the rectangle's corner to where the side begins to bend
    double first = 0.0; ///< along the side: to the transition's first inner point,
    double second = 0.0; ///< from there to its second one,
    double third = 0.0; ///< and from there to its end,
    double drop = 0.0; ///< which lies so far off the side
    double arc = 0.0; ///< width of the arc between the two transitions
    double radius = 0.0;
};

/// The usual construction: an arc of less than a quarter turn, met on both sides by cubics that
/// share its tangent and leave the side without curvature.
Corner corner(double radius, double longest)
{
    const double smoothing = radius > 0.0 ? std::clamp(longest / radius - 1.0, 0.0, kSmoothing) : 0.0;
    constexpr double kQuarter = std::numbers::pi / 2.0;
    const double turn = kQuarter * smoothing / 2.0; // of each transition
    const double arcTurn = kQuarter - 2.0 * turn;

    Corner made;
    made.radius = radius;
    made.reach = (1.0 + smoothing) * radius;
    made.arc = std::sin(arcTurn / 2.0) * radius * std::numbers::sqrt2;
    const double slope = radius * std::tan(turn / 2.0);
    made.third = slope * std::cos(turn);
    made.drop = slope * std::sin(turn);
    made.second = (made.reach - made.arc - made.third - made.drop) / 3.0;
    made.first = 2.0 * made.second;
    return made;
}

/// The corner at the upper right of a box, beginning at `start` on its upper side.
void addCorner(QPainterPath& path, const Corner& made, const QTransform& toCorner)
{
    const auto at = [&](double along, double down) { return toCorner.map(QPointF(along, down)); };
    const double straight = made.first + made.second;
    const double arcStart = straight + made.third;
    path.cubicTo(at(made.first, 0.0), at(straight, 0.0), at(arcStart, made.drop));
    // A cubic is as good as an arc of less than a quarter turn.
    const double turn = 2.0 * std::asin(std::min(1.0, made.arc / (made.radius * std::numbers::sqrt2)));
    const double tilt = (std::numbers::pi / 2.0 - turn) / 2.0;
    const double handle = 4.0 / 3.0 * std::tan(turn / 4.0) * made.radius;
    const double endAlong = arcStart + made.arc;
    const double endDown = made.drop + made.arc;
    path.cubicTo(at(arcStart + handle * std::cos(tilt), made.drop + handle * std::sin(tilt)),
        at(endAlong - handle * std::sin(tilt), endDown - handle * std::cos(tilt)), at(endAlong, endDown));
    path.cubicTo(at(endAlong + made.drop, endDown + made.third),
        at(made.reach, endDown + made.third + made.second), at(made.reach, made.reach));
}

} // namespace

QPainterPath smoothRectangle(const QRectF& rect, double radius)
{
    const double longest = std::min(rect.width(), rect.height()) / 2.0;
    const Corner made = corner(std::min(radius, longest), longest);
    QPainterPath path;
    if (!(made.radius > 0.0)) {
        path.addRect(rect);
        return path;
    }
    constexpr double kQuarterTurn = 90.0; // degrees
    const std::array starts{rect.topRight() + QPointF(-made.reach, 0.0),
        rect.bottomRight() + QPointF(0.0, -made.reach), rect.bottomLeft() + QPointF(made.reach, 0.0),
        rect.topLeft() + QPointF(0.0, made.reach)};
    path.moveTo(starts.front());
    for (std::size_t index = 0; index < starts.size(); ++index) {
        path.lineTo(starts[index]);
        addCorner(path, made,
            QTransform::fromTranslate(starts[index].x(), starts[index].y())
                .rotate(kQuarterTurn * static_cast<double>(index)));
    }
    path.closeSubpath();
    return path;
}

} // namespace amperly
