#include "render/icu_decimals.h"
#include "render/number_shape.h"

#include <string_view>
#include <vector>

namespace amperly {
namespace {

// Every digit occurs before the separator, and there are enough of them for three groups.
constexpr double kSpecimen = 1234567890123.5;
constexpr std::string_view kSpecimenDigits = "1234567890123";

// Most locales group as soon as one digit stands before the first group, some wait for two or three.
constexpr int kMostMinimumGroupingDigits = 4;

struct Span {
    int32_t begin = 0;
    int32_t end = 0;
};

/// Where ICU put what in a number it wrote.
struct Anatomy {
    icu::UnicodeString text{};
    Span integer{};
    Span decimalSeparator{};
    Span fraction{};
    std::vector<Span> groupingSeparators{};

    [[nodiscard]] std::optional<ShortText> piece(Span span) const
    {
        std::string utf8;
        text.tempSubStringBetween(span.begin, span.end).toUTF8String(utf8);
        return ShortText::from(utf8);
    }
};

std::optional<Anatomy> dissect(const IcuDecimals& icuDecimals, double value)
{
    const std::optional<icu::number::FormattedNumber> formatted = icuDecimals.anatomy(value);
    if (!formatted)
        return std::nullopt;

    UErrorCode status = U_ZERO_ERROR;
    Anatomy anatomy;
    anatomy.text = formatted->toString(status);
    icu::ConstrainedFieldPosition position;
    position.constrainCategory(UFIELD_CATEGORY_NUMBER);
    while (formatted->nextPosition(position, status) && U_SUCCESS(status)) {
        const Span span{position.getStart(), position.getLimit()};
        switch (position.getField()) {
        case UNUM_INTEGER_FIELD:
            anatomy.integer = span;
            break;
        case UNUM_DECIMAL_SEPARATOR_FIELD:
            anatomy.decimalSeparator = span;
            break;
        case UNUM_FRACTION_FIELD:
            anatomy.fraction = span;
            break;
        case UNUM_GROUPING_SEPARATOR_FIELD:
            anatomy.groupingSeparators.push_back(span);
            break;
        default:
            return std::nullopt; // a sign or an exponent has no place in such a number
        }
    }
    if (U_FAILURE(status) || anatomy.fraction.end == 0)
        return std::nullopt;
    return anatomy;
}

/// Fills in the ten digits and learns how many of them stand behind each grouping separator.
bool readDigits(const Anatomy& specimen, NumberShape& shape, std::vector<int>& digitsBehind)
{
    auto separator = specimen.groupingSeparators.begin();
    int32_t at = specimen.integer.begin;
    for (std::size_t ordinal = 0; ordinal < kSpecimenDigits.size(); ++ordinal) {
        if (separator != specimen.groupingSeparators.end() && separator->begin == at) {
            digitsBehind.push_back(static_cast<int>(kSpecimenDigits.size() - ordinal));
            at = separator->end;
            ++separator;
        }
        const int32_t next = specimen.text.moveIndex32(at, 1);
        const std::optional<ShortText> digit = specimen.piece({at, next});
        if (!digit || next > specimen.integer.end)
            return false;
        shape.digits[static_cast<std::size_t>(kSpecimenDigits[ordinal] - '0')] = *digit;
        at = next;
    }
    return at == specimen.integer.end;
}

/// How many digits must stand before the first separator, found out by counting up.
std::optional<std::uint8_t> minimumGroupingDigits(const IcuDecimals& icuDecimals, std::uint8_t primaryGroup)
{
    double value = 1.0;
    for (int digit = 0; digit < primaryGroup; ++digit)
        value *= 10.0;
    for (int minimum = 1; minimum <= kMostMinimumGroupingDigits; ++minimum, value *= 10.0) {
        const std::optional<Anatomy> anatomy = dissect(icuDecimals, value);
        if (!anatomy)
            return std::nullopt;
        if (!anatomy->groupingSeparators.empty())
            return static_cast<std::uint8_t>(minimum);
    }
    return std::nullopt;
}

/// Whether numbers of every length come out as ICU writes them.
bool describes(const NumberShape& shape, const IcuDecimals& icuDecimals)
{
    for (const std::uint64_t tenths : {0ULL, 7ULL, 143ULL, 9999ULL, 12345ULL, 678904ULL, 9876543210ULL}) {
        std::string text;
        shape.append(text, tenths, 1);
        if (icuDecimals.text(static_cast<double>(tenths) / 10.0) != text)
            return false;
    }
    return true;
}

} // namespace

std::optional<NumberShape> harvestNumberShape(const std::string& localeId)
{
    const IcuDecimals icuDecimals{localeId, 1};
    const std::optional<Anatomy> specimen = dissect(icuDecimals, kSpecimen);
    if (!specimen)
        return std::nullopt;

    const auto prefix = specimen->piece({0, specimen->integer.begin});
    const auto suffix = specimen->piece({specimen->fraction.end, specimen->text.length()});
    const auto decimalSeparator = specimen->piece(specimen->decimalSeparator);
    NumberShape shape;
    std::vector<int> digitsBehind;
    if (!prefix || !suffix || !decimalSeparator || !readDigits(*specimen, shape, digitsBehind))
        return std::nullopt;
    shape.prefix = *prefix;
    shape.suffix = *suffix;
    shape.decimalSeparator = *decimalSeparator;

    if (!digitsBehind.empty()) {
        const auto separator = specimen->piece(specimen->groupingSeparators.back());
        if (!separator)
            return std::nullopt;
        const int primary = digitsBehind.back();
        const int secondary
            = digitsBehind.size() > 1 ? digitsBehind[digitsBehind.size() - 2] - primary : primary;
        shape.groupingSeparator = *separator;
        shape.primaryGroup = static_cast<std::uint8_t>(primary);
        shape.secondaryGroup = static_cast<std::uint8_t>(secondary);
        const auto minimum = minimumGroupingDigits(icuDecimals, shape.primaryGroup);
        if (!minimum)
            return std::nullopt;
        shape.minimumGroupingDigits = *minimum;
    }

    if (!describes(shape, icuDecimals))
        return std::nullopt;
    return shape;
}

} // namespace amperly
