// A stored preference and the ways it can be read. What was stored as one type may be asked
// for as another: a hand-edited file holds only text, and "2" in it is as good a number as 2.
// No conversion depends on the user's locale, and none yields a number that is not finite.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace amperly {

using PreferenceValue = std::variant<std::string, std::int64_t, bool, double>;

/// Values by stored key.
using PreferenceDictionary = std::map<std::string, PreferenceValue, std::less<>>;

/// Text as it is; numbers in plain decimal, with as many digits as bring the same number back;
/// booleans as "1" and "0".
[[nodiscard]] std::string asText(const PreferenceValue& value);

/// The integer at the start of a text ("2" and "2.7" are 2), a number without its fraction,
/// 1 or 0 for a boolean; 0 for anything else. Out of range saturates; not-a-number is 0.
[[nodiscard]] std::int64_t asInteger(const PreferenceValue& value);

/// True for the texts "YES", "true" and "1" (letters of either case), a number other than 0
/// and a true boolean; false for anything else.
[[nodiscard]] bool asBoolean(const PreferenceValue& value);

/// The number at the start of a text, always with a point as decimal separator; 0 for
/// anything else. Out of range saturates; not-a-number is 0. At the start of a text, here and
/// for integers, means after any blanks and one sign.
[[nodiscard]] double asReal(const PreferenceValue& value);

} // namespace amperly
