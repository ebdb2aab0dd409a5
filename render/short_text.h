// A few bytes of UTF-8 kept in place: a digit, a separator, a mark.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace amperly {

class ShortText {
public:
    static constexpr std::size_t kCapacity = 11;

    ShortText() = default;

    /// Nothing when `text` has more than kCapacity bytes.
    [[nodiscard]] static std::optional<ShortText> from(std::string_view text)
    {
        if (text.size() > kCapacity)
            return std::nullopt;
        ShortText shortText;
        std::copy(text.begin(), text.end(), shortText.m_bytes.begin());
        shortText.m_size = static_cast<std::uint8_t>(text.size());
        return shortText;
    }

    [[nodiscard]] std::string_view view() const { return {m_bytes.data(), m_size}; }

    /// The text and the zeros that fill the rest.
    [[nodiscard]] const std::array<char, kCapacity>& bytes() const { return m_bytes; }

    friend bool operator==(const ShortText&, const ShortText&) = default;

private:
    std::array<char, kCapacity> m_bytes{};
    std::uint8_t m_size = 0;
};

} // namespace amperly
