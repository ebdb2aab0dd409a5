// The system's own font with digits of one width. It has no file to speak of: the system draws
// it, and finds another font for every character that it lacks.
#pragma once

#include "platform/ui_font.h"

namespace amperly {

class SystemFont : public UiFont {
public:
    /// The face index is the weight; there is no path.
    [[nodiscard]] std::optional<FontFace> face(FontWeight weight, std::u32string_view) const override
    {
        return FontFace{.path = {}, .faceIndex = static_cast<int>(weight)};
    }
};

} // namespace amperly
