#include "prefs/pref.h"

namespace amperly {

namespace {

constexpr std::string_view kDonationPage = "https://amperly.github.io/donate";

/// Whether `text` is an address that a browser opens: the secure scheme, a host, no blanks.
constexpr bool isWebAddress(std::string_view text)
{
    constexpr std::string_view kScheme = "https://";
    return text.starts_with(kScheme) && text.size() > kScheme.size() && text[kScheme.size()] != '/'
        && text.find_first_of(" \t\r\n\"<>\\") == std::string_view::npos;
}
static_assert(isWebAddress(kDonationPage));

PreferenceValue stored(const Preference& row)
{
    if (const auto* const text = std::get_if<std::string_view>(&row.fallback))
        return std::string(*text);
    if (const auto* const integer = std::get_if<std::int64_t>(&row.fallback))
        return *integer;
    if (const auto* const boolean = std::get_if<bool>(&row.fallback))
        return *boolean;
    return std::get<double>(row.fallback);
}

PreferenceDictionary dictionary()
{
    PreferenceDictionary defaults;
    for (const Preference& row : Pref::rows)
        defaults.emplace(row.key, stored(row));
    return defaults;
}

} // namespace

const PreferenceDictionary& Pref::defaults()
{
    static const PreferenceDictionary defaults = dictionary();
    return defaults;
}

ReadingStyle Pref::style(std::string_view key, const PreferenceStore& store)
{
    const std::string rawValue = store.text(key).value_or("");
    return readingStyle(rawValue).value_or(ReadingStyle::iconAndValue);
}

void Pref::resetToDefaults(PreferenceStore& store)
{
    for (const Preference& row : rows)
        store.remove(row.key);
}

std::string Pref::version(const Desktop& desktop)
{
    return desktop.shortVersion().value_or("");
}

std::string_view Pref::coffeeURL()
{
    return kDonationPage;
}

} // namespace amperly
