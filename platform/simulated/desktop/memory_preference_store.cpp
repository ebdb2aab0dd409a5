#include "platform/simulated/desktop/memory_preference_store.h"

namespace amperly {

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

} // namespace amperly
