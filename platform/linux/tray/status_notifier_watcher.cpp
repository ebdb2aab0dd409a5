#include "platform/linux/tray/status_notifier_watcher.h"

#include <fstream>
#include <utility>

namespace amperly {

namespace {

constexpr const char* kName = "org.kde.StatusNotifierWatcher";
constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";

} // namespace

StatusNotifierWatcher::StatusNotifierWatcher(BusConnection& connection, ProcessName processName)
    : m_connection(connection), m_processName(std::move(processName))
{
    m_ownerMatch = m_connection.match<&StatusNotifierWatcher::ownerChanged>(
        {.sender = kBus, .interface = kBus, .member = "NameOwnerChanged", .firstArgument = kName}, *this);
    m_hostMatch = m_connection.match<&StatusNotifierWatcher::hostChanged>(
        {.sender = kName, .interface = kName, .member = "StatusNotifierHostRegistered"}, *this);
    m_hostGoneMatch = m_connection.match<&StatusNotifierWatcher::hostChanged>(
        {.sender = kName, .interface = kName, .member = "StatusNotifierHostUnregistered"}, *this);
    // After the match, so that no owner slips through between the two.
    m_ownerCall = m_connection.call<&StatusNotifierWatcher::ownerAnswered>(
        {kBus, kBusPath, kBus, "GetNameOwner"}, *this, kName);
}

void StatusNotifierWatcher::ownerChanged(std::string_view, std::string_view, std::string_view now)
{
    m_ownerCall.reset();
    meet(now);
}

void StatusNotifierWatcher::ownerAnswered(std::optional<std::string_view> owner)
{
    meet(owner.value_or(std::string_view()));
}

void StatusNotifierWatcher::meet(std::string_view owner)
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
    m_processCall = m_connection.call<&StatusNotifierWatcher::processAnswered>(
        {kBus, kBusPath, kBus, "GetConnectionUnixProcessID"}, *this, m_owner);
}

void StatusNotifierWatcher::processAnswered(std::optional<std::uint32_t> processId)
{
    if (processId)
        m_process = m_processName(*processId);
    askForHost();
}

void StatusNotifierWatcher::hostChanged()
{
    if (m_presence == Presence::WithHost || m_presence == Presence::WithoutHost)
        askForHost();
}

void StatusNotifierWatcher::askForHost()
{
    m_hostCall = m_connection.call<&StatusNotifierWatcher::hostAnswered>(
        {m_owner.c_str(), "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties", "Get"}, *this, kName,
        "IsStatusNotifierHostRegistered");
}

void StatusNotifierWatcher::hostAnswered(std::optional<BusVariant<bool>> hasHost)
{
    // A watcher that does not say so has a host: it is one itself.
    become(!hasHost || hasHost->value ? Presence::WithHost : Presence::WithoutHost);
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
