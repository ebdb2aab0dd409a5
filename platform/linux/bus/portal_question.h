// The desktop's portal, and how it is asked what desktops leave to it.
#pragma once

#include "platform/linux/bus/bus_connection.h"

namespace amperly {

inline constexpr const char* kPortalName = "org.freedesktop.portal.Desktop";
inline constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";

/// A question of the portal's that takes two texts.
struct PortalQuestion {
    const char* interface;
    const char* method;
    const char* group;
    const char* key;
};

/// Asks on `connection`; `answered` is called with the reply, and `self`, for as long as the slot is
/// kept. A portal that does not run is not started for it: desktops that have one run it anyway.
[[nodiscard]] BusSlot askPortal(
    BusConnection& connection, const PortalQuestion& question, sd_bus_message_handler_t answered, void* self);

} // namespace amperly
