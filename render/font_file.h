// A font file while it is open: what its characters measure and how they look in pixels.
//
// The file is read with FreeType itself. The toolkit's way to a font, even to a single file of
// it, keeps some 400 KB of private memory after the font is closed; this way keeps next to none.
#pragma once

#include "platform/coverage_mask.h"
#include "platform/ui_font.h"

#include <memory>
#include <optional>

struct FT_FaceRec_;
struct FT_LibraryRec_;

namespace amperly {

class FontFile {
public:
    /// Nothing where the file cannot be read or holds no outlines.
    [[nodiscard]] static std::optional<FontFile> open(const FontFace& face);

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

    /// Draws a character at `pixelSize` pixels per em, its stems and bars fitted to whole pixels
    /// both ways, as small figures stay legible. Nothing for a character the font lacks.
    [[nodiscard]] std::optional<Drawing> draw(char32_t character, double pixelSize);

private:
    struct Closer {
        void operator()(FT_LibraryRec_* library) const;
        void operator()(FT_FaceRec_* face) const;
    };

    FontFile() = default;

    [[nodiscard]] bool loadUnscaled(char32_t character) const;

    // The face is closed before the library that opened it.
    std::unique_ptr<FT_LibraryRec_, Closer> m_library;
    std::unique_ptr<FT_FaceRec_, Closer> m_face;
};

} // namespace amperly
