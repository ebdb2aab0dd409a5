// One Amperly to a session. The first one owns the application's name on the session bus and
// answers there as desktops expect of an application; one started later asks it to come forward
// and ends.
#pragma once

#include "platform/linux/bus/bus_connection.h"

#include <functional>
#include <memory>
#include <string>

namespace amperly {

class SingleInstance {
public:
    /// What the program is called on the session bus.
    struct Name {
        std::string busName;
        std::string objectPath; ///< the same as a path
    };

    enum class Claim {
        Primary, ///< this process is the one
        HandedOver, ///< another one runs and was told; this process should end
        NoBus, ///< nobody can know; the program runs as if it were alone
    };

    /// `busAddress` as BusConnection::open() takes it.
    explicit SingleInstance(Name name, std::string busAddress = {});
    ~SingleInstance();

    /// Settles which process it is. Waits for the bus, so it is called once, at the start.
    [[nodiscard]] Claim claim();

    /// Called from the event loop each time the program is started again.
    void onActivated(std::function<void()> handler) { m_activated = std::move(handler); }

private:
    /// What a launcher says of itself.
    using PlatformData = BusEntries<std::string_view>;

    static const sd_bus_vtable kObject[];

    // The program has neither files to open nor actions of its own, but whoever calls means it.
    void activate(BusReply& reply, const PlatformData& data);
    void open(BusReply& reply, BusIgnored, const PlatformData& data) { activate(reply, data); }
    void activateAction(
        BusReply& reply, std::string_view action, BusIgnored parameters, const PlatformData& data);

    void tellTheOther();

    Name m_name;
    std::string m_busAddress;
    std::function<void()> m_activated;
    std::unique_ptr<BusConnection> m_connection;
    BusSlot m_object;
    QObject m_context;
};

} // namespace amperly
