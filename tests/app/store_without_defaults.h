// A preference store that has only what was stored: it takes no defaults.
#pragma once

#include "platform/memory_preference_store.h"

namespace amperly {

class StoreWithoutDefaults : public MemoryPreferenceStore {
public:
    void registerDefaults(const PreferenceDictionary&) override { }
};

} // namespace amperly
