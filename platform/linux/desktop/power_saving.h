// Whether the machine is to spare its battery. Firmware tells by its platform profile, where it has
// some; desktops have a switch for it also on machines without, and tell of that through their portal.
#pragma once

#include "platform/linux/bus/bus_connection.h"

namespace amperly {

class PowerSaving {
public:
    static constexpr const char* kPlatformProfile = "/sys/firmware/acpi/platform_profile";

    /// Asks the portal and follows it on `connection`, which must outlive this object; null for a
    /// desktop without a bus. A portal that does not run is not started for it.
    explicit PowerSaving(BusConnection* connection, std::string profilePath = kPlatformProfile);
    PowerSaving(const PowerSaving&) = delete;
    PowerSaving& operator=(const PowerSaving&) = delete;

    /// Reads the profile anew at each call: nobody announces its change.
    [[nodiscard]] bool isOn() const;

private:
    void answered(std::optional<BusVariant<bool>> isOn);
    void changed(std::string_view interface, const BusEntries<bool>& properties);

    std::string m_profilePath;
    bool m_isSwitchedOn = false;
    BusSlot m_match;
    BusSlot m_call;
};

} // namespace amperly
