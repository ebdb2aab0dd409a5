// The user's preferences: values under text keys, in the store that the platform keeps for
// each user. Registered defaults show through wherever nothing is stored and are themselves
// never written. A change is announced whoever made it, another process included.
#pragma once

#include "platform/injected.h"
#include "platform/preference_value.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace amperly {

class PreferenceStore {
public:
    using ChangeHandler = std::function<void()>;

    virtual ~PreferenceStore() = default;

    /// Adds `defaults` to those registered so far; a later value for a key replaces an earlier one.
    virtual void registerDefaults(const PreferenceDictionary& defaults) = 0;

    /// Typed reads: the stored value, else the registered one, converted as the functions of
    /// preference_value.h do. A key that is neither stored nor registered reads as nothing, 0,
    /// false and 0.0.
    [[nodiscard]] virtual std::optional<std::string> text(std::string_view key) const = 0;
    [[nodiscard]] virtual std::int64_t integer(std::string_view key) const = 0;
    [[nodiscard]] virtual bool boolean(std::string_view key) const = 0;
    [[nodiscard]] virtual double real(std::string_view key) const = 0;

    /// Stores a value. It can be read at once; when it reaches the disk is the store's affair,
    /// but never later than the end of the process.
    virtual void set(std::string_view key, const PreferenceValue& value) = 0;

    /// Removes a stored value, so that the registered default shows through again.
    virtual void remove(std::string_view key) = 0;

    /// Calls `handler` after every change, on the event loop's thread, for as long as the store
    /// lives. Any number of handlers may be added.
    virtual void onDidChange(ChangeHandler handler) = 0;

    /// The store in force. Outside every Injected<PreferenceStore> this is a programming error.
    [[nodiscard]] static PreferenceStore& standard();
};

} // namespace amperly
