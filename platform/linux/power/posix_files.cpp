#include "platform/linux/power/posix_files.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <linux/netlink.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace amperly {

namespace {

constexpr off_t kSmallestPage = 4096;

/// Attributes of the kernel claim a page of text and occupy no disk. Everything else is a copy
/// or a mock of sysfs, where writers rename a new file over the old one.
bool isReplaceable(int descriptor)
{
    struct stat status { };
    return ::fstat(descriptor, &status) == 0 && (status.st_size < kSmallestPage || status.st_blocks != 0);
}

bool wasReplaced(int descriptor)
{
    struct stat status { };
    return ::fstat(descriptor, &status) == 0 && status.st_nlink == 0;
}

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

PosixFiles::~PosixFiles()
{
    if (m_socket >= 0)
        ::close(m_socket);
}

int PosixFiles::open(const char* path, Kind kind)
{
    const int kindFlags = kind == Kind::Directory ? O_DIRECTORY : 0;
    const int descriptor = ::open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK | kindFlags);
    if (descriptor < 0)
        return -errno;
    const std::size_t index = static_cast<std::size_t>(descriptor);
    if (index >= m_isReplaceable.size())
        m_isReplaceable.resize(index + 1);
    m_isReplaceable[index] = kind == Kind::Attribute && isReplaceable(descriptor);
    return descriptor;
}

std::ptrdiff_t PosixFiles::read(int handle, std::span<char> into)
{
    if (m_isReplaceable[static_cast<std::size_t>(handle)] && wasReplaced(handle))
        return -ESTALE;
    for (;;) {
        const ssize_t size = ::pread(handle, into.data(), into.size(), 0);
        if (size >= 0)
            return size;
        if (errno != EINTR)
            return -errno;
    }
}

bool PosixFiles::list(int directory, std::string& names)
{
    names.clear();
    if (::lseek(directory, 0, SEEK_SET) < 0)
        return false;
    // Not readdir(): it would keep 32 KB of heap for each directory that stays open.
    alignas(dirent64) std::array<char, 4096> buffer;
    for (;;) {
        const ssize_t size = ::getdents64(directory, buffer.data(), buffer.size());
        if (size <= 0)
            return size == 0;
        for (ssize_t offset = 0; offset < size;) {
            const auto* const entry = reinterpret_cast<const dirent64*>(buffer.data() + offset);
            const std::string_view name(&entry->d_name[0]);
            if (!name.starts_with('.')) {
                names.append(name);
                names.push_back('\0');
            }
            offset += entry->d_reclen;
        }
    }
}

void PosixFiles::close(int handle)
{
    ::close(handle);
}

void PosixFiles::listen()
{
    m_listening = Listening::Unavailable;
    m_socket = ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_KOBJECT_UEVENT);
    if (m_socket < 0)
        return;
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = kKernelGroup;
    if (::bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        m_listening = Listening::Yes;
}

bool PosixFiles::devicesChanged()
{
    if (m_listening == Listening::NotTried)
        listen();
    if (m_listening != Listening::Yes)
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
