#include "platform/memory_preference_store.h"

namespace amperly {

void MemoryPreferenceStore::registerDefaults(const PreferenceDictionary& defaults)
{
    for (const auto& [key, value] : defaults)
        m_registered.insert_or_assign(key, value);
}

const PreferenceValue* MemoryPreferenceStore::value(std::string_view key) const
{
    if (const auto stored = m_stored.find(key); stored != m_stored.end())
        return &stored->second;
    if (const auto registered = m_registered.find(key); registered != m_registered.end())
        return &registered->second;
    return nullptr;
}

void MemoryPreferenceStore::set(std::string_view key, const PreferenceValue& value)
{
    if (assign(key, value))
        announceChange();
}

void MemoryPreferenceStore::remove(std::string_view key)
{
    if (assign(key, std::nullopt))
        announceChange();
}

bool MemoryPreferenceStore::assign(std::string_view key, std::optional<PreferenceValue> value)
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

bool MemoryPreferenceStore::assignAll(PreferenceDictionary values)
{
    if (values == m_stored)
        return false;
    m_stored = std::move(values);
    return true;
}

} // namespace amperly
