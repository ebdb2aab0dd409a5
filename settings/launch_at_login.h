// Whether the program starts at login, as a switch sees it: what the desktop says, which need not
// be what was asked of it.
#pragma once

#include "platform/login_item.h"

#include <functional>
#include <string>

namespace amperly {

class LaunchAtLogin {
public:
    /// `item` must outlive this. `alert` shows the user what went wrong, and returns when the
    /// user has seen it.
    LaunchAtLogin(LoginItem& item, std::function<void(const std::string&)> alert);

    [[nodiscard]] LoginItemStatus status() const { return m_status; }
    [[nodiscard]] bool isOn() const { return m_status == LoginItemStatus::Enabled; }
    [[nodiscard]] bool needsApproval() const { return m_status == LoginItemStatus::RequiresApproval; }

    /// Asks for it, then reads what came of it.
    void set(bool on);

    /// Reads the status again: the user may have changed it elsewhere.
    void readAgain();

    void openSystemSettings() { m_item.openSystemSettings(); }

private:
    LoginItem& m_item;
    std::function<void(const std::string&)> m_alert;
    LoginItemStatus m_status;
};

} // namespace amperly
