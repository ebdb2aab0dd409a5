#include "render/number_shape.h"

#include <algorithm>

namespace amperly {
namespace {

constexpr std::size_t kMostDigits = 20; // of 64 bits

// The digits, a separator for each, prefix and suffix, and room behind the last one's copy.
constexpr std::size_t kLongestNumber = (kMostDigits * 2 + 3) * ShortText::kCapacity;

/// Writes one piece after the other. Each is copied with its unused rest, because a copy of fixed
/// length is a single instruction or two; the next piece begins where the text of this one ends.
class PieceWriter {
public:
    void put(const ShortText& piece)
    {
        std::copy_n(piece.bytes().data(), ShortText::kCapacity, m_bytes.data() + m_size);
        m_size += piece.view().size();
    }

    [[nodiscard]] std::string_view text() const { return {m_bytes.data(), m_size}; }

private:
    std::array<char, kLongestNumber> m_bytes;
    std::size_t m_size = 0;
};

} // namespace

void NumberShape::append(std::string& text, std::uint64_t scaled, int fractionDigits) const
{
    PieceWriter writer;
    writer.put(prefix);

    std::uint64_t integer = fractionDigits > 0 ? scaled / 10 : scaled;
    std::array<std::uint8_t, kMostDigits> decimals; // the last one first
    int count = 0;
    do {
        decimals[static_cast<std::size_t>(count++)] = static_cast<std::uint8_t>(integer % 10);
        integer /= 10;
    } while (integer > 0);

    const bool grouped = primaryGroup > 0 && count >= primaryGroup + minimumGroupingDigits;
    for (int behind = count - 1; behind >= 0; --behind) {
        writer.put(digits[decimals[static_cast<std::size_t>(behind)]]);
        if (grouped && behind >= primaryGroup && (behind - primaryGroup) % secondaryGroup == 0)
            writer.put(groupingSeparator);
    }

    if (fractionDigits > 0) {
        writer.put(decimalSeparator);
        writer.put(digits[scaled % 10]);
    }
    writer.put(suffix);
    text += writer.text();
}

} // namespace amperly
