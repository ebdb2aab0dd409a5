// The blurred light around a node.
#pragma once

#include <QColor>
#include <QImage>

namespace amperly {

/// A node's shape in `color`, blurred, for screens of `scale` pixels per point. It reaches
/// kNodeLook.glowReach points beyond the node on each side and has nothing at its edges.
[[nodiscard]] QImage nodeGlow(const QColor& color, double scale);

} // namespace amperly
