// What every preference store does alike, wherever it keeps its values: two layers in memory,
// the stored values above the registered ones, read without a look at the disk. Where values
// go from here, and who else may change them, is each store's own affair.
#pragma once

#include "platform/preference_store.h"

#include <list>

namespace amperly {

class LayeredPreferenceStore : public PreferenceStore {
public:
    void registerDefaults(const PreferenceDictionary& defaults) final;

    [[nodiscard]] std::optional<std::string> text(std::string_view key) const final;
    [[nodiscard]] std::int64_t integer(std::string_view key) const final;
    [[nodiscard]] bool boolean(std::string_view key) const final;
    [[nodiscard]] double real(std::string_view key) const final;

    void onDidChange(ChangeHandler handler) final;

protected:
    /// Puts `value` into the upper layer, or takes the key's value out of it where there is
    /// none. Tells whether that made a difference.
    bool assign(std::string_view key, std::optional<PreferenceValue> value);

    /// Puts `values` in the place of the whole upper layer. Tells whether that made a difference.
    bool assignAll(PreferenceDictionary values);

    [[nodiscard]] bool isEmpty() const { return m_stored.empty(); }

    /// Calls the handlers, those included that a handler adds.
    void announceChange();

private:
    /// The value that shows at `key`; null where neither layer has one.
    [[nodiscard]] const PreferenceValue* find(std::string_view key) const;

    PreferenceDictionary m_stored;
    PreferenceDictionary m_registered;
    std::list<ChangeHandler> m_handlers; // a list, so that a running handler stays where it is
};

} // namespace amperly
