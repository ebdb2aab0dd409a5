#include "platform/linux/bus/portal_setting.h"

#include "platform/linux/bus/portal_question.h"

#include <string>
#include <utility>

namespace amperly {

namespace {

constexpr const char* kInterface = "org.freedesktop.portal.Settings";

} // namespace

PortalSetting::PortalSetting(BusConnection& connection, const char* group, const char* key, Arrived arrived)
    : m_connection(connection), m_group(group), m_key(key), m_arrived(std::move(arrived))
{
    const std::string rule = std::string("type='signal',sender='") + kPortalName + "',interface='"
        + kInterface + "',member='SettingChanged',arg0='" + m_group + "',arg1='" + m_key + '\'';
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(m_connection.bus(), &slot, rule.c_str(), changed, nullptr, this);
    m_match.reset(slot);
    refresh();
}

void PortalSetting::refresh()
{
    m_call = askPortal(m_connection, {kInterface, "Read", m_group, m_key}, answered, this);
}

int PortalSetting::answered(sd_bus_message* reply, void* self, sd_bus_error*)
{
    const Arrived& arrived = static_cast<PortalSetting*>(self)->m_arrived;
    // Read answers with a variant in a variant.
    if (sd_bus_message_is_method_error(reply, nullptr) || sd_bus_message_enter_container(reply, 'v', "v") <= 0
        || !arrived(reply))
        arrived(nullptr);
    return 0;
}

int PortalSetting::changed(sd_bus_message* signal, void* self, sd_bus_error*)
{
    if (sd_bus_message_skip(signal, "ss") >= 0)
        static_cast<PortalSetting*>(self)->m_arrived(signal);
    return 0;
}

} // namespace amperly
