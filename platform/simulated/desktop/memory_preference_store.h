// Preferences that last as long as the program: for demonstrations and tests, which must not
// touch what the user has chosen.
#pragma once

#include "platform/layered_preference_store.h"

namespace amperly {

class MemoryPreferenceStore final : public LayeredPreferenceStore {
public:
    MemoryPreferenceStore() = default;

    /// Starts with `stored` in the store, as if an earlier run had left it there.
    explicit MemoryPreferenceStore(PreferenceDictionary stored) { assignAll(std::move(stored)); }

    /// Both announce at once, and only what differs.
    void set(std::string_view key, const PreferenceValue& value) override;
    void remove(std::string_view key) override;
};

} // namespace amperly
