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

    /// `configFolder` is the user's XDG config folder. `launch` starts a program with one
    /// argument, or returns false where there is no such program.
    XdgAutostart(Entry entry, std::string configFolder,
        std::function<bool(const std::string& program, const std::string& argument)> launch);

    [[nodiscard]] LoginItemStatus status() const override;
    [[nodiscard]] Failure registerItem() override;
    [[nodiscard]] Failure unregisterItem() override;

    /// Opens the desktop's own list where it is known, else the autostart folder.
    void openSystemSettings() override;

private:
    Entry m_entry;
    std::string m_folder;
    std::string m_path;
    std::function<bool(const std::string&, const std::string&)> m_launch;
};

} // namespace amperly
