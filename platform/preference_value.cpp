#include "platform/preference_value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string_view>
#include <system_error>
#if __has_include(<xlocale.h>)
#include <xlocale.h> // strtod_l() on macOS, for those who have read <cstdlib> before
#endif

namespace amperly {

namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";
constexpr std::string_view kDigits = "0123456789";

/// What follows a number's sign, and the sign.
struct Unsigned {
    std::string_view text;
    bool isNegative = false;
};

Unsigned withoutSign(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+'))
        text.remove_prefix(1);
    return {text, isNegative};
}

std::int64_t integerIn(std::string_view text)
{
    using Limits = std::numeric_limits<std::int64_t>;
    const auto [digits, isNegative] = withoutSign(text);
    std::uint64_t magnitude = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude);
    if (error == std::errc::invalid_argument)
        return 0;
    constexpr auto kLargest = static_cast<std::uint64_t>(Limits::max());
    if (error == std::errc::result_out_of_range || magnitude > kLargest)
        return isNegative ? Limits::min() : Limits::max();
    return isNegative ? -static_cast<std::int64_t>(magnitude) : static_cast<std::int64_t>(magnitude);
}

/// The number at the start of a text: digits with a point among them or not, and a power of ten.
std::string_view decimalPrefix(std::string_view text)
{
    const auto digitsFrom
        = [text](std::size_t place) { return std::min(text.find_first_not_of(kDigits, place), text.size()); };
    std::size_t end = digitsFrom(0);
    if (end < text.size() && text[end] == '.')
        end = digitsFrom(end + 1);
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        const std::size_t sign = end + 1;
        const bool isSigned = sign < text.size() && (text[sign] == '-' || text[sign] == '+');
        const std::size_t power = isSigned ? sign + 1 : sign;
        if (digitsFrom(power) > power)
            end = digitsFrom(power);
    }
    return text.substr(0, end);
}

double finite(double number)
{
    constexpr double kLargest = std::numeric_limits<double>::max();
    return std::isnan(number) ? 0.0 : std::clamp(number, -kLargest, kLargest);
}

double realIn(std::string_view text)
{
    const auto [number, isNegative] = withoutSign(text);
    // Words such as "inf" and "nan" and a second sign are no numbers here.
    const std::size_t firstDigit = number.starts_with('.') ? 1 : 0;
    if (firstDigit >= number.size() || kDigits.find(number[firstDigit]) == std::string_view::npos)
        return 0.0;
    // Not from_chars(), which the C++ library of macOS does not have for these numbers yet.
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    const double magnitude = strtod_l(std::string(decimalPrefix(number)).c_str(), nullptr, plain);
    return finite(isNegative ? -magnitude : magnitude);
}

std::int64_t truncated(double number)
{
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr double kTwoTo63 = 9223372036854775808.0; // the first double above the range
    if (std::isnan(number))
        return 0;
    if (number >= kTwoTo63)
        return Limits::max();
    if (number < -kTwoTo63)
        return Limits::min();
    return static_cast<std::int64_t>(number);
}

/// Letters compared regardless of case; the locale has no say ("I" is no dotless letter here).
bool equalsRegardlessOfCase(std::string_view text, std::string_view lowerCase)
{
    return std::equal(
        text.begin(), text.end(), lowerCase.begin(), lowerCase.end(), [](char left, char right) {
            return (left >= 'A' && left <= 'Z' ? static_cast<char>(left - 'A' + 'a') : left) == right;
        });
}

std::string decimal(double number)
{
    // The longest: a sign, the 309 digits of the largest number, or a point and 1074 places.
    std::array<char, 1100> digits{};
    const auto [end, error] = std::to_chars(
        digits.data(), digits.data() + digits.size(), finite(number), std::chars_format::fixed);
    return {digits.data(), end};
}

template <typename... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

} // namespace

std::string asText(const PreferenceValue& value)
{
    return std::visit(Overloaded{
                          [](const std::string& text) { return text; },
                          [](std::int64_t integer) { return std::to_string(integer); },
                          [](bool boolean) { return std::string(boolean ? "1" : "0"); },
                          [](double real) { return decimal(real); },
                      },
        value);
}

std::int64_t asInteger(const PreferenceValue& value)
{
    return std::visit(Overloaded{
                          [](const std::string& text) { return integerIn(text); },
                          [](std::int64_t integer) { return integer; },
                          [](bool boolean) { return std::int64_t{boolean}; },
                          [](double real) { return truncated(real); },
                      },
        value);
}

bool asBoolean(const PreferenceValue& value)
{
    return std::visit(Overloaded{
                          [](const std::string& text) {
                              return text == "1" || equalsRegardlessOfCase(text, "yes")
                                  || equalsRegardlessOfCase(text, "true");
                          },
                          [](std::int64_t integer) { return integer != 0; },
                          [](bool boolean) { return boolean; },
                          [](double real) { return finite(real) != 0.0; },
                      },
        value);
}

double asReal(const PreferenceValue& value)
{
    return std::visit(Overloaded{
                          [](const std::string& text) { return realIn(text); },
                          [](std::int64_t integer) { return static_cast<double>(integer); },
                          [](bool boolean) { return boolean ? 1.0 : 0.0; },
                          [](double real) { return finite(real); },
                      },
        value);
}

} // namespace amperly
