// The user's preferences in the system's own store, where they can also be looked at and
// changed with `defaults read` and `defaults write`.
#pragma once

#include "platform/preference_store.h"

#import <Foundation/Foundation.h>

#include <list>
#include <map>

@class AMPChangeObserver;

namespace amperly {

class UserDefaultsStore : public PreferenceStore {
public:
    explicit UserDefaultsStore(NSUserDefaults* defaults);
    ~UserDefaultsStore() override;
    UserDefaultsStore(const UserDefaultsStore&) = delete;
    UserDefaultsStore& operator=(const UserDefaultsStore&) = delete;

    void registerDefaults(const PreferenceDictionary& defaults) override;
    [[nodiscard]] std::optional<std::string> text(std::string_view key) const override;
    [[nodiscard]] std::int64_t integer(std::string_view key) const override;
    [[nodiscard]] bool boolean(std::string_view key) const override;
    [[nodiscard]] double real(std::string_view key) const override;
    void set(std::string_view key, const PreferenceValue& value) override;
    void remove(std::string_view key) override;

    /// Changes by other processes are announced for keys that have been registered or set here.
    void onDidChange(ChangeHandler handler) override;

private:
    [[nodiscard]] std::optional<PreferenceValue> value(std::string_view key) const;
    void follow(std::string_view key);
    void announceWhatChanged();

    NSUserDefaults* m_defaults;
    AMPChangeObserver* m_observer;
    /// The followed keys with what they read when it was last announced. The store is asked
    /// afresh for every read; this only tells a change from a write of the same value, and one
    /// announcement of a change from the second that the system makes of it.
    std::map<std::string, std::optional<PreferenceValue>, std::less<>> m_announced;
    std::list<ChangeHandler> m_handlers; // a list, so that a running handler stays where it is
};

} // namespace amperly
