#include "platform/linux/desktop/portal_power_saver.h"

#include "platform/linux/bus/portal_question.h"

#include <string>
#include <string_view>

namespace amperly {

namespace {

constexpr const char* kMonitor = "org.freedesktop.portal.PowerProfileMonitor";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
constexpr const char* kSaver = "power-saver-enabled";

} // namespace

PortalPowerSaver::PortalPowerSaver(BusConnection* connection)
{
    if (connection == nullptr)
        return;
    const std::string rule = std::string("type='signal',sender='") + kPortalName + "',path='" + kPortalPath
        + "',interface='" + kProperties + "',member='PropertiesChanged',arg0='" + kMonitor + '\'';
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(connection->bus(), &slot, rule.c_str(), changed, nullptr, this);
    m_match.reset(slot);
    m_call = askPortal(*connection, {kProperties, "Get", kMonitor, kSaver}, answered, this);
}

void PortalPowerSaver::take(sd_bus_message* value)
{
    int isOn = 0;
    if (sd_bus_message_read(value, "v", "b", &isOn) >= 0)
        m_isOn = isOn != 0;
}

int PortalPowerSaver::answered(sd_bus_message* reply, void* self, sd_bus_error*)
{
    if (!sd_bus_message_is_method_error(reply, nullptr))
        static_cast<PortalPowerSaver*>(self)->take(reply);
    return 0;
}

int PortalPowerSaver::changed(sd_bus_message* signal, void* self, sd_bus_error*)
{
    if (sd_bus_message_skip(signal, "s") < 0 || sd_bus_message_enter_container(signal, 'a', "{sv}") <= 0)
        return 0;
    while (sd_bus_message_enter_container(signal, 'e', "sv") > 0) {
        const char* name = nullptr;
        if (sd_bus_message_read(signal, "s", &name) < 0)
            return 0;
        if (std::string_view(name) == kSaver)
            static_cast<PortalPowerSaver*>(self)->take(signal);
        else
            sd_bus_message_skip(signal, "v");
        sd_bus_message_exit_container(signal);
    }
    return 0;
}

} // namespace amperly
