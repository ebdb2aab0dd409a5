// One preference as a control sees it: a value of its own type, read from the store afresh each
// time and written to it at once.
#pragma once

#include "platform/preference_store.h"

#include <optional>
#include <string>
#include <string_view>

namespace amperly {

/// `Value` is bool, std::int64_t, double, std::string or ReadingStyle.
template <typename Value>
class PreferenceBinding {
public:
    /// `key` is one of Pref's, and lives as long as the program; `store` must outlive the binding.
    explicit PreferenceBinding(std::string_view key, PreferenceStore& store = PreferenceStore::standard());

    /// What is stored, else the registered value, else the one that Pref gives. Nothing where the
    /// stored text is none of the values that there are.
    [[nodiscard]] std::optional<Value> value() const;

    void set(const Value& value) const;

private:
    std::string_view m_key;
    PreferenceStore* m_store;
};

} // namespace amperly
