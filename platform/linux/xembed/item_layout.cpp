#include "platform/linux/xembed/item_layout.h"

#include <algorithm>
#include <cmath>

namespace amperly {

namespace {

/// A wide picture that had to be smaller than this, beside the size it should have, is not worth
/// reading: one reading as large as possible is better.
constexpr double kLeastShrinkage = 0.75;

/// A trace that arithmetic leaves on whole numbers must not cost a pixel.
constexpr double kPixelTrace = 1e-6;

int pixelsFor(double points, double scale)
{
    return static_cast<int>(std::ceil(points * scale - kPixelTrace));
}

/// How many rows around the middle hold all of the ink.
int rowsWithInk(const CoverageMask& mask)
{
    const auto inked = [&](int row) {
        const auto begin = mask.coverage.begin() + static_cast<std::ptrdiff_t>(row) * mask.width;
        return std::any_of(begin, begin + mask.width, [](std::uint8_t coverage) { return coverage != 0; });
    };
    for (int margin = 0; 2 * margin < mask.height; ++margin) {
        if (inked(margin) || inked(mask.height - 1 - margin))
            return mask.height - 2 * margin;
    }
    return 0;
}

} // namespace

double scaleForHeight(int height)
{
    return std::max(1.0, std::floor(2.0 * height / kTrayIconPixels) / 2.0);
}

PixelSize wishedSize(double widthPoints, int height, TrayOrientation orientation)
{
    if (orientation == TrayOrientation::Vertical)
        return {height, height};
    return {std::max(height, pixelsFor(widthPoints, scaleForHeight(height))), height};
}

ItemLayout chooseLayout(double widthPoints, PixelSize window)
{
    const double wished = scaleForHeight(window.height);
    const double scale = pixelsFor(widthPoints, wished) <= window.width ? wished : window.width / widthPoints;
    if (scale >= wished * kLeastShrinkage)
        return {.shape = ItemShape::Wide, .scale = scale, .side = 0};
    return {.shape = ItemShape::Tile, .scale = 1.0, .side = std::min(window.width, window.height)};
}

void drawItem(const StatusPicture& picture, const ItemLayout& layout, PixelSize window, CoverageMask& mask)
{
    if (layout.shape == ItemShape::Tile) {
        picture.drawTile(mask, 0, layout.side);
        return;
    }
    // The picture is as high as a bar, mostly air. Only where its ink does not fit it shrinks.
    const auto drawAt = [&](double scale) {
        mask.clear(pixelsFor(picture.widthPoints(), scale), pixelsFor(picture.heightPoints(), scale));
        picture.draw(mask, scale);
    };
    drawAt(layout.scale);
    const int rows = rowsWithInk(mask);
    if (rows > window.height)
        drawAt(layout.scale * window.height / rows);
}

} // namespace amperly
