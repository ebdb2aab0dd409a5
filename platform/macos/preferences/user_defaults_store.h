// The user's preferences in the system's own store, where they can also be looked at and
// changed with `defaults read` and `defaults write`. Changes by other processes are announced for
// keys that have been registered or set here.
#pragma once

#include "platform/preference_store.h"

#import <Foundation/Foundation.h>

#include <map>
#include <optional>

@class AMPChangeObserver;

namespace amperly {

class UserDefaultsStore : public PreferenceStore {
public:
    explicit UserDefaultsStore(NSUserDefaults* defaults);
    ~UserDefaultsStore() override;

    void registerDefaults(const PreferenceDictionary& defaults) override;
    [[nodiscard]] const PreferenceValue* value(std::string_view key) const override;
    void set(std::string_view key, const PreferenceValue& value) override;
    void remove(std::string_view key) override;

private:
    [[nodiscard]] std::optional<PreferenceValue> read(std::string_view key) const;
    void follow(std::string_view key);
    void announceWhatChanged();

    NSUserDefaults* m_defaults;
    AMPChangeObserver* m_observer;
    /// The followed keys with what they read when it was last announced. The store is asked
    /// afresh for every read; this only tells a change from a write of the same value, and one
    /// announcement of a change from the second that the system makes of it.
    std::map<std::string, std::optional<PreferenceValue>, std::less<>> m_announced;
    mutable std::optional<PreferenceValue> m_asked; ///< what value() found last
};

} // namespace amperly
