// Whether GNOME's animations are on, as the settings portal tells it.
#pragma once

#include "platform/linux/bus/portal_setting.h"

#include <optional>

namespace amperly {

class PortalAnimations {
public:
    /// Asks and follows on `connection`, which must outlive this object. A portal that does not
    /// run is not started for it.
    explicit PortalAnimations(BusConnection& connection);
    PortalAnimations(const PortalAnimations&) = delete;
    PortalAnimations& operator=(const PortalAnimations&) = delete;

    /// Nothing without a portal, before its answer, or on desktops without that setting.
    [[nodiscard]] std::optional<bool> enabled() const { return m_enabled; }

private:
    bool take(sd_bus_message* value);

    std::optional<bool> m_enabled;
    PortalSetting m_setting;
};

} // namespace amperly
