#include "platform/linux/motion/portal_animations.h"

namespace amperly {

PortalAnimations::PortalAnimations(BusConnection& connection)
{
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(connection.bus(), &slot,
        "type='signal',sender='org.freedesktop.portal.Desktop',"
        "interface='org.freedesktop.portal.Settings',member='SettingChanged',"
        "arg0='org.gnome.desktop.interface',arg1='enable-animations'",
        settingChanged, nullptr, this);
    m_match.reset(slot);

    sd_bus_message* call = nullptr;
    if (sd_bus_message_new_method_call(connection.bus(), &call, "org.freedesktop.portal.Desktop",
            "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "Read")
        < 0)
        return;
    const BusMessage owner(call);
    sd_bus_message_set_auto_start(call, 0);
    sd_bus_message_append(call, "ss", "org.gnome.desktop.interface", "enable-animations");
    slot = nullptr;
    sd_bus_call_async(connection.bus(), &slot, call, answered, this, 0);
    m_call.reset(slot);
    connection.settle();
}

int PortalAnimations::answered(sd_bus_message* reply, void* self, sd_bus_error*)
{
    // Read answers with a variant in a variant.
    int enabled = 0;
    if (!sd_bus_message_is_method_error(reply, nullptr) && sd_bus_message_enter_container(reply, 'v', "v") > 0
        && sd_bus_message_read(reply, "v", "b", &enabled) >= 0)
        static_cast<PortalAnimations*>(self)->m_enabled = enabled != 0;
    return 0;
}

int PortalAnimations::settingChanged(sd_bus_message* signal, void* self, sd_bus_error*)
{
    int enabled = 0;
    if (sd_bus_message_skip(signal, "ss") >= 0 && sd_bus_message_read(signal, "v", "b", &enabled) >= 0)
        static_cast<PortalAnimations*>(self)->m_enabled = enabled != 0;
    return 0;
}

} // namespace amperly
