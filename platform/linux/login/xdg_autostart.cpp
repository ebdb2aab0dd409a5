#include "platform/linux/login/xdg_autostart.h"

#include "platform/linux/files/user_file.h"
#include "platform/linux/login/exec_value.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace amperly {

namespace {

namespace fs = std::filesystem;

std::string_view valueIn(const IniDocument& entry, std::string_view key)
{
    return entry.written("Desktop Entry", key).value_or("");
}

LoginItem::Failure failure(std::string_view what, const std::string& path, const std::string& reason)
{
    return std::string(what) + ' ' + path + ": " + reason;
}

bool isRunnable(const std::string& path)
{
    std::error_code error;
    return fs::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

/// A program of the desktop's that lists what starts at login.
struct Pane {
    std::string_view desktop; ///< as XDG_CURRENT_DESKTOP names it; empty for any
    const char* program;
    const char* argument;
};

// A desktop's own list comes first: several may be installed, and each edits it in its own way.
constexpr std::array kPanes = {
    Pane{"KDE", "systemsettings", "kcm_autostart"},
    Pane{"KDE", "systemsettings5", "kcm_autostart"},
    Pane{"XFCE", "xfce4-session-settings", ""},
    Pane{"LXQt", "lxqt-config-session", ""},
    Pane{"MATE", "mate-session-properties", ""},
    Pane{"X-Cinnamon", "cinnamon-settings", "startup"},
    Pane{"", "gnome-session-properties", ""},
};

} // namespace

XdgAutostart::XdgAutostart(Entry entry, Session session, Programs programs)
    : m_entry(std::move(entry))
    , m_folder(std::move(session.configFolder) + "/autostart")
    , m_path(m_folder + '/' + m_entry.applicationId + ".desktop")
    , m_desktop(std::move(session.desktop))
    , m_programs(std::move(programs))
{
}

LoginItemStatus XdgAutostart::status() const
{
    const UserFile file = readUserFile(m_path);
    if (file.state != UserFile::State::Readable)
        return LoginItemStatus::NotRegistered;
    const IniDocument entry(file.bytes);
    if (isSwitchedOff(entry))
        return hasPane() ? LoginItemStatus::RequiresApproval : LoginItemStatus::NotRegistered;
    // An entry that outlived its program starts nothing, and looks as if it did.
    const std::optional<std::string> program = execProgram(valueIn(entry, "Exec"));
    if (!program || (program->starts_with('/') && !isRunnable(*program)))
        return LoginItemStatus::NotFound;
    return LoginItemStatus::Enabled;
}

LoginItem::Failure XdgAutostart::registerItem()
{
    if (status() == LoginItemStatus::RequiresApproval)
        return std::nullopt;
    return writeEntry();
}

LoginItem::Failure XdgAutostart::registerUnasked()
{
    std::error_code error;
    if (fs::exists(fs::symlink_status(m_path, error)))
        return std::nullopt;
    return writeEntry();
}

LoginItem::Failure XdgAutostart::writeEntry()
{
    std::error_code error;
    fs::create_directories(m_folder, error);
    if (error)
        return failure("Couldn't make the folder", m_folder, error.message());

    // No session ever starts half an entry.
    constexpr mode_t kReadableByAll = 0644;
    const std::string entry = "[Desktop Entry]\n"
                              "Type=Application\n"
                              "Name="
        + m_entry.name + "\nExec=" + execValue(m_entry.programPath) + "\nIcon=" + m_entry.applicationId
        + "\nX-GNOME-Autostart-enabled=true\n";
    if (const std::error_code reason = replaceUserFile(m_path, entry, kReadableByAll))
        return failure("Couldn't write", m_path, reason.message());
    return std::nullopt;
}

LoginItem::Failure XdgAutostart::unregisterItem()
{
    std::error_code error;
    fs::remove(m_path, error);
    if (error)
        return failure("Couldn't remove", m_path, error.message());
    return std::nullopt;
}

void XdgAutostart::openSystemSettings()
{
    for (const Pane& pane : kPanes) {
        if (isCurrent(pane.desktop) && m_programs.launch(pane.program, pane.argument))
            return;
    }
    std::error_code error;
    fs::create_directories(m_folder, error);
    m_programs.launch("xdg-open", m_folder);
}

bool XdgAutostart::isSwitchedOff(const IniDocument& entry) const
{
    // Each list has one of these ways. The session manager of MATE is alone in minding its own.
    return valueIn(entry, "Hidden") == "true" || valueIn(entry, "X-GNOME-Autostart-enabled") == "false"
        || (isCurrent("MATE") && valueIn(entry, "X-MATE-Autostart-enabled") == "false");
}

bool XdgAutostart::hasPane() const
{
    return std::any_of(kPanes.begin(), kPanes.end(),
        [this](const Pane& pane) { return isCurrent(pane.desktop) && m_programs.isThere(pane.program); });
}

bool XdgAutostart::isCurrent(std::string_view desktop) const
{
    return desktop.empty() || m_desktop.is(desktop);
}

} // namespace amperly
