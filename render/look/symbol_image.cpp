#include "render/look/symbol_image.h"

#include "render/status_art.h"

#include <algorithm>
#include <cmath>

namespace amperly {

QImage symbolImage(std::string_view name, const GlyphStyle& style, const QColor& color, double scale)
{
    const GlyphSize box = glyphSize(name, style);
    const GlyphDrawing& drawing = StatusArt::current().glyphs.drawing(name, style, scale);
    // A drawing may be a little larger than its box, so that its strokes fill whole pixels.
    const int width = std::max(drawing.mask.width, static_cast<int>(std::ceil(box.width * scale)));
    const int height = std::max(drawing.mask.height, static_cast<int>(std::ceil(box.height * scale)));
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const int left = (width - drawing.mask.width) / 2;
    const int top = (height - drawing.mask.height) / 2;
    for (int y = 0; y < drawing.mask.height; ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(top + y)) + left;
        for (int x = 0; x < drawing.mask.width; ++x) {
            const int alpha = drawing.mask.at(x, y) * color.alpha() / 255;
            row[x] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha));
        }
    }
    image.setDevicePixelRatio(scale);
    return image;
}

} // namespace amperly
