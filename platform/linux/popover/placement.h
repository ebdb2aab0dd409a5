// Where a panel goes that belongs to a point on the screen: beside it, away from the edge that
// the point is nearest to, and wholly in view.
#pragma once

#include "platform/status_item.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <optional>

namespace amperly {

/// A screen in logical coordinates.
struct ScreenArea {
    QRect whole;
    QRect available; ///< without the desktop's panels, as far as they are known
};

/// Between a panel and the edges of what is available.
inline constexpr int kEdgeMargin = 8;

/// The rectangle of a panel of `size` that belongs to `point`. One that is too large for the
/// screen keeps its top left corner in view.
[[nodiscard]] QRect besidePoint(QPoint point, QSize size, const ScreenArea& screen);

/// Which point a click on the status item means: the pointer's while it is where desktops have
/// their panels, and otherwise, as after a click by keyboard, the one that came with the click.
[[nodiscard]] QPoint clickedPoint(
    QPoint pointer, std::optional<ScreenPoint> anchor, const ScreenArea& screenOfPointer);

/// The part of a screen that is left beside a desktop panel, of which only the thickness is known,
/// along the edge nearest to `point`. `usable` is the size of that part; where it equals the whole
/// screen's, or the point is not on the panel, all of it is available.
[[nodiscard]] ScreenArea areaBesidePanel(QSize whole, QSize usable, QPoint point);

/// Where the status area most often is, for when nothing is known.
[[nodiscard]] QPoint usualStatusArea(const QRect& screen);

} // namespace amperly
