#include "render/look/pixel_painting.h"

#include <QPainter>
#include <cmath>

namespace amperly {

QImage clearPicture(const QSizeF& points, double scale)
{
    QImage picture(static_cast<int>(std::ceil(points.width() * scale)),
        static_cast<int>(std::ceil(points.height() * scale)), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    return picture;
}

double pixelScale(const QPainter& painter)
{
    return painter.deviceTransform().m11() / painter.worldTransform().m11();
}

double onPixels(double points, double scale)
{
    return std::round(points * scale) / scale;
}

void drawOnPixels(QPainter& painter, const QPointF& place, const QImage& picture)
{
    const QTransform world = painter.worldTransform();
    const QTransform device = painter.deviceTransform();
    const QPointF exact = device.map(place);
    const QTransform pixels = QTransform::fromTranslate(std::round(exact.x()), std::round(exact.y()));
    // The painter's device comes with a scale and a place of its own, which no world transform can
    // replace, only undo. Pixel for pixel is also the way that takes no detour.
    painter.setWorldTransform(pixels * device.inverted() * world);
    const QRectF whole(QPointF(), QSizeF(picture.size()));
    painter.drawImage(whole, picture, whole);
    painter.setWorldTransform(world);
}

} // namespace amperly
