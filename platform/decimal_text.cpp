#include "platform/decimal_text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

namespace amperly {
namespace {

/// Far beyond what fits a double, and small enough to be added to.
constexpr std::int64_t kFarAway = std::int64_t{1} << 60;

std::int64_t powerOfTen(std::string_view exponent)
{
    if (exponent.starts_with('+'))
        exponent.remove_prefix(1);
    std::int64_t power = 0;
    const auto [end, error] = std::from_chars(exponent.data(), exponent.data() + exponent.size(), power);
    if (error == std::errc::result_out_of_range)
        return exponent.starts_with('-') ? -kFarAway : kFarAway;
    return std::clamp(power, -kFarAway, kFarAway);
}

/// Whether a number that is known to fit no double is too large rather than too small: where its
/// first digit other than 0 stands is all that decides.
bool isTooLarge(std::string_view number)
{
    const std::size_t mantissaEnd = std::min(number.find_first_not_of("0123456789."), number.size());
    const std::string_view mantissa = number.substr(0, mantissaEnd);
    const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
    const auto firstDigit = static_cast<std::int64_t>(mantissa.find_first_of("123456789"));
    const std::string_view exponent = number.substr(std::min(mantissaEnd + 1, number.size()));
    return point - firstDigit + powerOfTen(exponent) > 0;
}

} // namespace

double decimalValue(std::string_view number)
{
    constexpr double kLargest = std::numeric_limits<double>::max();
    double value = 0.0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::result_out_of_range)
        return isTooLarge(number) ? kLargest : 0.0;
    return std::min(value, kLargest);
}

} // namespace amperly
