// An advisory lock between the processes that write one file. It lies on a file of its own
// beside that one, because the other is replaced by each write, and stays there: who removed
// it could take it from under the next.
#pragma once

#include <chrono>
#include <string>
#include <system_error>

namespace amperly {

class FileLock {
public:
    /// Takes the lock at `path`. Others keep it for milliseconds, on a disk that is very busy for
    /// seconds; one that keeps it for longer than `longestWait` has been stopped, and is not
    /// waited for.
    explicit FileLock(
        const std::string& path, std::chrono::milliseconds longestWait = std::chrono::seconds(5));
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Why the lock could not be taken; no error where it is held, or where the file system
    /// knows no locks.
    [[nodiscard]] std::error_code error() const { return m_error; }

private:
    int m_descriptor = -1;
    std::error_code m_error;
};

} // namespace amperly
