// One connection to the session bus, served by the toolkit's event loop on its own thread.
//
// Everything is asynchronous: a connection that was just opened takes calls, matches and exported
// objects at once and sends them when the bus has answered its greeting. A connection at rest
// costs nothing; it only wakes the program for messages that are meant for it.
//
// Handlers run inside the dispatch of the connection they came in on. They may send, but must not
// destroy that connection nor run a nested event loop; whoever needs either postpones it.
#pragma once

#include "platform/linux/bus/bus_handles.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

namespace amperly {

class BusConnection {
public:
    /// Opens a connection to the bus at `address` or, with an empty one, to the user's session
    /// bus. Null where there is no such bus.
    [[nodiscard]] static std::unique_ptr<BusConnection> open(const std::string& address = {});

    ~BusConnection();
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;

    /// For sd-bus operations. Whoever sends outside of a handler calls settle() afterwards.
    [[nodiscard]] sd_bus* bus() const { return m_bus; }

    /// Makes the event loop wait for exactly what the connection waits for now.
    void settle();

    /// Sends a signal without arguments from an exported object.
    void emitSignal(const char* path, const char* interface, const char* member);

    /// False once the bus has gone away; nothing is sent or received any more.
    [[nodiscard]] bool isOpen() const { return !m_closed; }

    /// Called once, from the event loop, after the bus has gone away. The handler may destroy
    /// the connection.
    void onClosed(std::function<void()> handler) { m_closedHandler = std::move(handler); }

private:
    explicit BusConnection(sd_bus* bus);
    void process();
    void watch(int descriptor);
    void noteClosed();

    sd_bus* m_bus;
    QObject m_context; ///< receiver of postponed work, which ends with the connection
    QTimer m_timer; ///< the nearest time limit of a pending call
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<QSocketNotifier> m_writable;
    std::function<void()> m_closedHandler;
    bool m_processing = false;
    bool m_closed = false;
};

} // namespace amperly
