#include "platform/linux/popover/placement.h"

#include <algorithm>

namespace amperly {
namespace {

enum class Edge { Top, Bottom, Left, Right };

/// Panels that no desktop announces, as those that hide themselves, are thought to end here.
constexpr int kPanelReach = 64;

struct EdgeDistance {
    Edge edge;
    int distance; ///< logical pixels inwards, negative beyond the edge
};

EdgeDistance nearestEdge(const QRect& area, QPoint point)
{
    const EdgeDistance distances[] = {
        {Edge::Top, point.y() - area.top()},
        {Edge::Bottom, area.bottom() - point.y()},
        {Edge::Right, area.right() - point.x()},
        {Edge::Left, point.x() - area.left()},
    };
    return *std::min_element(std::begin(distances), std::end(distances),
        [](const EdgeDistance& one, const EdgeDistance& other) { return one.distance < other.distance; });
}

/// The coordinate next to `from` that keeps a length within [first, last].
int kept(int from, int length, int first, int last)
{
    return std::max(first, std::min(from, last - length + 1));
}

} // namespace

QRect besidePoint(QPoint point, QSize size, const ScreenArea& screen)
{
    constexpr int kGap = 12; // clear of the pointer where no panel keeps it off
    const QRect area = screen.available.adjusted(kEdgeMargin, kEdgeMargin, -kEdgeMargin, -kEdgeMargin);
    QPoint corner = point - QPoint(size.width() / 2, size.height() / 2);
    switch (nearestEdge(screen.available, point).edge) {
    case Edge::Top:
        corner.setY(point.y() < screen.available.top() ? area.top() : point.y() + kGap);
        break;
    case Edge::Bottom:
        corner.setY(point.y() > screen.available.bottom() ? area.bottom() + 1 - size.height()
                                                          : point.y() - kGap - size.height());
        break;
    case Edge::Left:
        corner.setX(point.x() < screen.available.left() ? area.left() : point.x() + kGap);
        break;
    case Edge::Right:
        corner.setX(point.x() > screen.available.right() ? area.right() + 1 - size.width()
                                                         : point.x() - kGap - size.width());
        break;
    }
    return {QPoint(kept(corner.x(), size.width(), area.left(), area.right()),
                kept(corner.y(), size.height(), area.top(), area.bottom())),
        size};
}

QPoint clickedPoint(QPoint pointer, std::optional<ScreenPoint> anchor, const ScreenArea& screenOfPointer)
{
    if (!anchor)
        return pointer;
    const bool onPanel = !screenOfPointer.available.contains(pointer)
        || nearestEdge(screenOfPointer.whole, pointer).distance < kPanelReach;
    return onPanel ? pointer : QPoint(anchor->x, anchor->y);
}

ScreenArea areaBesidePanel(QSize whole, QSize usable, QPoint point)
{
    ScreenArea screen{QRect(QPoint(0, 0), whole), QRect(QPoint(0, 0), whole)};
    const QSize taken = whole - usable;
    if (!usable.isValid() || taken.width() < 0 || taken.height() < 0)
        return screen;
    // Panels may lie along several edges, and what they take together is all that is known. The
    // one under the point is at most that thick.
    const EdgeDistance nearest = nearestEdge(screen.whole, point);
    switch (nearest.edge) {
    case Edge::Top:
        if (nearest.distance < taken.height())
            screen.available.setTop(taken.height());
        break;
    case Edge::Bottom:
        if (nearest.distance < taken.height())
            screen.available.setBottom(whole.height() - 1 - taken.height());
        break;
    case Edge::Left:
        if (nearest.distance < taken.width())
            screen.available.setLeft(taken.width());
        break;
    case Edge::Right:
        if (nearest.distance < taken.width())
            screen.available.setRight(whole.width() - 1 - taken.width());
        break;
    }
    return screen;
}

QPoint usualStatusArea(const QRect& screen)
{
    return screen.topRight();
}

} // namespace amperly
