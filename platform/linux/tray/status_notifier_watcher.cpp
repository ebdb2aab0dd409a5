#include "platform/linux/tray/status_notifier_watcher.h"

#include <fstream>
#include <utility>

namespace amperly {

namespace {

constexpr const char* kName = "org.kde.StatusNotifierWatcher";
constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";

StatusNotifierWatcher& watcherAt(void* self)
{
    return *static_cast<StatusNotifierWatcher*>(self);
}

bool isError(sd_bus_message* reply)
{
    return sd_bus_message_is_method_error(reply, nullptr) > 0;
}

} // namespace

StatusNotifierWatcher::StatusNotifierWatcher(BusConnection& connection, ProcessName processName)
    : m_connection(connection), m_processName(std::move(processName))
{
    match("type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
          "member='NameOwnerChanged',arg0='org.kde.StatusNotifierWatcher'",
        ownerChanged, m_ownerMatch);
    match("type='signal',sender='org.kde.StatusNotifierWatcher',"
          "interface='org.kde.StatusNotifierWatcher',member='StatusNotifierHostRegistered'",
        hostChanged, m_hostMatch);
    match("type='signal',sender='org.kde.StatusNotifierWatcher',"
          "interface='org.kde.StatusNotifierWatcher',member='StatusNotifierHostUnregistered'",
        hostChanged, m_hostGoneMatch);
    // After the match, so that no owner slips through between the two.
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(
        m_connection.bus(), &slot, kBus, kBusPath, kBus, "GetNameOwner", ownerAnswered, this, "s", kName);
    m_ownerCall.reset(slot);
    m_connection.settle();
}

void StatusNotifierWatcher::match(const char* rule, sd_bus_message_handler_t handler, BusSlot& slot)
{
    sd_bus_slot* added = nullptr;
    sd_bus_add_match_async(m_connection.bus(), &added, rule, handler, nullptr, this);
    slot.reset(added);
}

int StatusNotifierWatcher::ownerChanged(sd_bus_message* signal, void* self, sd_bus_error*)
{
    const char* name = nullptr;
    const char* before = nullptr;
    const char* now = nullptr;
    if (sd_bus_message_read(signal, "sss", &name, &before, &now) >= 0) {
        watcherAt(self).m_ownerCall.reset();
        watcherAt(self).meet(now);
    }
    return 0;
}

int StatusNotifierWatcher::ownerAnswered(sd_bus_message* reply, void* self, sd_bus_error*)
{
    const char* owner = "";
    if (!isError(reply))
        sd_bus_message_read(reply, "s", &owner);
    watcherAt(self).meet(owner);
    return 0;
}

void StatusNotifierWatcher::meet(const char* owner)
{
    if (m_owner == owner && m_presence != Presence::Unknown)
        return;
    m_owner = owner;
    m_process.clear();
    m_processCall.reset();
    m_hostCall.reset();
    if (m_owner.empty()) {
        become(Presence::Absent);
        return;
    }
    m_presence = Presence::Unknown;
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(m_connection.bus(), &slot, kBus, kBusPath, kBus, "GetConnectionUnixProcessID",
        processAnswered, this, "s", owner);
    m_processCall.reset(slot);
}

int StatusNotifierWatcher::processAnswered(sd_bus_message* reply, void* self, sd_bus_error*)
{
    StatusNotifierWatcher& watcher = watcherAt(self);
    std::uint32_t processId = 0;
    if (!isError(reply) && sd_bus_message_read(reply, "u", &processId) >= 0)
        watcher.m_process = watcher.m_processName(processId);
    watcher.askForHost();
    return 0;
}

int StatusNotifierWatcher::hostChanged(sd_bus_message*, void* self, sd_bus_error*)
{
    StatusNotifierWatcher& watcher = watcherAt(self);
    if (watcher.m_presence == Presence::WithHost || watcher.m_presence == Presence::WithoutHost)
        watcher.askForHost();
    return 0;
}

void StatusNotifierWatcher::askForHost()
{
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(m_connection.bus(), &slot, m_owner.c_str(), "/StatusNotifierWatcher",
        "org.freedesktop.DBus.Properties", "Get", hostAnswered, this, "ss", kName,
        "IsStatusNotifierHostRegistered");
    m_hostCall.reset(slot);
}

int StatusNotifierWatcher::hostAnswered(sd_bus_message* reply, void* self, sd_bus_error*)
{
    // A watcher that does not say so has a host: it is one itself.
    int hasHost = 1;
    if (!isError(reply))
        sd_bus_message_read(reply, "v", "b", &hasHost);
    watcherAt(self).become(hasHost ? Presence::WithHost : Presence::WithoutHost);
    return 0;
}

void StatusNotifierWatcher::become(Presence presence)
{
    if (std::exchange(m_presence, presence) != presence && m_changed)
        m_changed();
}

std::string processNameFromProc(std::uint32_t processId)
{
    std::ifstream file("/proc/" + std::to_string(processId) + "/comm");
    std::string name;
    std::getline(file, name);
    return name;
}

} // namespace amperly
