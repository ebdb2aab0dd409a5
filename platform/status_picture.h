// What a status item shows, as the item sees it: one picture in points that can be drawn at
// any scale, and the same readings one by one for desktops that only have room for squares.
#pragma once

#include "platform/coverage_mask.h"

#include <cstdint>
#include <string_view>

namespace amperly {

class StatusPicture {
public:
    virtual ~StatusPicture() = default;

    /// Two pictures with the same key draw alike and have the same readings, so that what is
    /// shown already need not be drawn to be recognised. Cheap: no drawing, no allocation.
    [[nodiscard]] virtual std::uint64_t key() const = 0;

    /// Size of the whole picture in points. Pixels at a scale are this, times the scale,
    /// rounded up.
    [[nodiscard]] virtual double widthPoints() const = 0;
    [[nodiscard]] virtual double heightPoints() const = 0;

    /// Draws the whole picture at `scale` pixels per point; `mask` is sized for it.
    virtual void draw(CoverageMask& mask, double scale) const = 0;

    /// How many readings the picture shows, at least one.
    [[nodiscard]] virtual int readingCount() const = 0;

    /// The text of one reading, UTF-8; empty where only its glyph is shown. The view is valid
    /// as long as the picture is.
    [[nodiscard]] virtual std::string_view readingText(int reading) const = 0;

    /// Draws one reading as a square of `pixels` × `pixels`: value above glyph, or whichever of
    /// the two it has, as large as stays legible.
    virtual void drawTile(CoverageMask& mask, int reading, int pixels) const = 0;

    /// Draws the first reading's glyph alone, or where it has none the fallback's.
    virtual void drawGlyph(CoverageMask& mask, int pixels) const = 0;
};

} // namespace amperly
