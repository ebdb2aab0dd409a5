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

EdgeDistance nearestEdge(const QRect& area, QPoint place)
{
    const EdgeDistance distances[] = {
        {Edge::Top, place.y() - area.top()},
        {Edge::Bottom, area.bottom() - place.y()},
        {Edge::Right, area.right() - place.x()},
        {Edge::Left, place.x() - area.left()},
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

QRect besidePlace(QPoint place, QSize size, const ScreenArea& screen)
{
    constexpr int kGap = 12; // clear of the pointer where no panel keeps it off
    const QRect area = screen.available.adjusted(kEdgeMargin, kEdgeMargin, -kEdgeMargin, -kEdgeMargin);
    QPoint corner = place - QPoint(size.width() / 2, size.height() / 2);
    switch (nearestEdge(screen.available, place).edge) {
    case Edge::Top:
        corner.setY(place.y() < screen.available.top() ? area.top() : place.y() + kGap);
        break;
    case Edge::Bottom:
        corner.setY(place.y() > screen.available.bottom() ? area.bottom() + 1 - size.height()
                                                          : place.y() - kGap - size.height());
        break;
    case Edge::Left:
        corner.setX(place.x() < screen.available.left() ? area.left() : place.x() + kGap);
        break;
    case Edge::Right:
        corner.setX(place.x() > screen.available.right() ? area.right() + 1 - size.width()
                                                         : place.x() - kGap - size.width());
        break;
    }
    return {QPoint(kept(corner.x(), size.width(), area.left(), area.right()),
                kept(corner.y(), size.height(), area.top(), area.bottom())),
        size};
}

QPoint placeOfClick(QPoint pointer, std::optional<ScreenPoint> anchor, const ScreenArea& screenOfPointer)
{
    if (!anchor)
        return pointer;
    const bool onPanel = !screenOfPointer.available.contains(pointer)
        || nearestEdge(screenOfPointer.whole, pointer).distance < kPanelReach;
    return onPanel ? pointer : QPoint(anchor->x, anchor->y);
}

ScreenArea areaBesidePanel(QSize whole, QSize usable, QPoint place)
{
    ScreenArea screen{QRect(QPoint(0, 0), whole), QRect(QPoint(0, 0), whole)};
    const QSize taken = whole - usable;
    if (!usable.isValid() || taken.width() < 0 || taken.height() < 0)
        return screen;
    // Panels may lie along several edges, and what they take together is all that is known. The
    // one under the place is at most that thick.
    const EdgeDistance nearest = nearestEdge(screen.whole, place);
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
