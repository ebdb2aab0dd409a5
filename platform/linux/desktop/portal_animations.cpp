#include "platform/linux/desktop/portal_animations.h"

namespace amperly {

PortalAnimations::PortalAnimations(BusConnection& connection)
    : m_setting(connection, "org.gnome.desktop.interface", "enable-animations",
        [this](sd_bus_message* value) { return take(value); })
{
}

bool PortalAnimations::take(sd_bus_message* value)
{
    int enabled = 0;
    if (value == nullptr || sd_bus_message_read(value, "v", "b", &enabled) < 0)
        return false;
    m_enabled = enabled != 0;
    return true;
}

} // namespace amperly
