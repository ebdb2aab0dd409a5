#include "platform/linux/power/kernel_events.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <string_view>

#include <linux/netlink.h>
#include <sys/socket.h>
#include <unistd.h>

namespace amperly {

namespace {

constexpr unsigned kKernelGroup = 1; ///< the kernel's messages; 2 would be a device daemon's

/// A message begins with "add@/devices/…/power_supply/BAT0" and a NUL.
bool isComingOrGoing(std::string_view message)
{
    const std::string_view header = message.substr(0, message.find('\0'));
    if (!header.starts_with("add@") && !header.starts_with("remove@"))
        return false;
    for (const std::string_view folder : {"/power_supply/", "/hwmon/", "/powercap/"}) {
        if (header.find(folder) != std::string_view::npos)
            return true;
    }
    return false;
}

} // namespace

KernelEvents::~KernelEvents()
{
    if (m_socket >= 0)
        ::close(m_socket);
}

void KernelEvents::listen()
{
    m_state = State::Unavailable;
    m_socket = ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_KOBJECT_UEVENT);
    if (m_socket < 0)
        return;
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = kKernelGroup;
    if (::bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        m_state = State::Listening;
}

bool KernelEvents::devicesChanged()
{
    if (m_state == State::NotStarted)
        listen();
    if (m_state != State::Listening)
        return false;

    bool changed = false;
    std::array<char, 1024> message{}; // a device's path with room to spare; the rest is cut off
    for (;;) {
        const ssize_t size = ::recv(m_socket, message.data(), message.size(), MSG_DONTWAIT);
        if (size >= 0) {
            changed = isComingOrGoing({message.data(), static_cast<std::size_t>(size)}) || changed;
        } else if (errno == ENOBUFS) {
            changed = true; // more was announced than the socket could keep
        } else if (errno != EINTR) {
            return changed;
        }
    }
}

} // namespace amperly
