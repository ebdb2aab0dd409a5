// The user's preferences: values under text keys, in the store that the platform keeps for
// each user. Registered defaults show through wherever nothing is stored and are themselves
// never written. A change is announced whoever made it, another process included.
#pragma once

#include "platform/injected.h"
#include "platform/preference_value.h"
#include "platform/subscription.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace amperly {

class PreferenceStore {
public:
    PreferenceStore() = default;
    virtual ~PreferenceStore() = default;
    PreferenceStore(const PreferenceStore&) = delete;
    PreferenceStore& operator=(const PreferenceStore&) = delete;

    /// Adds `defaults` to those registered so far; a later value for a key replaces an earlier one.
    virtual void registerDefaults(const PreferenceDictionary& defaults) = 0;

    /// The stored value, else the registered one; null where there is neither. It stays as it is
    /// until the store is asked or changed again.
    [[nodiscard]] virtual const PreferenceValue* value(std::string_view key) const = 0;

    /// The same value, converted as the functions of preference_value.h do. A key without one
    /// reads as nothing, 0, false and 0.0.
    [[nodiscard]] std::optional<std::string> text(std::string_view key) const;
    [[nodiscard]] std::int64_t integer(std::string_view key) const;
    [[nodiscard]] bool boolean(std::string_view key) const;
    [[nodiscard]] double real(std::string_view key) const;

    /// Stores a value. It can be read at once; when it reaches the disk is the store's affair,
    /// but never later than the end of the process.
    virtual void set(std::string_view key, const PreferenceValue& value) = 0;

    /// Removes a stored value, so that the registered default shows through again.
    virtual void remove(std::string_view key) = 0;

    /// Calls `handler` after every change, on the event loop's thread.
    [[nodiscard]] Subscription onDidChange(std::function<void()> handler)
    {
        return m_subscribers.add(std::move(handler));
    }

    /// The store in force. Outside every Injected<PreferenceStore> this is a programming error.
    [[nodiscard]] static PreferenceStore& standard();

protected:
    void announceChange() { m_subscribers.announce(); }

private:
    Subscribers<> m_subscribers;
};

} // namespace amperly
