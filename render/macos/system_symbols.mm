// The system's symbols: the same pictures that every other item in the menu bar is made of.

#include "render/system_symbols.h"

#include "platform/macos/drawing/alpha_bitmap.h"
#include "platform/macos/foundation/strings.h"
#include "render/pixel_grid.h"

#import <AppKit/AppKit.h>

#include <algorithm>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace amperly {
namespace {

NSImage* makeSymbol(std::string_view name, const GlyphStyle& style)
{
    NSImage* symbol = [NSImage imageWithSystemSymbolName:nsString(name) accessibilityDescription:nil];
    if (symbol == nil && glyphNamed(name).name != name)
        symbol = [NSImage imageWithSystemSymbolName:nsString(kFallbackGlyph) accessibilityDescription:nil];
    const NSFontWeight weight = style.weight == FontWeight::Medium ? NSFontWeightMedium : NSFontWeightRegular;
    return [symbol
        imageWithSymbolConfiguration:[NSImageSymbolConfiguration configurationWithPointSize:style.pointSize
                                                                                     weight:weight]];
}

/// The system's symbol for `name`, or nil where this program has to show its own drawing. Every
/// layout asks for the sizes of its symbols, so they are kept: some ten in a run.
NSImage* symbolFor(std::string_view name, const GlyphStyle& style)
{
    struct Known {
        std::string name;
        GlyphStyle style;
        NSImage* symbol;
    };
    static std::vector<Known> known;
    const auto place = std::find_if(known.begin(), known.end(),
        [&](const Known& each) { return each.name == name && each.style == style; });
    if (place != known.end())
        return place->symbol;
    return known.emplace_back(Known{std::string(name), style, makeSymbol(name, style)}).symbol;
}

} // namespace

std::string_view symbolName(std::string_view name)
{
    if (name.empty())
        return kFallbackGlyph;
    // Those that the user has chosen in this run: a few. A set's members stay where they are.
    static std::set<std::string, std::less<>> names;
    const auto known = names.find(name);
    return known != names.end() ? *known : *names.emplace(name).first;
}

std::optional<GlyphSize> systemSymbolSize(std::string_view name, const GlyphStyle& style)
{
    NSImage* const symbol = symbolFor(name, style);
    if (symbol == nil)
        return std::nullopt;
    return GlyphSize{.width = symbol.size.width, .height = symbol.size.height};
}

std::optional<GlyphDrawing> drawSystemSymbol(std::string_view name, const GlyphStyle& style, double scale)
{
    NSImage* const symbol = symbolFor(name, style);
    if (symbol == nil)
        return std::nullopt;

    GlyphDrawing drawing;
    drawing.width = symbol.size.width * scale;
    drawing.height = symbol.size.height * scale;
    CoverageMask& mask = drawing.mask;
    mask.clear(std::max(1, pixelsUp(drawing.width)), std::max(1, pixelsUp(drawing.height)));
    NSBitmapImageRep* const bitmap = clearBitmap(mask.width, mask.height);
    if (bitmap == nil)
        return std::nullopt;

    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap];
    // Pixels, from the lower left; the symbol's box stands at the upper left.
    [symbol drawInRect:NSMakeRect(0.0, mask.height - drawing.height, drawing.width, drawing.height)];
    [NSGraphicsContext restoreGraphicsState];

    takeInk(bitmap, mask);
    return drawing;
}

} // namespace amperly
