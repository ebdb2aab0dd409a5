// The one on the bus who collects status items, followed through its comings and goings, and
// the process that it lives in, from which the kind of panel is known.
#pragma once

#include "platform/linux/bus/bus_connection.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace amperly {

class StatusNotifierWatcher {
public:
    enum class Presence {
        Unknown, ///< not asked yet, or its answers are on their way
        Absent,
        WithoutHost, ///< it takes items, but nobody shows them
        WithHost,
    };

    /// The name of a process, cut at 15 characters; empty where it cannot be read.
    using ProcessName = std::function<std::string(std::uint32_t processId)>;

    /// Looks for the watcher and follows it on `connection`, which must outlive this object.
    StatusNotifierWatcher(BusConnection& connection, ProcessName processName);
    StatusNotifierWatcher(const StatusNotifierWatcher&) = delete;
    StatusNotifierWatcher& operator=(const StatusNotifierWatcher&) = delete;

    /// Called after every change of what follows, inside the connection's dispatch.
    void onChanged(std::function<void()> handler) { m_changed = std::move(handler); }

    [[nodiscard]] Presence presence() const { return m_presence; }

    /// Its unique name on the bus; empty without a watcher. A restarted one has another.
    [[nodiscard]] const std::string& owner() const { return m_owner; }

    /// The name of its process; empty if unknown.
    [[nodiscard]] const std::string& process() const { return m_process; }

private:
    void ownerChanged(std::string_view name, std::string_view before, std::string_view now);
    void ownerAnswered(std::optional<std::string_view> owner);
    void processAnswered(std::optional<std::uint32_t> processId);
    void hostChanged();
    void hostAnswered(std::optional<BusVariant<bool>> hasHost);

    void meet(std::string_view owner);
    void askForHost();
    void become(Presence presence);

    BusConnection& m_connection;
    ProcessName m_processName;
    std::function<void()> m_changed;
    Presence m_presence = Presence::Unknown;
    std::string m_owner;
    std::string m_process;
    BusSlot m_ownerMatch;
    BusSlot m_hostMatch;
    BusSlot m_hostGoneMatch;
    BusSlot m_ownerCall;
    BusSlot m_processCall;
    BusSlot m_hostCall;
};

/// The name of a process of this machine.
[[nodiscard]] std::string processNameFromProc(std::uint32_t processId);

} // namespace amperly
