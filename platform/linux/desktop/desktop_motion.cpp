#include "platform/linux/desktop/desktop_motion.h"

#include "platform/linux/desktop/kde_animations.h"
#include "platform/linux/x11/x11_settings.h"

namespace amperly {

DesktopMotion::DesktopMotion(
    BusConnection* connection, std::string configFolder, std::string_view currentDesktop)
{
    if (connection != nullptr)
        m_portal.emplace(*connection);
    if (currentDesktop.find("KDE") != std::string_view::npos)
        m_kdeGlobals = std::move(configFolder) + "/kdeglobals";
}

bool DesktopMotion::reducesMotion() const
{
    if (m_portal && m_portal->enabled() == false)
        return true;
    if (x11IntegerSetting("Gtk/EnableAnimations") == 0)
        return true;
    return !m_kdeGlobals.empty() && animationFactorIn(m_kdeGlobals) == 0.0;
}

} // namespace amperly
