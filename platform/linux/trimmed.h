// Text as it stands in the kernel's and the desktop's files, without what is around it.
#pragma once

#include <string_view>

namespace amperly {

/// `text` without the `blanks` at its ends.
[[nodiscard]] constexpr std::string_view trimmed(std::string_view text, std::string_view blanks = " \t\r")
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return text.substr(0, 0);
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace amperly
