// A preference store that has only what was stored: it takes no defaults.
#pragma once

#include "platform/simulated/desktop/memory_preference_store.h"

#include <utility>

namespace amperly {

class StoreWithoutDefaults : public PreferenceStore {
public:
    void registerDefaults(const PreferenceDictionary&) override { }

    [[nodiscard]] std::optional<std::string> text(std::string_view key) const override
    {
        return m_stored.text(key);
    }
    [[nodiscard]] std::int64_t integer(std::string_view key) const override { return m_stored.integer(key); }
    [[nodiscard]] bool boolean(std::string_view key) const override { return m_stored.boolean(key); }
    [[nodiscard]] double real(std::string_view key) const override { return m_stored.real(key); }

    void set(std::string_view key, const PreferenceValue& value) override { m_stored.set(key, value); }
    void remove(std::string_view key) override { m_stored.remove(key); }
    void onDidChange(ChangeHandler handler) override { m_stored.onDidChange(std::move(handler)); }

private:
    MemoryPreferenceStore m_stored;
};

} // namespace amperly
