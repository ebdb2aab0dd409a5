// The characters of a UTF-8 text, one by one.
#pragma once

#include <cstddef>
#include <string_view>

namespace amperly {

/// Takes the first character off `text` and returns it. A byte that no character starts with is
/// taken as U+FFFD. `text` must not be empty.
[[nodiscard]] inline char32_t takeCodePoint(std::string_view& text)
{
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char lead = byteAt(0);
    const std::size_t length = lead < 0x80 ? 1
        : (lead & 0xe0) == 0xc0            ? 2
        : (lead & 0xf0) == 0xe0            ? 3
        : (lead & 0xf8) == 0xf0            ? 4
                                           : 0;

    constexpr char32_t kReplacement = 0xfffd;
    char32_t character = kReplacement;
    std::size_t taken = 1;
    if (length == 1) {
        character = lead;
    } else if (length > 1 && length <= text.size()) {
        character = lead & (0x7fU >> length);
        while (taken < length && (byteAt(taken) & 0xc0) == 0x80)
            character = (character << 6) | (byteAt(taken++) & 0x3fU);
        if (taken < length)
            character = kReplacement;
    }
    text.remove_prefix(taken);
    return character;
}

} // namespace amperly
