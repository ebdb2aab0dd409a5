#include "platform/linux/login/xdg_autostart.h"

#include "platform/linux/files/file_replacement.h"
#include "platform/linux/login/desktop_entry.h"

#include <array>
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

    // No session ever starts half an entry.
    constexpr mode_t kReadableByAll = 0644;
    FileReplacement file(m_path, kReadableByAll);
    file.write("[Desktop Entry]\n"
               "Type=Application\n"
               "Name="
        + m_entry.name + "\nExec=" + execValue(m_entry.programPath) + "\nIcon=" + m_entry.applicationId
        + "\nX-GNOME-Autostart-enabled=true\n");
    file.commit();
    if (file.error())
        return failure("Couldn't write", m_path, file.error().message());
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
