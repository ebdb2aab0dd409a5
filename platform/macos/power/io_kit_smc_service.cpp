#include "platform/macos/power/io_kit_smc_service.h"

#include "platform/macos/power/io_object.h"

namespace amperly {
namespace {

/// The driver has one type of client.
constexpr std::uint32_t kClientType = 0;

} // namespace

SmcOpening IoKitSmcService::open(std::string_view className)
{
    const IoObject service = IoObject::firstService(className);
    if (!service)
        return {};
    io_connect_t connection = IO_OBJECT_NULL;
    const kern_return_t code = IOServiceOpen(service.get(), mach_task_self(), kClientType, &connection);
    return {.opened = code == kIOReturnSuccess, .connection = connection};
}

std::int32_t IoKitSmcService::callStruct(std::uint32_t connection, std::uint32_t selector,
    std::span<const std::byte, kSmcRecordSize> request, std::span<std::byte, kSmcRecordSize> reply)
{
    std::size_t replySize = reply.size();
    return IOConnectCallStructMethod(
        connection, selector, request.data(), request.size(), reply.data(), &replySize);
}

void IoKitSmcService::close(std::uint32_t connection)
{
    // The kernel answers no handle with an error and does nothing.
    IOServiceClose(connection);
}

} // namespace amperly
