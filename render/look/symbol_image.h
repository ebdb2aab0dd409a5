// A symbol as a picture in one colour, for windows.
#pragma once

#include "render/glyph_set.h"

#include <QColor>
#include <QImage>
#include <string_view>

namespace amperly {

/// The symbol called `name` in its box, which is glyphSize() points, drawn for screens of `scale`
/// pixels per point. The picture knows its scale: its size in points is the box, rounded up to
/// whole pixels.
[[nodiscard]] QImage symbolImage(
    std::string_view name, const GlyphStyle& style, const QColor& color, double scale);

} // namespace amperly
