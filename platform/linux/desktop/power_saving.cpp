#include "platform/linux/desktop/power_saving.h"

#include "platform/linux/bus/portal_setting.h"
#include "platform/linux/trimmed.h"

#include <fstream>

namespace amperly {

namespace {

constexpr const char* kMonitor = "org.freedesktop.portal.PowerProfileMonitor";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
constexpr const char* kSwitch = "power-saver-enabled";

} // namespace

PowerSaving::PowerSaving(BusConnection* connection, std::string profilePath)
    : m_profilePath(std::move(profilePath))
{
    if (connection == nullptr)
        return;
    m_match = connection->match<&PowerSaving::changed>({.sender = kPortalName,
                                                           .path = kPortalPath,
                                                           .interface = kProperties,
                                                           .member = "PropertiesChanged",
                                                           .firstArgument = kMonitor},
        *this);
    m_call = connection->call<&PowerSaving::answered>(
        {kPortalName, kPortalPath, kProperties, "Get", false}, *this, kMonitor, kSwitch);
}

bool PowerSaving::isOn() const
{
    if (m_isSwitchedOn)
        return true;
    std::ifstream file(m_profilePath);
    std::string profile;
    return std::getline(file, profile) && trimmed(profile) == "low-power";
}

void PowerSaving::answered(std::optional<BusVariant<bool>> isOn)
{
    if (isOn)
        m_isSwitchedOn = isOn->value;
}

void PowerSaving::changed(std::string_view, const BusEntries<bool>& properties)
{
    for (const auto& [name, value] : properties.entries) {
        if (name == kSwitch)
            m_isSwitchedOn = value;
    }
}

} // namespace amperly
