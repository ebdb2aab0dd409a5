#include "platform/linux/files/user_file.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace amperly {

namespace {

using State = UserFile::State;

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

UserFile notOpened(std::error_code reason)
{
    UserFile file;
    switch (reason.value()) {
    case ENOENT:
    case ENOTDIR:
        break;
    case EACCES:
    case EPERM:
    case ELOOP:
    case EIO:
        file.state = State::Unreadable;
        break;
    default: // out of descriptors, out of memory
        file.state = State::Untouchable;
        file.error = reason;
    }
    return file;
}

UserFile readOpened(int descriptor)
{
    UserFile file;
    file.state = State::Unreadable;
    struct stat status { };
    if (fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode))
        return file;
    // Somebody who links the file to /dev/null wants nothing kept; the device must stay.
    if (!S_ISREG(status.st_mode)) {
        file.state = State::Untouchable;
        file.error = std::make_error_code(std::errc::no_such_device);
        return file;
    }
    file.permissions = status.st_mode & mode_t{0777};
    std::array<char, 4096> block{};
    std::string bytes;
    while (bytes.size() <= kLargestUserFile) {
        const ssize_t count = read(descriptor, block.data(), block.size());
        if (count == 0) {
            file.state = State::Readable;
            file.bytes = std::move(bytes);
            break;
        }
        if (count > 0)
            bytes.append(block.data(), static_cast<std::size_t>(count));
        else if (errno != EINTR)
            break;
    }
    return file;
}

std::error_code writeToDisk(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (count == 0)
            return std::make_error_code(std::errc::no_space_on_device);
        else if (errno != EINTR)
            return lastError();
    }
    // Some file systems report a full disk only here, and without this step the name may reach
    // the disk before the contents do. Where there is nothing to synchronise with it is refused.
    return fsync(descriptor) != 0 && errno != EINVAL ? lastError() : std::error_code();
}

/// A second name keeps the original without a moment in which there is no file at `path`.
/// Folders, foreign files and some file systems take none; those are renamed. Returns an error
/// number, 0 for none.
int tryKeepingAs(const std::string& path, const std::string& name)
{
    if (link(path.c_str(), name.c_str()) == 0)
        return 0;
    if (errno == EEXIST)
        return EEXIST;
    if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    struct stat status { };
    if (lstat(name.c_str(), &status) == 0)
        return EEXIST;
    return rename(path.c_str(), name.c_str()) == 0 ? 0 : errno;
}

std::error_code keepAside(const std::string& path, std::string& keptAs)
{
    constexpr int kMostKept = 1000;
    keptAs = path + ".damaged";
    int reason = tryKeepingAs(path, keptAs);
    for (int number = 1; reason == EEXIST && number < kMostKept; ++number) {
        keptAs = path + ".damaged." + std::to_string(number);
        reason = tryKeepingAs(path, keptAs);
    }
    return {reason, std::generic_category()};
}

} // namespace

UserFile readUserFile(const std::string& path)
{
    // Not blocking: a named pipe at this place has no writer to wait for.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return notOpened(lastError());
    UserFile file = readOpened(descriptor);
    close(descriptor);
    return file;
}

std::error_code replaceUserFile(
    const std::string& path, std::string_view bytes, mode_t permissions, std::string* keptAs)
{
    std::string unfinished = path + ".XXXXXX";
    const int descriptor = mkostemp(unfinished.data(), O_CLOEXEC);
    if (descriptor < 0)
        return lastError();
    std::error_code error
        = fchmod(descriptor, permissions) != 0 ? lastError() : writeToDisk(descriptor, bytes);
    close(descriptor);
    if (!error && keptAs != nullptr)
        error = keepAside(path, *keptAs);
    if (!error && rename(unfinished.c_str(), path.c_str()) != 0)
        error = lastError();
    if (error)
        unlink(unfinished.c_str());
    return error;
}

} // namespace amperly
