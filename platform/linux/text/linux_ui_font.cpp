#include "platform/linux/text/linux_ui_font.h"

#include "platform/linux/text/child_answer.h"
#include "platform/linux/text/font_match.h"

#include <charconv>
#include <utility>

namespace amperly {

LinuxUiFont::LinuxUiFont(std::string family) : m_family(std::move(family)) { }

std::optional<FontFace> LinuxUiFont::face(FontWeight weight, std::u32string_view characters) const
{
    // The answer travels as the face's number, a blank and the path.
    const std::optional<std::string> answer = answerOfChild([&]() -> std::optional<std::string> {
        const std::optional<FontFace> match = matchFont(m_family, weight, characters);
        if (!match)
            return std::nullopt;
        return std::to_string(match->faceIndex) + ' ' + match->path;
    });
    if (!answer)
        return std::nullopt;

    FontFace face;
    const auto [end, error]
        = std::from_chars(answer->data(), answer->data() + answer->size(), face.faceIndex);
    if (error != std::errc{})
        return std::nullopt;
    face.path = answer->substr(static_cast<std::size_t>(end - answer->data()) + 1);
    return face;
}

} // namespace amperly
