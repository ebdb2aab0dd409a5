#include "render/number_locale.h"

#include <unicode/uloc.h>

#include <array>
#include <cstdlib>

namespace amperly {
namespace {

constexpr const char* kPlainLocale = "en_US_POSIX";

}

std::string userNumberLocale(const EnvironmentLookup& environment)
{
    for (const char* const variable : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
        const char* const posixName = environment(variable);
        if (posixName && *posixName)
            return icuLocaleId(posixName);
    }
    return kPlainLocale;
}

std::string numberLocaleOfUser()
{
    return userNumberLocale([](const char* name) -> const char* { return std::getenv(name); });
}

std::string icuLocaleId(const std::string& posixName)
{
    // ICU takes "C" for an unknown language and would fall back to that of the messages.
    const std::string_view language = std::string_view{posixName}.substr(0, posixName.find_first_of(".@"));
    if (language.empty() || language == "C" || language == "POSIX")
        return kPlainLocale;

    // Only the spelling changes. ICU's Locale would also replace outdated codes, for which it
    // reads and keeps the list of all of them; looking a locale up copes with them as they are.
    std::array<char, ULOC_FULLNAME_CAPACITY> localeId{};
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length
        = uloc_canonicalize(posixName.c_str(), localeId.data(), ULOC_FULLNAME_CAPACITY, &status);
    if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING)
        return kPlainLocale; // too long to name anything
    return std::string(localeId.data(), static_cast<std::size_t>(length));
}

} // namespace amperly
