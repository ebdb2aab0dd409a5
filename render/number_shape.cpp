#include "render/number_shape.h"

#include <algorithm>

namespace amperly {
namespace {

// Twenty digits of 64 bits, a separator for each, and room for prefix and suffix.
constexpr std::size_t kLongestNumber = (20 * 2 + 3) * ShortText::kCapacity;

/// Writes from the last byte towards the first, as digits come out of a division.
class BackwardWriter {
public:
    void put(const ShortText& piece)
    {
        const std::string_view view = piece.view();
        m_begin -= view.size();
        std::copy(view.begin(), view.end(), m_bytes.data() + m_begin);
    }

    [[nodiscard]] std::string_view text() const
    {
        return {m_bytes.data() + m_begin, m_bytes.size() - m_begin};
    }

private:
    std::array<char, kLongestNumber> m_bytes;
    std::size_t m_begin = kLongestNumber;
};

int digitCount(std::uint64_t number)
{
    int count = 1;
    for (; number >= 10; number /= 10)
        ++count;
    return count;
}

} // namespace

void NumberShape::append(std::string& text, std::uint64_t scaled, int fractionDigits) const
{
    BackwardWriter writer;
    writer.put(suffix);
    if (fractionDigits > 0) {
        writer.put(digits[scaled % 10]);
        writer.put(decimalSeparator);
        scaled /= 10;
    }

    const bool grouped = primaryGroup > 0 && digitCount(scaled) >= primaryGroup + minimumGroupingDigits;
    int digitsToSeparator = grouped ? primaryGroup : -1;
    do {
        if (digitsToSeparator == 0) {
            writer.put(groupingSeparator);
            digitsToSeparator = secondaryGroup;
        }
        writer.put(digits[scaled % 10]);
        scaled /= 10;
        --digitsToSeparator;
    } while (scaled > 0);

    writer.put(prefix);
    text += writer.text();
}

} // namespace amperly
