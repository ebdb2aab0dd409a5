// How the picture goes into the window that a tray gives it. Some trays honour the width that an
// item asks for, others make a square of whatever they get; what counts is the size that comes.
#pragma once

#include "platform/coverage_mask.h"
#include "platform/status_picture.h"

namespace amperly {

/// In the pixels of the X server, which knows no scale.
struct PixelSize {
    int width = 0;
    int height = 0;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

/// The height that trays give to icons at scale 1.
inline constexpr int kTrayIconPixels = 22;

/// Which way the tray grows.
enum class TrayOrientation { Horizontal, Vertical };

enum class ItemShape {
    Wide, ///< the whole picture
    Tile, ///< the first reading as a square
};

struct ItemLayout {
    ItemShape shape = ItemShape::Tile;
    double scale = 1.0; ///< of the wide picture, pixels per point
    int side = 0; ///< of the tile, pixels
    friend bool operator==(const ItemLayout&, const ItemLayout&) = default;
};

/// Pixels per point in a row of icons `height` pixels high, in steps of a half from 1. The
/// readings keep the size of the panel's other texts; they do not grow with each pixel.
[[nodiscard]] double scaleForHeight(int height);

/// The size to ask for in a tray whose icons are `height` pixels high. Along a vertical panel
/// there is no width to ask for.
[[nodiscard]] PixelSize wishedSize(double widthPoints, int height, TrayOrientation orientation);

/// What to draw for a picture `widthPoints` wide in a window of `window` pixels.
[[nodiscard]] ItemLayout chooseLayout(double widthPoints, PixelSize window);

/// Draws `picture` as `layout` says into `mask`, which may come out larger than `window` with
/// nothing but empty rows beyond it, and has to be centred.
void drawItem(const StatusPicture& picture, const ItemLayout& layout, PixelSize window, CoverageMask& mask);

} // namespace amperly
