// The desktop's own font, as files to draw from. Status texts are digits and a few signs; they
// are drawn from the font's outlines directly, because the toolkit's text stack, once used,
// keeps megabytes for the rest of the run.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace amperly {

enum class FontWeight { Regular, Medium };

/// One face of a font file.
struct FontFace {
    std::string path; ///< of the file
    int faceIndex = 0; ///< within a collection
    friend bool operator==(const FontFace&, const FontFace&) = default;
};

class UiFont {
public:
    virtual ~UiFont() = default;

    /// The face of the desktop's user interface font at `weight` that has all of `characters`,
    /// or where that font lacks some, the nearest face that has them. Nothing where the
    /// system has no fonts at all.
    [[nodiscard]] virtual std::optional<FontFace> face(
        FontWeight weight, std::u32string_view characters) const = 0;
};

} // namespace amperly
