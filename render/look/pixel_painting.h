// Pictures that were drawn for the pixels of one screen, and how they come onto them unblurred.
#pragma once

#include <QImage>
#include <QPointF>
#include <QSizeF>

class QPainter;

namespace amperly {

/// An empty picture of so many points, rounded up to whole pixels, that knows its scale.
[[nodiscard]] QImage clearPicture(const QSizeF& points, double scale);

/// Pixels per point where the painter paints, apart from what its world transform does.
[[nodiscard]] double pixelScale(const QPainter& painter);

/// `points` moved to the nearest pixel of a screen with so many pixels per point.
[[nodiscard]] double onPixels(double points, double scale);

/// Lays a picture that was drawn for the painter's scale down with its upper left corner on the
/// whole pixel nearest to `place`, pixel for pixel.
void drawOnPixels(QPainter& painter, const QPointF& place, const QImage& picture);

} // namespace amperly
