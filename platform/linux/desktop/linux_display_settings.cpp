#include "platform/linux/desktop/linux_display_settings.h"

#include "platform/linux/desktop/kde_animations.h"
#include "platform/linux/x11/x11_settings.h"

namespace amperly {

namespace {

constexpr std::uint32_t kHigherContrast = 1; // as the portal has it

} // namespace

LinuxDisplaySettings::LinuxDisplaySettings(
    BusConnection* connection, std::string configFolder, std::string_view currentDesktop)
{
    if (currentDesktop.find("KDE") != std::string_view::npos)
        m_kdeGlobals = std::move(configFolder) + "/kdeglobals";
    if (connection != nullptr) {
        m_animations.emplace(*connection, "org.gnome.desktop.interface", "enable-animations");
        m_animations->onChanged([this] { become(m_portalStopsAnimations, m_animations->value() == false); });
        m_contrast.emplace(*connection, "org.freedesktop.appearance", "contrast");
        m_contrast->onChanged(
            [this] { become(m_portalWantsContrast, m_contrast->value() == kHigherContrast); });
    }
    refresh();
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
