// Starting at login, as freedesktop.org's Autostart Specification has it: a desktop entry in the
// user's autostart folder, which the user may also switch off without removing it.
#pragma once

#include "platform/login_item.h"

#include <functional>
#include <string>
#include <string_view>

namespace amperly {

class XdgAutostart : public LoginItem {
public:
    /// What the entry says.
    struct Entry {
        std::string applicationId; ///< names the file
        std::string name; ///< as people read it
        std::string programPath; ///< what is started
    };

    /// Where it is written, and for which desktop.
    struct Session {
        std::string configFolder; ///< the user's, by the XDG rules
        std::string currentDesktop; ///< the value of XDG_CURRENT_DESKTOP: names between colons
    };

    /// `launch` starts a program with one argument, or with none where that is empty; it returns
    /// false where there is no such program.
    XdgAutostart(Entry entry, Session session,
        std::function<bool(const std::string& program, const std::string& argument)> launch);

    /// Not registered as well where the user has switched the entry off in the desktop's own list;
    /// not found where the entry's program is gone.
    [[nodiscard]] LoginItemStatus status() const override;
    [[nodiscard]] Failure registerItem() override;
    [[nodiscard]] Failure unregisterItem() override;

    /// Opens the desktop's own list where it is known, else the autostart folder.
    void openSystemSettings() override;

private:
    [[nodiscard]] bool isCurrent(std::string_view desktop) const;

    Entry m_entry;
    std::string m_folder;
    std::string m_path;
    std::string m_currentDesktop;
    std::function<bool(const std::string&, const std::string&)> m_launch;
};

} // namespace amperly
