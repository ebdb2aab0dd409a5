// Which locale the user wants numbers written in.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace amperly {

/// Looks one environment variable up; null when it is not set.
using EnvironmentLookup = std::function<const char*(const char* name)>;

/// ICU's name of the locale for numbers: LC_ALL wins over LC_NUMERIC and that over LANG; a
/// variable that is set to nothing counts as not set. With none of them it is the C locale.
/// An environment never changes under a running program, so one look is enough.
[[nodiscard]] std::string userNumberLocale(const EnvironmentLookup& environment);

/// ICU's name for a locale in the environment's spelling, such as "de_DE.UTF-8@euro". The
/// C and POSIX locales are "en_US_POSIX", and so is a name beyond ICU's limit of 156 bytes; what
/// ICU doesn't know keeps its name.
[[nodiscard]] std::string icuLocaleId(const std::string& posixName);

/// The system's name of the locale that the user has chosen for numbers: what the environment says.
/// Empty on systems that keep each user's own ways of writing them, which no name tells all of.
[[nodiscard]] std::string numberLocaleOfUser();

} // namespace amperly
