// Starting at login, as freedesktop.org's Autostart Specification has it: a desktop entry in the
// user's autostart folder, which the user may also switch off without removing it.
//
// Most desktops have a list of these entries for the user to switch. What is off there is on again
// only there; without such a list, the one switch is this program's.
#pragma once

#include "platform/linux/files/ini_document.h"
#include "platform/linux/files/xdg_session.h"
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
        CurrentDesktop desktop;
    };

    /// The desktop's programs.
    struct Programs {
        std::function<bool(const std::string& program)> isThere;

        /// Starts a program with one argument, or with none where that is empty; false where there
        /// is no such program.
        std::function<bool(const std::string& program, const std::string& argument)> launch;
    };

    XdgAutostart(Entry entry, Session session, Programs programs);

    /// Of an entry that is switched off: requires approval where the desktop has a list to switch
    /// it on in, else not registered. Not found where the entry's program is gone.
    [[nodiscard]] LoginItemStatus status() const override;

    /// Leaves an entry alone that the user has switched off in the desktop's own list.
    [[nodiscard]] Failure registerItem() override;

    /// Leaves any entry alone that is there.
    [[nodiscard]] Failure registerUnasked() override;
    [[nodiscard]] Failure unregisterItem() override;

    /// Opens the desktop's own list where it is known, else the autostart folder.
    void openSystemSettings() override;

private:
    [[nodiscard]] bool isCurrent(std::string_view desktop) const;
    [[nodiscard]] bool isSwitchedOff(const IniDocument& entry) const;
    [[nodiscard]] bool hasPane() const;
    [[nodiscard]] Failure writeEntry();

    Entry m_entry;
    std::string m_folder;
    std::string m_path;
    CurrentDesktop m_desktop;
    Programs m_programs;
};

} // namespace amperly
