// Owning handles for what sd-bus counts references of.
#pragma once

#include <memory>
#include <systemd/sd-bus.h>

namespace amperly {

struct BusUnref {
    void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

/// A match, a pending call or an exported interface; its end takes it back.
using BusSlot = std::unique_ptr<sd_bus_slot, BusUnref>;

using BusMessage = std::unique_ptr<sd_bus_message, BusUnref>;

} // namespace amperly
