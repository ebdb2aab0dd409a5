#include "platform/preference_store.h"

#include <cstdlib>

namespace amperly {

std::optional<std::string> PreferenceStore::text(std::string_view key) const
{
    const PreferenceValue* const found = value(key);
    return found != nullptr ? std::optional(asText(*found)) : std::nullopt;
}

std::int64_t PreferenceStore::integer(std::string_view key) const
{
    const PreferenceValue* const found = value(key);
    return found != nullptr ? asInteger(*found) : 0;
}

bool PreferenceStore::boolean(std::string_view key) const
{
    const PreferenceValue* const found = value(key);
    return found != nullptr && asBoolean(*found);
}

double PreferenceStore::real(std::string_view key) const
{
    const PreferenceValue* const found = value(key);
    return found != nullptr ? asReal(*found) : 0.0;
}

PreferenceStore& PreferenceStore::standard()
{
    PreferenceStore* const store = Injected<PreferenceStore>::current();
    if (store == nullptr)
        std::abort();
    return *store;
}

} // namespace amperly
