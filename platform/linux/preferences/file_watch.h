// Tells when the file at a path may have changed, however that came about: written in place,
// replaced, linked elsewhere, together with its folder, or in a folder that is made only later.
// Folders are watched instead of files, since editors replace files. A file that is still open
// for writing is not announced. As long as nothing changes it costs nothing.
#pragma once

#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace amperly {

class FileWatch {
public:
    /// Calls `onChange` on the event loop of the thread that makes this object, which must have
    /// one. Several changes at once may be one call, and not every call means a change.
    FileWatch(std::string path, std::function<void()> onChange);
    ~FileWatch();
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

    /// False where the kernel grants no more watches; nothing is told then.
    [[nodiscard]] bool isWatching() const { return !m_watched.empty(); }

private:
    /// A path that something may appear at, or change.
    struct WatchedPath {
        int folder = -1; ///< the kernel's number for the folder that it lies in
        std::string path;
        bool isFile = true; ///< else the folder that must appear before the file can
    };

    void watch();
    void watchFor(const std::string& path, std::vector<WatchedPath>& watched) const;
    void readEvents();
    [[nodiscard]] bool isAboutUs(int folder, std::uint32_t mask, const char* name) const;

    std::string m_path;
    std::function<void()> m_onChange;
    int m_descriptor;
    std::vector<WatchedPath> m_watched;
    QSocketNotifier m_notifier;
};

} // namespace amperly
