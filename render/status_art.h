// What status images are drawn from: the desktop's font and the symbols, each drawn once per
// size, and how high the bar is that they stand in. Whoever sets up the program puts one of these in force
// with Injected<StatusArt>.
#pragma once

#include "platform/injected.h"
#include "render/glyph_set.h"
#include "render/status_layout.h"
#include "render/text_masks.h"

namespace amperly {

class StatusArt {
public:
    /// `font` must outlive this.
    explicit StatusArt(const UiFont& font, double heightOfBar = kUsualBarHeight)
        : text(font), barHeight(heightOfBar)
    {
    }

    TextMasks text;
    GlyphSet glyphs;
    const double barHeight; ///< points

    /// The art in force. Outside every Injected<StatusArt> this is a programming error.
    [[nodiscard]] static StatusArt& current();
};

} // namespace amperly
