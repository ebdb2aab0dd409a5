#include "platform/linux/desktop/linux_display_settings.h"

#include "platform/linux/desktop/kde_animations.h"
#include "platform/linux/x11/x11_settings.h"

namespace amperly {

LinuxDisplaySettings::LinuxDisplaySettings(
    BusConnection* connection, std::string configFolder, std::string_view currentDesktop)
{
    if (currentDesktop.find("KDE") != std::string_view::npos)
        m_kdeGlobals = std::move(configFolder) + "/kdeglobals";
    if (connection != nullptr) {
        m_animations.emplace(*connection, "org.gnome.desktop.interface", "enable-animations",
            [this](sd_bus_message* value) { return takeAnimations(value); });
        m_contrast.emplace(*connection, "org.freedesktop.appearance", "contrast",
            [this](sd_bus_message* value) { return takeContrast(value); });
    }
    refresh();
}

bool LinuxDisplaySettings::takeAnimations(sd_bus_message* value)
{
    int enabled = 0;
    if (value == nullptr || sd_bus_message_read(value, "v", "b", &enabled) < 0)
        return false;
    become(m_portalStopsAnimations, enabled == 0);
    return true;
}

bool LinuxDisplaySettings::takeContrast(sd_bus_message* value)
{
    constexpr std::uint32_t kHigher = 1;
    std::uint32_t contrast = 0;
    if (value == nullptr || sd_bus_message_read(value, "v", "u", &contrast) < 0)
        return false;
    become(m_portalWantsContrast, contrast == kHigher);
    return true;
}

void LinuxDisplaySettings::refresh()
{
    const std::string theme = x11TextSetting("Net/ThemeName").value_or("");
    become(m_themeHasContrast, theme.find("HighContrast") != std::string::npos);
}

bool LinuxDisplaySettings::reducesMotion() const
{
    if (m_portalStopsAnimations)
        return true;
    if (x11IntegerSetting("Gtk/EnableAnimations") == 0)
        return true;
    return !m_kdeGlobals.empty() && animationFactorIn(m_kdeGlobals) == 0.0;
}

bool LinuxDisplaySettings::increasesContrast() const
{
    return m_portalWantsContrast || m_themeHasContrast;
}

} // namespace amperly
