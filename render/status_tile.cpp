#include "render/status_tile.h"

#include "render/blit.h"
#include "render/pixel_grid.h"
#include "render/status_art.h"

#include <algorithm>
#include <cmath>

namespace amperly {
namespace {

/// Lengths in the tile of 22 pixels that most panels ask for; larger ones grow in proportion.
struct TileLook {
    double side = 22.0;
    double value = 9.0; ///< size of a value above a symbol
    double valueAlone = 11.0; ///< size of a value without one
    double leastValue = 8.0; ///< under it digits lose their counters
    double gap = 2.0; ///< between value and symbol
    double margin = 1.0; ///< above the value and under the symbol
};
constexpr TileLook kTile;

constexpr int kLeastPixels = 5; ///< even a value that fits nowhere is drawn so large

TextMaskStyle styleOf(int pixelSize)
{
    return {.pointSize = static_cast<double>(pixelSize), .weight = FontWeight::Medium};
}

/// A value's figures without its unit, which always comes last after a space.
std::string_view withoutUnit(std::string_view text)
{
    constexpr std::string_view kUnit = " W";
    if (text.ends_with(kUnit))
        text.remove_suffix(kUnit.size());
    return text;
}

struct FittedValue {
    std::string_view text;
    int pixelSize = 0;
};

/// The value with its decimal if that fits in `pixels` and is `legible` pixels large or more,
/// else in whole watts; as large as fits, but not larger than `most`.
FittedValue fit(const ReadingPiece& piece, int pixels, int most, int legible, TextMasks& text)
{
    const auto fits
        = [&](std::string_view value, int size) { return text.width(value, styleOf(size)) <= pixels; };
    const std::string_view value = withoutUnit(piece.text);
    for (int size = most; size >= legible; --size) {
        if (fits(value, size))
            return {value, size};
    }
    const std::string_view whole = piece.wholeText.empty() ? value : std::string_view{piece.wholeText};
    int size = most;
    while (size > kLeastPixels && !fits(whole, size))
        --size;
    return {whole, size};
}

void drawValue(CoverageMask& mask, const FittedValue& value, double middle, TextMasks& text)
{
    const TextMaskStyle style = styleOf(value.pixelSize);
    const double left = std::floor((mask.width - text.width(value.text, style)) * 0.5);
    text.draw(mask, value.text, style, {.left = left, .middle = middle}, 1.0);
}

struct FittedSymbol {
    FontWeight weight = FontWeight::Regular;
    double pixelsPerUnit = 0.0;
};

/// A master as large as the room lets it be; a little smaller if it is crisp then.
FittedSymbol fitMaster(std::string_view symbol, FontWeight weight, double width, double height)
{
    const GlyphForm& form = glyphNamed(symbol);
    const bool medium = weight == FontWeight::Medium;
    const double most = std::min(width / (medium ? form.mediumWidth : form.regularWidth),
        height / (medium ? kMediumBoxHeight : kRegularBoxHeight));
    constexpr double kLeastShare = 0.8;
    const double crisp = std::floor(most * 2.0) * 0.5;
    return {.weight = weight, .pixelsPerUnit = crisp >= kLeastShare * most ? crisp : most};
}

/// The regular master, or the sturdier one where the regular one's strokes would be thinner
/// than a pixel.
FittedSymbol fitAlone(std::string_view symbol, double side)
{
    constexpr double kWholeStroke = 0.5; // a stroke is two units
    const FittedSymbol regular = fitMaster(symbol, FontWeight::Regular, side, side);
    return regular.pixelsPerUnit < kWholeStroke ? fitMaster(symbol, FontWeight::Medium, side, side) : regular;
}

void drawSymbol(CoverageMask& mask, const GlyphDrawing& glyph, double top)
{
    blit(mask, viewOf(glyph.mask), nearestPixel((mask.width - glyph.width) * 0.5), nearestPixel(top));
}

} // namespace

void drawReadingTile(CoverageMask& mask, const ReadingPiece& piece, int pixels, StatusArt& art)
{
    if (piece.text.empty()) {
        drawGlyphTile(mask, piece.symbol, pixels, art);
        return;
    }
    mask.clear(pixels, pixels);
    const double zoom = pixels / kTile.side;
    const bool alone = piece.symbol.empty();
    const int legible = static_cast<int>(std::lround(kTile.leastValue * std::max(1.0, zoom)));
    const int most
        = std::max(legible, static_cast<int>(std::lround((alone ? kTile.valueAlone : kTile.value) * zoom)));
    const FittedValue value = fit(piece, pixels, most, legible, art.text);
    if (alone) {
        drawValue(mask, value, pixels * 0.5, art.text);
        return;
    }

    // The symbol's size follows from the usual value's, so that it stays while values change.
    const int valueRows = art.text.digitRows(styleOf(most));
    const int gap = std::max(1, static_cast<int>(std::floor(kTile.gap * zoom)));
    const int margin = static_cast<int>(std::floor(kTile.margin * zoom));
    const int room = pixels - valueRows - gap - 2 * margin;
    const FittedSymbol symbol = fitMaster(piece.symbol, FontWeight::Medium, pixels, room);
    const GlyphDrawing& glyph = art.glyphs.drawingPerUnit(piece.symbol, symbol.weight, symbol.pixelsPerUnit);
    const int top = static_cast<int>(std::lround((pixels - valueRows - gap - glyph.height) * 0.5));
    drawValue(mask, value, top + valueRows * 0.5, art.text);
    drawSymbol(mask, glyph, top + valueRows + gap);
}

void drawGlyphTile(CoverageMask& mask, std::string_view symbol, int pixels, StatusArt& art)
{
    mask.clear(pixels, pixels);
    const FittedSymbol fitted = fitAlone(symbol, pixels);
    const GlyphDrawing& glyph = art.glyphs.drawingPerUnit(symbol, fitted.weight, fitted.pixelsPerUnit);
    drawSymbol(mask, glyph, (mask.height - glyph.height) * 0.5);
}

} // namespace amperly
