// Rounded rectangles whose corners begin softly: the curvature grows from the straight side
// instead of jumping to that of an arc.
#pragma once

#include <QPainterPath>
#include <QRectF>

namespace amperly {

/// `rect` with corners that are as round as arcs of `radius`. Where a side is too short for the
/// soft beginning, as in a capsule, the corners are the more like arcs.
[[nodiscard]] QPainterPath smoothRectangle(const QRectF& rect, double radius);

} // namespace amperly
