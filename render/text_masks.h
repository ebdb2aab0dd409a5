// Short texts of digits and signs, drawn without the toolkit's text stack.
//
// Each character is drawn once per size and kept as a small mask; the font file is only open
// while new characters are drawn. Lengths are in points and the same at every scale: all digits
// of a script are as wide as its widest, and every character is a whole number of points wide,
// so that figures stand in columns and don't stir when they change.
#pragma once

#include "platform/coverage_mask.h"
#include "platform/ui_font.h"
#include "render/blit.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace amperly {

class FontFile;

struct TextMaskStyle {
    double pointSize = 0.0; ///< points per em
    FontWeight weight = FontWeight::Regular;
    friend bool operator==(const TextMaskStyle&, const TextMaskStyle&) = default;
};

class TextMasks {
public:
    /// `font` must outlive this.
    explicit TextMasks(const UiFont& font);

    /// Width of a UTF-8 text in points. What no font has takes no room.
    [[nodiscard]] double width(std::string_view text, const TextMaskStyle& style);

    /// Height of a line in points: the digits with a quarter of their height above and below.
    /// Fonts state their own line height for all the accents they have; figures centred by that
    /// would hang low in one font and high in the next.
    [[nodiscard]] double height(const TextMaskStyle& style);

    /// How many pixels high digits are at 1 pixel per point.
    [[nodiscard]] int digitRows(const TextMaskStyle& style) { return sheetOf(style, 1.0).digitRows; }

    /// Where a text stands, in points from the upper left corner of what is drawn on.
    struct Place {
        double left = 0.0;
        double middle = 0.0; ///< half the line's height, where the digits have their middle
    };

    /// Draws a UTF-8 text at `scale` pixels per point, each character at a whole pixel.
    void draw(CoverageMask& target, std::string_view text, const TextMaskStyle& style, const Place& place,
        double scale);

    /// Forgets all drawings and measures, for when the desktop's font has become another.
    void clear();

private:
    /// What a character measures in one weight.
    struct Measure {
        char32_t character = 0;
        std::uint8_t font = 0; ///< index into Weight::fonts
        bool inked = false;
        double advance = 0.0; ///< ems
        double ink = 0.0; ///< width of the outline in ems; a digit's is the widest digit's
    };

    struct Weight {
        FontWeight weight = FontWeight::Regular;
        double digitHeight = 0.0; ///< ems
        std::vector<FontFace> fonts;
        std::vector<Measure> measures;
    };

    /// A character in one size and scale. Its pixels lie in its Sheet.
    struct Stamp {
        char32_t character = 0;
        float cell = 0.0F; ///< points that it takes of its line
        float inset = 0.0F; ///< pixels from its cell's left edge to the pen
        std::int16_t left = 0; ///< pixels from the pen to the first column
        std::int16_t top = 0; ///< pixels from the baseline up to the first row
        std::int16_t width = 0;
        std::int16_t height = 0;
        std::uint32_t offset = 0; ///< into Sheet::coverage
    };

    struct Sheet {
        TextMaskStyle style;
        double scale = 0.0;
        int digitRows = 0; ///< pixels from a digit's top to the baseline
        std::uint8_t fullInk = 255; ///< the coverage that counts as full
        std::vector<Stamp> stamps;
        std::vector<std::uint8_t> coverage;
    };

    [[nodiscard]] Weight& weightOf(FontWeight weight);
    [[nodiscard]] const Measure& measureOf(Weight& weight, char32_t character);
    void measure(Weight& weight, std::u32string_view characters);

    [[nodiscard]] Sheet& sheetOf(const TextMaskStyle& style, double scale);
    [[nodiscard]] const Stamp& stampOf(Sheet& sheet, char32_t character);
    void stamp(Sheet& sheet, const Weight& weight, char32_t character, FontFile* font);

    const UiFont& m_font;
    std::vector<Weight> m_weights;
    std::vector<Sheet> m_sheets;
};

} // namespace amperly
