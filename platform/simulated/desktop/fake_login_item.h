// A login item that is registered nowhere. On request the desktop refuses, or leaves the last
// word to the user.
#pragma once

#include "platform/login_item.h"

#include <utility>

namespace amperly {

class FakeLoginItem : public LoginItem {
public:
    [[nodiscard]] LoginItemStatus status() const override { return m_status; }

    [[nodiscard]] Failure registerItem() override
    {
        ++m_registrations;
        if (m_failure)
            return m_failure;
        m_status = m_approvalRequired ? LoginItemStatus::RequiresApproval : LoginItemStatus::Enabled;
        return std::nullopt;
    }

    [[nodiscard]] Failure registerUnasked() override
    {
        ++m_unaskedRegistrations;
        return registerItem();
    }

    [[nodiscard]] Failure unregisterItem() override
    {
        ++m_unregistrations;
        if (m_failure)
            return m_failure;
        m_status = LoginItemStatus::NotRegistered;
        return std::nullopt;
    }

    void openSystemSettings() override { ++m_settingsOpenings; }

    /// From now on registering and unregistering change nothing and fail with these words;
    /// nothing lets them succeed again.
    void failWith(Failure failure) { m_failure = std::move(failure); }

    /// From now on registering succeeds but starts nothing at login until the user approves.
    void requireApproval() { m_approvalRequired = true; }

    /// The user changes the desktop's own list.
    void setStatus(LoginItemStatus status) { m_status = status; }

    // What it was asked for, in vain or not.
    [[nodiscard]] int unaskedRegistrations() const { return m_unaskedRegistrations; } ///< among them
    [[nodiscard]] int registrations() const { return m_registrations; }
    [[nodiscard]] int unregistrations() const { return m_unregistrations; }
    [[nodiscard]] int settingsOpenings() const { return m_settingsOpenings; }

private:
    LoginItemStatus m_status = LoginItemStatus::NotRegistered;
    Failure m_failure;
    bool m_approvalRequired = false;
    int m_unaskedRegistrations = 0;
    int m_registrations = 0;
    int m_unregistrations = 0;
    int m_settingsOpenings = 0;
};

} // namespace amperly
