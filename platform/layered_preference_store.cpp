#include "platform/layered_preference_store.h"

namespace amperly {

void LayeredPreferenceStore::registerDefaults(const PreferenceDictionary& defaults)
{
    for (const auto& [key, value] : defaults)
        m_registered.insert_or_assign(key, value);
}

std::optional<std::string> LayeredPreferenceStore::text(std::string_view key) const
{
    const PreferenceValue* const value = find(key);
    return value != nullptr ? std::optional(asText(*value)) : std::nullopt;
}

std::int64_t LayeredPreferenceStore::integer(std::string_view key) const
{
    const PreferenceValue* const value = find(key);
    return value != nullptr ? asInteger(*value) : 0;
}

bool LayeredPreferenceStore::boolean(std::string_view key) const
{
    const PreferenceValue* const value = find(key);
    return value != nullptr && asBoolean(*value);
}

double LayeredPreferenceStore::real(std::string_view key) const
{
    const PreferenceValue* const value = find(key);
    return value != nullptr ? asReal(*value) : 0.0;
}

void LayeredPreferenceStore::onDidChange(ChangeHandler handler)
{
    m_handlers.push_back(std::move(handler));
}

bool LayeredPreferenceStore::assign(std::string_view key, std::optional<PreferenceValue> value)
{
    const auto place = m_stored.find(key);
    if (!value) {
        if (place == m_stored.end())
            return false;
        m_stored.erase(place);
        return true;
    }
    if (place == m_stored.end()) {
        m_stored.emplace(key, std::move(*value));
        return true;
    }
    if (place->second == *value)
        return false;
    place->second = std::move(*value);
    return true;
}

bool LayeredPreferenceStore::assignAll(PreferenceDictionary values)
{
    if (values == m_stored)
        return false;
    m_stored = std::move(values);
    return true;
}

void LayeredPreferenceStore::announceChange()
{
    for (const ChangeHandler& handler : m_handlers)
        handler();
}

const PreferenceValue* LayeredPreferenceStore::find(std::string_view key) const
{
    if (const auto stored = m_stored.find(key); stored != m_stored.end())
        return &stored->second;
    if (const auto registered = m_registered.find(key); registered != m_registered.end())
        return &registered->second;
    return nullptr;
}

} // namespace amperly
