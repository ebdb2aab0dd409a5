// Symbols that come with the system, by the names that this program's own drawings go by as well.
#pragma once

#include "render/glyph_set.h"

#include <optional>
#include <string_view>

namespace amperly {

/// The box of a symbol; nothing where the system has none for `name`. What is no symbol's name at
/// all gets the fallback's.
[[nodiscard]] std::optional<GlyphSize> systemSymbolSize(std::string_view name, const GlyphStyle& style);

/// A symbol at `scale` pixels per point, as large as its box; nothing as above.
[[nodiscard]] std::optional<GlyphDrawing> drawSystemSymbol(
    std::string_view name, const GlyphStyle& style, double scale);

} // namespace amperly
