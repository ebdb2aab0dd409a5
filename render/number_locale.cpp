#include "render/number_locale.h"

#include <unicode/locid.h>

namespace amperly {

std::string userNumberLocale(const EnvironmentLookup& environment)
{
    for (const char* const variable : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
        const char* const posixName = environment(variable);
        if (posixName && *posixName)
            return icuLocaleId(posixName);
    }
    return icuLocaleId("C");
}

std::string icuLocaleId(const std::string& posixName)
{
    // ICU takes "C" for an unknown language and would fall back to that of the messages.
    const std::string_view language = std::string_view{posixName}.substr(0, posixName.find_first_of(".@"));
    if (language.empty() || language == "C" || language == "POSIX")
        return "en_US_POSIX";
    return icu::Locale::createCanonical(posixName.c_str()).getName();
}

} // namespace amperly
