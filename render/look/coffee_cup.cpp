#include "render/look/coffee_cup.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace amperly {

namespace {

/// Twelfths of the text's size, from the upper left of the box.
struct CupLook {
    double width = 13.0;
    double height = 12.0;
    double bodyLeft = 1.5;
    double bodyRight = 9.0;
    double bodyTop = 4.5;
    double bodyBottom = 9.8;
    double bodyCorner = 2.8;
    double handleRight = 11.8;
    double handleTop = 5.2;
    double handleBottom = 8.4;
    double saucerLeft = 0.6;
    double saucerRight = 10.0;
    double saucer = 11.4; ///< the line's middle
    double line = 1.1;
    double steamTop = 0.4;
    double steamBottom = 3.1;
    double steamSway = 0.7;
    double firstSteam = 3.7;
    double secondSteam = 6.6;
};
constexpr CupLook kCup;

} // namespace

QImage coffeeCup(double size, const QColor& color, double scale)
{
    constexpr double kUnitsPerSize = 12.0;
    const double unit = size * scale / kUnitsPerSize; // pixels
    const auto edge = [unit](double units) { return std::round(units * unit); };
    QImage picture(static_cast<int>(std::ceil(kCup.width * unit)),
        static_cast<int>(std::ceil(kCup.height * unit)), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const double line = std::max(1.0, std::round(kCup.line * unit));
    const double odd = std::fmod(line, 2.0) / 2.0; // so that straight lines fill whole pixels

    // The body is round at its foot only.
    const double corner = kCup.bodyCorner * unit;
    const QRectF body(QPointF(edge(kCup.bodyLeft), edge(kCup.bodyTop)),
        QPointF(edge(kCup.bodyRight), edge(kCup.bodyBottom)));
    QPainterPath path(body.topLeft());
    path.lineTo(body.topRight());
    path.lineTo(body.right(), body.bottom() - corner);
    path.quadTo(body.bottomRight(), body.bottomRight() - QPointF(corner, 0.0));
    path.lineTo(body.left() + corner, body.bottom());
    path.quadTo(body.bottomLeft(), body.bottomLeft() - QPointF(0.0, corner));
    path.closeSubpath();
    painter.fillPath(path, color);

    painter.setPen(QPen(color, line, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath lines(QPointF(body.right(), edge(kCup.handleTop) + odd));
    const double handleMiddle = (kCup.handleTop + kCup.handleBottom) / 2.0 * unit;
    lines.cubicTo(kCup.handleRight * unit, edge(kCup.handleTop) + odd, kCup.handleRight * unit,
        edge(kCup.handleBottom), body.right() - line, std::max(handleMiddle, edge(kCup.handleBottom)));
    lines.moveTo(edge(kCup.saucerLeft) + odd, edge(kCup.saucer) - odd);
    lines.lineTo(edge(kCup.saucerRight) - odd, edge(kCup.saucer) - odd);
    for (const double steam : {kCup.firstSteam, kCup.secondSteam}) {
        const double middle = edge(steam) + odd;
        const double sway = kCup.steamSway * unit;
        const double third = (kCup.steamBottom - kCup.steamTop) / 3.0;
        lines.moveTo(middle, kCup.steamBottom * unit);
        lines.cubicTo(middle - 2.0 * sway, (kCup.steamBottom - third) * unit, middle + 2.0 * sway,
            (kCup.steamTop + third) * unit, middle, kCup.steamTop * unit + line / 2.0);
    }
    painter.drawPath(lines);
    painter.end();
    picture.setDevicePixelRatio(scale);
    return picture;
}

} // namespace amperly
