#include "render/locale_decimals.h"
#include "render/number_shape.h"

#include <string_view>
#include <vector>

namespace amperly {
namespace {

// Long enough for three groups, so that the first and the second tell their sizes.
constexpr double kSpecimen = 1234567890123.5;
constexpr std::string_view kSpecimenDigits = "1234567890123";
constexpr std::size_t kSpecimenFraction = 5;

// Most locales group as soon as one digit stands before the first group, some wait for two or three.
constexpr int kMostMinimumGroupingDigits = 4;

/// Fills in the digits and separators.
bool takeSymbols(const std::string& localeId, NumberShape& shape)
{
    const std::optional<NumberSymbols> symbols = numberSymbols(localeId);
    if (!symbols)
        return false;
    shape.digits = symbols->digits;
    shape.decimalSeparator = symbols->decimalSeparator;
    shape.groupingSeparator = symbols->groupingSeparator;
    return true;
}

/// Takes `piece` off the front of `text`, if it is there.
bool take(std::string_view& text, const ShortText& piece)
{
    if (!text.starts_with(piece.view()))
        return false;
    text.remove_prefix(piece.view().size());
    return true;
}

/// Reads the sizes of the groups, and what stands around the number, off a specimen.
bool takeLayout(std::string_view specimen, NumberShape& shape)
{
    const auto firstDigit = specimen.find(shape.digits[1].view());
    if (firstDigit == std::string_view::npos)
        return false;
    const auto prefix = ShortText::from(specimen.substr(0, firstDigit));
    specimen.remove_prefix(firstDigit);

    std::vector<std::size_t> digitsBehind; // each of the separators
    for (std::size_t ordinal = 0; ordinal < kSpecimenDigits.size(); ++ordinal) {
        if (ordinal > 0 && take(specimen, shape.groupingSeparator))
            digitsBehind.push_back(kSpecimenDigits.size() - ordinal);
        if (!take(specimen, shape.digits[static_cast<std::size_t>(kSpecimenDigits[ordinal] - '0')]))
            return false;
    }
    if (!take(specimen, shape.decimalSeparator) || !take(specimen, shape.digits[kSpecimenFraction]))
        return false;
    const auto suffix = ShortText::from(specimen);
    if (!prefix || !suffix)
        return false;
    shape.prefix = *prefix;
    shape.suffix = *suffix;

    if (digitsBehind.empty()) {
        shape.groupingSeparator = {};
        return true;
    }
    const std::size_t primary = digitsBehind.back();
    const std::size_t secondary
        = digitsBehind.size() > 1 ? digitsBehind[digitsBehind.size() - 2] - primary : primary;
    shape.primaryGroup = static_cast<std::uint8_t>(primary);
    shape.secondaryGroup = static_cast<std::uint8_t>(secondary);
    return true;
}

/// How many digits must stand before the first separator, found out by counting up.
std::optional<std::uint8_t> minimumGroupingDigits(const LocaleDecimals& decimals, const NumberShape& shape)
{
    double value = 1.0;
    for (int digit = 0; digit < shape.primaryGroup; ++digit)
        value *= 10.0;
    for (int minimum = 1; minimum <= kMostMinimumGroupingDigits; ++minimum, value *= 10.0) {
        const std::optional<std::string> text = decimals.text(value);
        if (!text)
            return std::nullopt;
        if (text->find(shape.groupingSeparator.view()) != std::string::npos)
            return static_cast<std::uint8_t>(minimum);
    }
    return std::nullopt;
}

/// Whether numbers of every length come out as the system writes them.
bool describes(const NumberShape& shape, const LocaleDecimals& decimals)
{
    for (const std::uint64_t tenths : {7ULL, 143ULL, 12345ULL, 678904ULL, 9876543210ULL}) {
        std::string text;
        shape.append(text, tenths, 1);
        if (decimals.text(static_cast<double>(tenths) / 10.0) != text)
            return false;
    }
    return true;
}

} // namespace

std::optional<NumberShape> harvestNumberShape(const std::string& localeId)
{
    // ICU would also tell which part of its text is what, but looks that up in character sets
    // which it then keeps: 90 kB, three times what all of the rest takes.
    NumberShape shape;
    const LocaleDecimals decimals{localeId, 1};
    const std::optional<std::string> specimen = decimals.text(kSpecimen);
    if (!specimen || !takeSymbols(localeId, shape) || !takeLayout(*specimen, shape))
        return std::nullopt;

    if (shape.primaryGroup > 0) {
        const auto minimum = minimumGroupingDigits(decimals, shape);
        if (!minimum)
            return std::nullopt;
        shape.minimumGroupingDigits = *minimum;
    }
    if (!describes(shape, decimals))
        return std::nullopt;
    return shape;
}

} // namespace amperly
