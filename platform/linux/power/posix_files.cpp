#include "platform/linux/power/posix_files.h"

#include <array>
#include <cerrno>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
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

} // namespace

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

} // namespace amperly
