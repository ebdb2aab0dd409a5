// One connection to the session bus, served by the toolkit's event loop on its own thread.
//
// Everything is asynchronous: a connection that was just opened takes calls, matches and exported
// objects at once and sends them when the bus has answered its greeting. A connection without
// traffic costs nothing; it only wakes the program for messages that are meant for it.
//
// Handlers run inside the dispatch of the connection they came in on. They may send, but must not
// destroy that connection nor run a nested event loop; whoever needs either postpones it.
#pragma once

#include "platform/linux/bus/bus_members.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

namespace amperly {

/// A method of somebody's. No text is kept.
struct BusMethod {
    const char* destination; ///< a name on the bus
    const char* path;
    const char* interface;
    const char* member;
    bool startsService = true; ///< whether a service that does not run is started to answer
};

/// Which signals are meant: null stands for any. No text is kept.
struct BusSignal {
    const char* sender = nullptr;
    const char* path = nullptr;
    const char* interface = nullptr;
    const char* member = nullptr;
    const char* firstArgument = nullptr; ///< a text
    const char* secondArgument = nullptr; ///< a text
};

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

    /// Calls `method` and, for as long as the slot is kept, the member `kAnswered` of `self` with the
    /// answer, as busAnswer() does. Null where nothing can be sent.
    template <auto kAnswered, typename Self, typename... Arguments>
    [[nodiscard]] BusSlot call(const BusMethod& method, Self& self, const Arguments&... arguments)
    {
        const BusMessage message = makeCall(method, arguments...);
        return message ? send(message.get(), busAnswer<kAnswered>, &self) : nullptr;
    }

    /// A call that is still to be sent; null where that cannot be.
    template <typename... Arguments>
    [[nodiscard]] BusMessage makeCall(const BusMethod& method, const Arguments&... arguments)
    {
        return filled(emptyCall(method), arguments...);
    }

    /// Calls the member `kArrived` of `self` for every such signal, as busSignal() does, for as long as
    /// the slot is kept. It takes effect with the next settle().
    template <auto kArrived, typename Self>
    [[nodiscard]] BusSlot match(const BusSignal& signal, Self& self)
    {
        return addMatch(signal, busSignal<kArrived>, &self);
    }

    /// Exports an interface of `self`, whose members `table` has, for as long as the slot is kept.
    template <typename Self>
    [[nodiscard]] BusSlot exportObject(
        const char* path, const char* interface, const sd_bus_vtable* table, Self& self)
    {
        sd_bus_slot* slot = nullptr;
        sd_bus_add_object_vtable(m_bus, &slot, path, interface, table, &self);
        return BusSlot(slot);
    }

    /// Sends a signal from an exported object.
    template <typename... Arguments>
    void emitSignal(
        const char* path, const char* interface, const char* member, const Arguments&... arguments)
    {
        if (const BusMessage signal = filled(emptySignal(path, interface, member), arguments...)) {
            sd_bus_send(m_bus, signal.get(), nullptr);
            settle();
        }
    }

    /// False once the bus has gone away; nothing is sent or received any more.
    [[nodiscard]] bool isOpen() const { return !m_closed; }

    /// Called once, from the event loop, after the bus has gone away. The handler may destroy
    /// the connection.
    void onClosed(std::function<void()> handler) { m_closedHandler = std::move(handler); }

private:
    explicit BusConnection(sd_bus* bus);

    [[nodiscard]] BusMessage emptyCall(const BusMethod& method);
    [[nodiscard]] BusMessage emptySignal(const char* path, const char* interface, const char* member);
    [[nodiscard]] BusSlot send(sd_bus_message* call, sd_bus_message_handler_t answered, void* self);
    [[nodiscard]] BusSlot addMatch(const BusSignal& signal, sd_bus_message_handler_t arrived, void* self);

    template <typename... Arguments>
    [[nodiscard]] static BusMessage filled(BusMessage message, const Arguments&... arguments)
    {
        BusWriter writer(message.get());
        if (message)
            (writer.write(arguments), ...);
        return writer.result() < 0 ? nullptr : std::move(message);
    }

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
