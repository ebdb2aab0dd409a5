#include "platform/linux/preferences/file_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace amperly {

namespace {

constexpr std::chrono::milliseconds kPause{1};

} // namespace

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
            std::this_thread::sleep_for(kPause);
            continue;
        }
        // Any other refusal comes from a file system without locks, where writing unlocked is
        // the best that can be done.
        if (isTaken)
            m_error = std::make_error_code(std::errc::timed_out);
        return;
    }
}

FileLock::~FileLock()
{
    if (m_descriptor >= 0)
        close(m_descriptor); // which gives the lock back
}

} // namespace amperly
