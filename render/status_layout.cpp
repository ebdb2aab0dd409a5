#include "render/status_layout.h"

#include <algorithm>
#include <cmath>

namespace amperly {
namespace {

constexpr double kLeastWidth = 1.0;

double spacings(std::size_t pieces, const StatusLook& look)
{
    return pieces == 0 ? 0.0 : look.spacing * static_cast<double>(pieces - 1);
}

double glyphWidth(const PieceSize& piece)
{
    return piece.hasGlyph ? piece.glyph.width : 0.0;
}

double wholeTextWidth(const PieceSize& piece)
{
    return piece.hasText ? std::ceil(piece.text.width) : 0.0;
}

} // namespace

StatusLayout lineLayout(std::span<const PieceSize> pieces, const StatusLook& look, double height)
{
    StatusLayout layout;
    double total = spacings(pieces.size(), look);
    double x = 0.0;
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        const PieceSize& piece = pieces[index];
        const double glyph = glyphWidth(piece);
        const double text = wholeTextWidth(piece);
        total += glyph + text;
        if (glyph > 0.0 && text > 0.0)
            total += look.gap;

        PiecePlace& place = layout.places[index];
        if (piece.hasGlyph) {
            place.glyphX = x;
            place.glyphY = (height - piece.glyph.height) * 0.5;
            // A symbol without width keeps its gap here although it counts none above: values
            // stay where they are when a symbol turns out empty.
            x += glyph;
            if (piece.hasText)
                x += look.gap;
        }
        if (piece.hasText) {
            place.textX = x;
            place.textY = (height - piece.text.height) * 0.5;
            x += text;
        }
        x += look.spacing;
    }
    layout.width = std::max(kLeastWidth, std::ceil(total));
    return layout;
}

StatusLayout stackedLayout(std::span<const PieceSize> pieces, const StatusLook& look, double height)
{
    StatusLayout layout;
    double total = spacings(pieces.size(), look);
    double x = 0.0;
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        const PieceSize& piece = pieces[index];
        const double column = std::max(wholeTextWidth(piece), std::ceil(glyphWidth(piece)));
        total += column;

        const double textWidth = piece.hasText ? piece.text.width : 0.0;
        const double textHeight = piece.hasText ? piece.text.height : 0.0;
        double block = textHeight;
        if (piece.hasGlyph) {
            block += piece.glyph.height;
            if (textHeight > 0.0 && piece.glyph.height > 0.0)
                block += look.gap;
        }
        const double bottom = (height - block) * 0.5;

        PiecePlace& place = layout.places[index];
        if (piece.hasGlyph) {
            place.glyphX = x + (column - piece.glyph.width) * 0.5;
            place.glyphY = bottom;
        }
        if (piece.hasText) {
            place.textX = x + (column - textWidth) * 0.5;
            place.textY = bottom + block - textHeight;
        }
        x += column + look.spacing;
    }
    layout.width = std::max(kLeastWidth, total);
    return layout;
}

} // namespace amperly
