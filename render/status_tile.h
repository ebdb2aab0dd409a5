// A reading as a square, for desktops whose status area has only squares: the value above its
// symbol, without unit, or whichever of the two there is.
#pragma once

#include "platform/coverage_mask.h"
#include "render/reading_piece.h"

#include <string_view>

namespace amperly {

class StatusArt;

/// Draws `piece` as `pixels` × `pixels`. A value that would be too small to read with its
/// decimal is shown in whole watts.
void drawReadingTile(CoverageMask& mask, const ReadingPiece& piece, int pixels, StatusArt& art);

/// Draws a symbol alone as `pixels` × `pixels`.
void drawGlyphTile(CoverageMask& mask, std::string_view symbol, int pixels, StatusArt& art);

} // namespace amperly
