#include "render/decimal_rounding.h"

#include <array>
#include <charconv>
#include <cmath>

namespace amperly {
namespace {

/// A decimal number: `digits` × 10^`exponent`.
struct ShortestDecimal {
    std::uint64_t digits = 0;
    int exponent = 0;
};

ShortestDecimal shortestDecimal(double value)
{
    std::array<char, 32> written{}; // "-1.7976931348623157e+308" is the longest there is
    const char* const end
        = std::to_chars(written.data(), written.data() + written.size(), value, std::chars_format::scientific)
              .ptr;

    ShortestDecimal decimal;
    const char* at = written.data();
    bool behindPoint = false;
    for (; at != end && *at != 'e'; ++at) {
        if (*at == '.') {
            behindPoint = true;
            continue;
        }
        decimal.digits = decimal.digits * 10 + static_cast<std::uint64_t>(*at - '0');
        if (behindPoint)
            --decimal.exponent;
    }
    if (at == end)
        return decimal;

    ++at;
    const bool small = *at == '-';
    if (*at == '+' || small)
        ++at; // from_chars knows no plus
    int power = 0;
    std::from_chars(at, end, power);
    decimal.exponent += small ? -power : power;
    return decimal;
}

std::uint64_t powerOfTen(int exponent)
{
    std::uint64_t power = 1;
    for (; exponent > 0; --exponent)
        power *= 10;
    return power;
}

// Below this, a double and its shortest writing are nearer to each other than kSureDistance.
constexpr double kSureBelow = 1e8;
constexpr double kSureDistance = 1e-4;

} // namespace

std::uint64_t roundedHalfEven(double value, int fractionDigits)
{
    // Power is mostly far from any half, and then binary arithmetic rounds as well as decimal.
    if (value < kSureBelow) {
        const double scaled = fractionDigits == 0 ? value : value * 10.0;
        const auto whole = static_cast<std::int64_t>(scaled);
        const double beyondHalf = scaled - static_cast<double>(whole) - 0.5;
        if (std::abs(beyondHalf) > kSureDistance)
            return static_cast<std::uint64_t>(whole) + (beyondHalf > 0.0 ? 1 : 0);
    }

    const ShortestDecimal decimal = shortestDecimal(value);
    const int exponent = decimal.exponent + fractionDigits;
    if (exponent >= 0)
        return decimal.digits * powerOfTen(exponent);

    // At most 17 digits are written, so that a shift by more leaves less than a tenth.
    constexpr int kMostDigits = 17;
    if (exponent < -kMostDigits)
        return 0;
    const std::uint64_t divisor = powerOfTen(-exponent);
    const std::uint64_t whole = decimal.digits / divisor;
    const std::uint64_t twiceTheRest = decimal.digits % divisor * 2;
    const bool up = twiceTheRest > divisor || (twiceTheRest == divisor && whole % 2 == 1);
    return whole + (up ? 1 : 0);
}

} // namespace amperly
