#include "platform/linux/preferences/preference_file.h"

#include "platform/linux/files/user_file.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace amperly {

namespace {

/// Makes `folder` and what is missing above it, for this user alone as the XDG rules ask.
std::error_code makeFolder(const std::filesystem::path& folder)
{
    if (mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST)
        return {};
    if (errno != ENOENT || !folder.has_relative_path())
        return std::error_code(errno, std::generic_category());
    if (const std::error_code error = makeFolder(folder.parent_path()))
        return error;
    return mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST
        ? std::error_code()
        : std::error_code(errno, std::generic_category());
}

/// Where a symbolic link at `path` leads in the end, whether or not something is there; `path`
/// itself where it is no link.
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

/// An advisory lock between the processes that write one file. It lies on a file of its own
/// beside that one, because the other is replaced by each write, and stays there: who removed
/// it could take it from under the next.
class FileLock {
public:
    FileLock(const std::string& path, std::chrono::milliseconds longestWait);
    ~FileLock()
    {
        if (m_descriptor >= 0)
            close(m_descriptor); // which gives the lock back
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Why the lock could not be taken; no error where it is held, or where the file system
    /// knows no locks.
    [[nodiscard]] std::error_code error() const { return m_error; }

private:
    int m_descriptor;
    std::error_code m_error;
};

FileLock::FileLock(const std::string& path, std::chrono::milliseconds longestWait)
    : m_descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600))
{
    if (m_descriptor < 0) {
        m_error = {errno, std::generic_category()};
        return;
    }
    const auto deadline = std::chrono::steady_clock::now() + longestWait;
    while (flock(m_descriptor, LOCK_EX | LOCK_NB) != 0) {
        const int reason = errno;
        if (reason == EINTR)
            continue;
        const bool isTaken = reason == EWOULDBLOCK;
        if (isTaken && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            continue;
        }
        // Any other refusal comes from a file system without locks, where writing unlocked is
        // the best that can be done.
        if (isTaken)
            m_error = std::make_error_code(std::errc::timed_out);
        return;
    }
}

} // namespace

WrittenPreferences writePreferences(
    const std::string& path, const PreferenceChanges& changes, std::chrono::milliseconds longestWait)
{
    const std::string target = behindLinks(path);
    if (const std::error_code error = makeFolder(std::filesystem::path(target).parent_path()))
        return {.error = error};
    const FileLock lock(target + ".lock", longestWait);
    if (lock.error())
        return {.error = lock.error()};

    const UserFile before = readUserFile(target);
    if (before.state == UserFile::State::Untouchable)
        return {.error = before.error};
    WrittenPreferences written{.document = IniDocument(before.bytes)};
    const bool isDamaged = before.state == UserFile::State::Unreadable || written.document.isDamaged();
    written.document.dropDamage();
    const std::string sound = written.document.bytes();
    for (const auto& [key, text] : changes) {
        if (text)
            written.document.set(key, *text);
        else
            written.document.remove(key);
    }

    const std::string after = written.document.bytes();
    if (after.size() > kLargestUserFile)
        return {.error = std::make_error_code(std::errc::file_too_large)};
    if (after != sound)
        written.error
            = replaceUserFile(target, after, before.permissions, isDamaged ? &written.keptAs : nullptr);
    return written;
}

} // namespace amperly
