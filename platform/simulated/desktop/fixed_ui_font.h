// A desktop whose font is the one that the caller names, whatever is to be written.
#pragma once

#include "platform/ui_font.h"

#include <utility>

namespace amperly {

class FixedUiFont : public UiFont {
public:
    /// A system without fonts.
    FixedUiFont() = default;

    FixedUiFont(FontFace regular, FontFace medium)
        : m_regular(std::move(regular)), m_medium(std::move(medium))
    {
    }

    [[nodiscard]] std::optional<FontFace> face(FontWeight weight, std::u32string_view) const override
    {
        return weight == FontWeight::Medium ? m_medium : m_regular;
    }

private:
    std::optional<FontFace> m_regular;
    std::optional<FontFace> m_medium;
};

} // namespace amperly
