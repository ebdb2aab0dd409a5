// The fake IOKit: a registry of named services, and a driver of the controller that takes the
// 80 bytes of a record apart by their offsets, independently of the program's own struct.

#include "tests/platform/macos/fakes/core_foundation_objects.h"

#include <algorithm>
#include <cstring>

namespace amperly::fake_mac {
namespace {

struct Handle {
    std::string className;
    bool isConnection = false;
};

constexpr std::size_t kRecordSize = 80;
constexpr std::uint32_t kStructCall = 2;

// Offsets into a record.
constexpr std::size_t kKey = 0;
constexpr std::size_t kDataSize = 28;
constexpr std::size_t kDataType = 32;
constexpr std::size_t kResult = 40;
constexpr std::size_t kCommand = 42;
constexpr std::size_t kBytes = 48;

// What the driver answers.
constexpr std::uint8_t kNoSuchKey = 0x84;
constexpr std::uint8_t kWrongSize = 0x87;
constexpr std::uint8_t kBadCommand = 0x82;

Machine theMachine;
std::map<io_object_t, Handle> open;
std::map<io_object_t, Handle> closed;
io_object_t nextHandle = 0x1003;
int handlesMade = 0;
std::vector<std::string> violations;

io_object_t makeHandle(const std::string& className, bool isConnection)
{
    open[nextHandle] = {.className = className, .isConnection = isConnection};
    ++handlesMade;
    return nextHandle++;
}

const Handle* checked(io_object_t handle, bool isConnection, const char* who)
{
    const auto place = open.find(handle);
    if (place == open.end()) {
        violation(std::string(who) + (closed.contains(handle) ? ": given back before" : ": no handle"));
        return nullptr;
    }
    if (place->second.isConnection != isConnection) {
        violation(std::string(who) + ": another kind of handle");
        return nullptr;
    }
    return &place->second;
}

kern_return_t giveBack(io_object_t handle, bool isConnection, const char* who)
{
    if (checked(handle, isConnection, who) == nullptr)
        return kIOReturnBadArgument;
    closed.insert(open.extract(handle));
    return kIOReturnSuccess;
}

std::uint32_t word(const std::uint8_t* record, std::size_t offset)
{
    std::uint32_t value = 0;
    std::memcpy(&value, record + offset, sizeof value);
    return value;
}

void putWord(std::uint8_t* record, std::size_t offset, std::size_t value)
{
    const auto narrow = static_cast<std::uint32_t>(value);
    std::memcpy(record + offset, &narrow, sizeof narrow);
}

void answer(const std::uint8_t* request, std::uint8_t* reply)
{
    const auto place = theMachine.smcKeys.find(word(request, kKey));
    if (place == theMachine.smcKeys.end()) {
        reply[kResult] = kNoSuchKey;
        return;
    }
    const SmcKey& key = place->second;
    reply[kResult] = key.result;
    if (key.result != 0)
        return;
    switch (request[kCommand]) {
    case 9:
        putWord(reply, kDataSize, key.bytes.size());
        putWord(reply, kDataType, key.type);
        break;
    case 5:
        if (word(request, kDataSize) != key.bytes.size())
            reply[kResult] = kWrongSize;
        else
            std::copy(key.bytes.begin(), key.bytes.end(), reply + kBytes);
        break;
    case 6:
        violation("a write to the controller");
        reply[kResult] = kBadCommand;
        break;
    default:
        reply[kResult] = kBadCommand;
    }
}

} // namespace

Machine& machine()
{
    return theMachine;
}

void violation(const std::string& what)
{
    violations.push_back(what);
}

bool allocationFails()
{
    return theMachine.allocationsUntilFailure >= 0 && theMachine.allocationsUntilFailure-- == 0;
}

Audit audit()
{
    Audit audit;
    audit.coreFoundationObjects = liveObjects();
    for (const auto& [handle, description] : open)
        ++(description.isConnection ? audit.connections : audit.kernelObjects);
    audit.violations = violations;
    return audit;
}

int objectsHandedOut()
{
    return objectsMade() + handlesMade;
}

void resetMachine()
{
    resetObjects();
    open.clear();
    closed.clear();
    handlesMade = 0;
    violations.clear();
    theMachine = Machine();
}

} // namespace amperly::fake_mac

using namespace amperly::fake_mac;

extern "C" {

const mach_port_t kIOMainPortDefault = 0;
mach_port_t mach_task_self_ = 0x203;

CFMutableDictionaryRef IOServiceMatching(const char* name)
{
    if (allocationFails())
        return nullptr;
    return static_cast<CFMutableDictionaryRef>(
        const_cast<void*>(makeObject(Dictionary{{"IOProviderClass", name}})));
}

io_service_t IOServiceGetMatchingService(mach_port_t mainPort, CFDictionaryRef matching)
{
    if (mainPort != kIOMainPortDefault)
        violation("IOServiceGetMatchingService: not the main port");
    const std::string className = matchingClass(matching);
    if (matching != nullptr)
        CFRelease(matching); // the call consumes one reference
    if (!theMachine.services.contains(className))
        return IO_OBJECT_NULL;
    return makeHandle(className, false);
}

kern_return_t IOServiceOpen(io_service_t service, task_port_t task, uint32_t type, io_connect_t* connection)
{
    if (task != mach_task_self_)
        violation("IOServiceOpen: not for this task");
    const Handle* const handle = checked(service, false, "IOServiceOpen");
    if (handle == nullptr)
        return kIOReturnBadArgument;
    if (type != theMachine.onlyClientType)
        return kIOReturnUnsupported;
    if (theMachine.openResult != kIOReturnSuccess)
        return theMachine.openResult;
    *connection = makeHandle(handle->className, true);
    return kIOReturnSuccess;
}

kern_return_t IOServiceClose(io_connect_t connection)
{
    theMachine.closed.push_back(connection);
    return connection == IO_OBJECT_NULL ? kIOReturnBadArgument : giveBack(connection, true, "IOServiceClose");
}

kern_return_t IOObjectRelease(io_object_t object)
{
    return giveBack(object, false, "IOObjectRelease");
}

kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector, const void* input,
    size_t inputSize, void* output, size_t* outputSize)
{
    const Handle* const handle = checked(connection, true, "IOConnectCallStructMethod");
    if (handle == nullptr || handle->className != "AppleSMC")
        return kIOReturnBadArgument;
    const auto* const request = static_cast<const std::uint8_t*>(input);
    theMachine.requests.emplace_back(request, request + inputSize);
    if (theMachine.callResult != kIOReturnSuccess)
        return theMachine.callResult;
    if (selector != kStructCall || inputSize != kRecordSize || outputSize == nullptr
        || *outputSize != kRecordSize)
        return kIOReturnBadArgument;
    std::uint8_t reply[kRecordSize] = {};
    answer(request, reply);
    std::memcpy(output, reply, sizeof reply);
    return kIOReturnSuccess;
}

CFTypeRef IORegistryEntryCreateCFProperty(
    io_registry_entry_t entry, CFStringRef key, CFAllocatorRef allocator, IOOptionBits options)
{
    if (allocator != kCFAllocatorDefault || options != 0)
        violation("IORegistryEntryCreateCFProperty: not the default allocator, or options");
    const Handle* const handle = checked(entry, false, "IORegistryEntryCreateCFProperty");
    if (handle == nullptr)
        return nullptr;
    const Dictionary& properties = theMachine.services[handle->className];
    const auto place = properties.find(textOf(key));
    return place == properties.end() ? nullptr : makeObject(place->second);
}

} // extern "C"
