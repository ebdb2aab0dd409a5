// For systems without symbols of their own, where this program's drawings are shown.

#include "render/system_symbols.h"

namespace amperly {

std::string_view symbolName(std::string_view name)
{
    return glyphNamed(name).name;
}

std::optional<GlyphSize> systemSymbolSize(std::string_view, const GlyphStyle&)
{
    return std::nullopt;
}

std::optional<GlyphDrawing> drawSystemSymbol(std::string_view, const GlyphStyle&, double)
{
    return std::nullopt;
}

} // namespace amperly
