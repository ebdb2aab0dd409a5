#include "platform/linux/login/xdg_autostart.h"

#include "platform/linux/login/desktop_entry.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

namespace amperly {

namespace {

namespace fs = std::filesystem;

std::optional<std::string> contentsOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::ostringstream contents;
    contents << file.rdbuf();
    return std::move(contents).str();
}

LoginItem::Failure failure(std::string_view what, const std::string& path, const std::string& reason)
{
    return std::string(what) + ' ' + path + ": " + reason;
}

} // namespace

XdgAutostart::XdgAutostart(
    Entry entry, std::string configFolder, std::function<bool(const std::string&, const std::string&)> launch)
    : m_entry(std::move(entry))
    , m_folder(std::move(configFolder) + "/autostart")
    , m_path(m_folder + '/' + m_entry.applicationId + ".desktop")
    , m_launch(std::move(launch))
{
}

LoginItemStatus XdgAutostart::status() const
{
    const std::optional<std::string> contents = contentsOf(m_path);
    if (!contents)
        return LoginItemStatus::NotRegistered;
    // Session managers' own lists switch an entry off in one of these two ways.
    if (desktopEntryValue(*contents, "Hidden") == "true")
        return LoginItemStatus::NotRegistered;
    if (desktopEntryValue(*contents, "X-GNOME-Autostart-enabled") == "false")
        return LoginItemStatus::NotRegistered;
    return LoginItemStatus::Enabled;
}

LoginItem::Failure XdgAutostart::registerItem()
{
    std::error_code error;
    fs::create_directories(m_folder, error);
    if (error)
        return failure("Couldn't make the folder", m_folder, error.message());

    // Written beside it and moved into place, so that no session ever starts half an entry.
    const std::string unfinished = m_path + ".new";
    errno = 0;
    std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
    file << "[Desktop Entry]\n"
         << "Type=Application\n"
         << "Name=" << m_entry.name << '\n'
         << "Exec=" << execValue(m_entry.programPath) << '\n'
         << "Icon=" << m_entry.applicationId << '\n'
         << "X-GNOME-Autostart-enabled=true\n";
    file.close();
    if (!file) {
        const std::string reason = std::strerror(errno);
        fs::remove(unfinished, error);
        return failure("Couldn't write", m_path, reason);
    }
    fs::rename(unfinished, m_path, error);
    if (error) {
        const std::string reason = error.message();
        fs::remove(unfinished, error);
        return failure("Couldn't write", m_path, reason);
    }
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
    struct Pane {
        const char* program;
        const char* argument;
    };
    // XFCE and Plasma have a list of their own and take its name.
    static constexpr std::array kPanes = {
        Pane{"xfce4-session-settings", ""},
        Pane{"systemsettings", "kcm_autostart"},
        Pane{"lxqt-config-session", ""},
        Pane{"gnome-session-properties", ""},
    };
    for (const Pane& pane : kPanes) {
        if (m_launch(pane.program, pane.argument))
            return;
    }
    std::error_code error;
    fs::create_directories(m_folder, error);
    m_launch("xdg-open", m_folder);
}

} // namespace amperly
