#include "platform/linux/preferences/preference_file.h"

#include "platform/linux/files/file_replacement.h"
#include "platform/linux/preferences/file_lock.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace amperly {

namespace {

using Contents = PreferenceFile::Contents;
using State = Contents::State;

/// Two hundred times what all preferences take. What is larger is something else.
constexpr std::size_t kLargestFile = 128 * 1024;

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

Contents notOpened(int reason)
{
    switch (reason) {
    case ENOENT:
    case ENOTDIR:
        return {.state = State::Missing, .bytes = {}, .error = {}};
    case EACCES:
    case EPERM:
    case ELOOP:
    case EIO:
        return {.state = State::Unreadable, .bytes = {}, .error = {}};
    default: // out of descriptors, out of memory
        return {.state = State::Untouchable, .bytes = {}, .error = {reason, std::generic_category()}};
    }
}

Contents readOpened(int descriptor)
{
    struct stat status { };
    if (fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode))
        return {.state = State::Unreadable, .bytes = {}, .error = {}};
    // Somebody who links the file to /dev/null wants nothing kept; the device must stay.
    if (!S_ISREG(status.st_mode))
        return {.state = State::Untouchable,
            .bytes = {},
            .error = std::make_error_code(std::errc::no_such_device)};
    Contents contents{
        .state = State::Readable, .bytes = {}, .permissions = status.st_mode & mode_t{0777}, .error = {}};
    std::array<char, 4096> block{};
    while (contents.bytes.size() <= kLargestFile) {
        const ssize_t count = ::read(descriptor, block.data(), block.size());
        if (count == 0)
            return contents;
        if (count > 0)
            contents.bytes.append(block.data(), static_cast<std::size_t>(count));
        else if (errno != EINTR)
            break;
    }
    return {.state = State::Unreadable, .bytes = {}, .permissions = contents.permissions, .error = {}};
}

Contents readFile(const std::string& path)
{
    // Not blocking: a named pipe at this place has no writer to wait for.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return notOpened(errno);
    Contents contents = readOpened(descriptor);
    close(descriptor);
    return contents;
}

/// Makes `folder` and what is missing above it, for this user alone as the XDG rules ask.
std::error_code makeFolder(const std::filesystem::path& folder)
{
    if (mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST)
        return {};
    if (errno != ENOENT || !folder.has_relative_path())
        return lastError();
    if (const std::error_code error = makeFolder(folder.parent_path()))
        return error;
    return mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST ? std::error_code() : lastError();
}

} // namespace

PreferenceFile::PreferenceFile(std::string path) : m_path(std::move(path)) { }

Contents PreferenceFile::read() const
{
    return readFile(m_path);
}

std::error_code PreferenceFile::change(const PreferenceChanges& changes, IniDocument& written) const
{
    const std::string target = behindLinks(m_path);
    if (const std::error_code error = makeFolder(std::filesystem::path(target).parent_path()))
        return error;
    const FileLock lock(target + ".lock");
    if (lock.error())
        return lock.error();

    const Contents before = readFile(target);
    if (before.state == State::Untouchable)
        return before.error;
    IniDocument document(before.bytes);
    const bool isDamaged = before.state == State::Unreadable || document.isDamaged();
    document.dropDamage();
    const std::string sound = document.bytes();
    for (const auto& [key, text] : changes) {
        if (text)
            document.set(key, *text);
        else
            document.remove(key);
    }

    const std::string after = document.bytes();
    if (after.size() > kLargestFile)
        return std::make_error_code(std::errc::file_too_large);
    if (after != sound) {
        FileReplacement replacement(target, before.permissions);
        replacement.write(after);
        if (isDamaged)
            replacement.keepOriginalAside();
        replacement.commit();
        if (replacement.error())
            return replacement.error();
    }
    written = std::move(document);
    return {};
}

std::string behindLinks(const std::string& path)
{
    constexpr int kMostLinks = 40; // the kernel's own limit
    std::filesystem::path place = path;
    for (int count = 0; count < kMostLinks; ++count) {
        std::error_code error;
        const std::filesystem::path next = std::filesystem::read_symlink(place, error);
        if (error)
            return place;
        place = place.parent_path() / next;
    }
    return path;
}

} // namespace amperly
