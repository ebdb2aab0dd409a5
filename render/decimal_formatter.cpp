#include "render/decimal_formatter.h"

#include "render/decimal_rounding.h"
#include "render/locale_decimals.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace amperly {
namespace {

/// As printf's "%.0f" or "%.1f" in the C locale.
void appendPlain(std::string& text, double value, int fractionDigits)
{
    // Every digit of the largest double, a sign, a point and the digit behind it.
    std::array<char, std::numeric_limits<double>::max_exponent10 + 4> digits{};
    const auto written = std::to_chars(
        digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, fractionDigits);
    text.append(digits.data(), written.ptr);
}

} // namespace

DecimalFormatter::DecimalFormatter(const std::string& localeId, int fractionDigits)
    : DecimalFormatter(localeId, harvestNumberShape(localeId), fractionDigits)
{
}

DecimalFormatter::DecimalFormatter(
    const std::string& localeId, const std::optional<NumberShape>& shape, int fractionDigits)
    : m_localeId(localeId), m_shape(shape), m_fractionDigits(fractionDigits)
{
}

void DecimalFormatter::append(std::string& text, double value) const
{
    // A comparison alone would let negative zero pass, which the system signs.
    if (m_shape && !std::signbit(value) && value < kLargestRoundable)
        m_shape->append(text, roundedHalfEven(value, m_fractionDigits), m_fractionDigits);
    else if (const auto systemText = LocaleDecimals{m_localeId, m_fractionDigits}.text(value))
        text += *systemText;
    else
        appendPlain(text, value, m_fractionDigits);
}

std::string DecimalFormatter::text(double value) const
{
    std::string text;
    append(text, value);
    return text;
}

} // namespace amperly
