// Preferences in memory, in two layers: the stored values above the registered ones. By itself it
// lasts as long as the program, which is what demonstrations and tests want; a store that keeps
// its values elsewhere too reads them from here, without a look at the disk.
#pragma once

#include "platform/preference_store.h"

#include <optional>
#include <string_view>
#include <utility>

namespace amperly {

class MemoryPreferenceStore : public PreferenceStore {
public:
    MemoryPreferenceStore() = default;

    /// Starts with `stored` in the store, as if an earlier run had left it there.
    explicit MemoryPreferenceStore(PreferenceDictionary stored) : m_stored(std::move(stored)) { }

    void registerDefaults(const PreferenceDictionary& defaults) override;
    [[nodiscard]] const PreferenceValue* value(std::string_view key) const final;

    /// Both announce at once, and only what differs.
    void set(std::string_view key, const PreferenceValue& value) override;
    void remove(std::string_view key) override;

protected:
    /// Puts `value` into the upper layer, or takes the key's value out of it where there is
    /// none. Tells whether that made a difference.
    bool assign(std::string_view key, std::optional<PreferenceValue> value);

    /// Puts `values` in the place of the whole upper layer. Tells whether that made a difference.
    bool assignAll(PreferenceDictionary values);

    [[nodiscard]] bool isEmpty() const { return m_stored.empty(); }

private:
    PreferenceDictionary m_stored;
    PreferenceDictionary m_registered;
};

} // namespace amperly
