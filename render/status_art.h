// What status images are drawn from: the desktop's font and the symbols, each drawn once per
// size. Whoever sets up the program puts one of these in force with Injected<StatusArt>.
#pragma once

#include "platform/injected.h"
#include "render/glyph_set.h"
#include "render/text_masks.h"

namespace amperly {

class StatusArt {
public:
    /// `font` must outlive this.
    explicit StatusArt(const UiFont& font) : text(font) { }

    TextMasks text;
    GlyphSet glyphs;

    /// The art in force. Outside every Injected<StatusArt> this is a programming error.
    [[nodiscard]] static StatusArt& current();
};

} // namespace amperly
