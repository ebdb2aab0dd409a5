// Symbols that come with the system, by the names that this program's own drawings go by as well.
#pragma once

#include "render/glyph_set.h"

#include <optional>
#include <string_view>

namespace amperly {

/// The name, good for the whole run, under which `name` is looked up and drawn. A system with
/// symbols looks up any; elsewhere what is no drawing's name is the fallback's.
[[nodiscard]] std::string_view symbolName(std::string_view name);

/// The box of a symbol; nothing where the system has none for `name`. What is no symbol's name at
/// all gets the fallback's.
[[nodiscard]] std::optional<GlyphSize> systemSymbolSize(std::string_view name, const GlyphStyle& style);

/// A symbol at `scale` pixels per point, as large as its box; nothing as above.
[[nodiscard]] std::optional<GlyphDrawing> drawSystemSymbol(
    std::string_view name, const GlyphStyle& style, double scale);

} // namespace amperly
