#include "platform/linux/bus/portal_question.h"

namespace amperly {

BusSlot askPortal(
    BusConnection& connection, const PortalQuestion& question, sd_bus_message_handler_t answered, void* self)
{
    sd_bus_message* call = nullptr;
    if (sd_bus_message_new_method_call(
            connection.bus(), &call, kPortalName, kPortalPath, question.interface, question.method)
        < 0)
        return nullptr;
    const BusMessage owner(call);
    sd_bus_message_set_auto_start(call, 0);
    sd_bus_message_append(call, "ss", question.group, question.key);
    sd_bus_slot* slot = nullptr;
    sd_bus_call_async(connection.bus(), &slot, call, answered, self, 0);
    connection.settle();
    return BusSlot(slot);
}

} // namespace amperly
