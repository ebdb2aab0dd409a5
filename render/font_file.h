// A font file while it is open: what its characters measure and how they look in pixels.
//
// Each system has its own way of drawing text; what they have in common is here.
#pragma once

#include "platform/coverage_mask.h"
#include "platform/ui_font.h"

#include <memory>
#include <optional>

namespace amperly {

class FontFile {
public:
    /// Nothing where the file cannot be read or holds no outlines.
    [[nodiscard]] static std::optional<FontFile> open(const FontFace& face);
    ~FontFile();
    FontFile(FontFile&&) noexcept;
    FontFile& operator=(FontFile&&) noexcept;

    [[nodiscard]] bool has(char32_t character) const;

    /// How far the pen moves on, in ems. 0 for a character the font lacks.
    [[nodiscard]] double advance(char32_t character) const;

    /// How wide the outline is, in ems. 0 for a character the font lacks.
    [[nodiscard]] double inkWidth(char32_t character) const;

    /// How far the outline rises above the baseline, in ems. 0 for a character the font lacks.
    [[nodiscard]] double rise(char32_t character) const;

    /// A character on the pixel grid.
    struct Drawing {
        CoverageMask mask; ///< just as large as the ink; empty for a space
        int left = 0; ///< pixels from the pen to the mask's left edge
        int top = 0; ///< pixels from the baseline up to the mask's upper edge
        int advance = 0; ///< pixels the pen moves on
    };

    /// Draws a character at `pixelSize` pixels per em, as this system draws small text.
    /// Nothing for a character the font lacks.
    [[nodiscard]] std::optional<Drawing> draw(char32_t character, double pixelSize);

private:
    struct Face;
    explicit FontFile(std::unique_ptr<Face> face);

    std::unique_ptr<Face> m_face;
};

} // namespace amperly
