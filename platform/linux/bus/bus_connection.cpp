#include "platform/linux/bus/bus_connection.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <poll.h>
#include <utility>

namespace amperly {

namespace {

constexpr std::uint64_t kNoTimeout = UINT64_MAX;

/// sd-bus states time limits on the monotonic clock.
std::uint64_t monotonicMicroseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000
        + static_cast<std::uint64_t>(now.tv_nsec) / 1000;
}

} // namespace

std::unique_ptr<BusConnection> BusConnection::open(const std::string& address)
{
    sd_bus* bus = nullptr;
    if (address.empty()) {
        if (sd_bus_open_user(&bus) < 0)
            return nullptr;
    } else {
        if (sd_bus_new(&bus) < 0)
            return nullptr;
        if (sd_bus_set_address(bus, address.c_str()) < 0 || sd_bus_set_bus_client(bus, 1) < 0
            || sd_bus_start(bus) < 0) {
            sd_bus_unref(bus);
            return nullptr;
        }
    }
    return std::unique_ptr<BusConnection>(new BusConnection(bus));
}

BusConnection::BusConnection(sd_bus* bus) : m_bus(bus)
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_context, [this] { process(); });
    settle();
}

BusConnection::~BusConnection()
{
    // The notifiers go before the descriptor that they watch.
    m_readable.reset();
    m_writable.reset();
    sd_bus_close_unref(m_bus);
}

void BusConnection::watch(int descriptor)
{
    if (m_readable && m_readable->socket() == descriptor)
        return;
    m_readable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    m_writable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
    QObject::connect(m_readable.get(), &QSocketNotifier::activated, &m_context, [this] { process(); });
    QObject::connect(m_writable.get(), &QSocketNotifier::activated, &m_context, [this] { process(); });
}

void BusConnection::settle()
{
    if (m_closed || m_processing)
        return;
    const int descriptor = sd_bus_get_fd(m_bus);
    const int events = descriptor < 0 ? descriptor : sd_bus_get_events(m_bus);
    std::uint64_t limit = kNoTimeout;
    if (events < 0 || sd_bus_get_timeout(m_bus, &limit) < 0) {
        noteClosed();
        return;
    }
    watch(descriptor);
    m_readable->setEnabled((events & POLLIN) != 0);
    m_writable->setEnabled((events & POLLOUT) != 0);
    if (limit == kNoTimeout) {
        m_timer.stop();
        return;
    }
    const std::uint64_t now = monotonicMicroseconds();
    // Rounded up: a timer that fires early would find nothing to do and start again at once.
    const std::uint64_t milliseconds = limit > now ? (limit - now) / 1000 + 1 : 0;
    m_timer.start(static_cast<int>(std::min<std::uint64_t>(milliseconds, 60'000)));
}

void BusConnection::process()
{
    if (m_closed || m_processing)
        return;
    m_processing = true;
    int result = 0;
    do
        result = sd_bus_process(m_bus, nullptr);
    while (result > 0);
    m_processing = false;
    if (result < 0)
        noteClosed();
    else
        settle();
}

void BusConnection::noteClosed()
{
    m_closed = true;
    m_timer.stop();
    m_readable.reset();
    m_writable.reset();
    sd_bus_close(m_bus);
    // Whoever just sent something is still at work; the news waits for the event loop.
    QMetaObject::invokeMethod(
        &m_context,
        [this] {
            if (m_closedHandler)
                std::exchange(m_closedHandler, nullptr)();
        },
        Qt::QueuedConnection);
}

BusMessage BusConnection::emptyCall(const BusMethod& method)
{
    sd_bus_message* call = nullptr;
    if (sd_bus_message_new_method_call(
            m_bus, &call, method.destination, method.path, method.interface, method.member)
        < 0)
        return nullptr;
    sd_bus_message_set_auto_start(call, method.startsService ? 1 : 0);
    return BusMessage(call);
}

BusMessage BusConnection::emptySignal(const char* path, const char* interface, const char* member)
{
    sd_bus_message* signal = nullptr;
    if (m_closed || sd_bus_message_new_signal(m_bus, &signal, path, interface, member) < 0)
        return nullptr;
    return BusMessage(signal);
}

BusSlot BusConnection::send(sd_bus_message* call, sd_bus_message_handler_t answered, void* self)
{
    sd_bus_slot* slot = nullptr;
    sd_bus_call_async(m_bus, &slot, call, answered, self, 0);
    settle();
    return BusSlot(slot);
}

BusSlot BusConnection::addMatch(const BusSignal& signal, sd_bus_message_handler_t arrived, void* self)
{
    std::string rule = "type='signal'";
    const auto require = [&rule](const char* key, const char* value) {
        if (value != nullptr)
            rule.append(",").append(key).append("='").append(value).append("'");
    };
    require("sender", signal.sender);
    require("path", signal.path);
    require("interface", signal.interface);
    require("member", signal.member);
    require("arg0", signal.firstArgument);
    require("arg1", signal.secondArgument);
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(m_bus, &slot, rule.c_str(), arrived, nullptr, self);
    return BusSlot(slot);
}

} // namespace amperly
