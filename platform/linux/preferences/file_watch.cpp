#include "platform/linux/preferences/file_watch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <sys/inotify.h>
#include <unistd.h>

namespace amperly {

namespace {

constexpr std::uint32_t kFolderItself = IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR | IN_MASK_ADD;
constexpr std::uint32_t kArrival = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t kAnyChange = kArrival | IN_CLOSE_WRITE | IN_ATTRIB | IN_MOVED_FROM | IN_DELETE;

bool isLink(const std::filesystem::path& path)
{
    std::error_code error;
    return std::filesystem::is_symlink(path, error);
}

bool isFolder(const std::filesystem::path& path)
{
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

} // namespace

FileWatch::FileWatch(std::string path, std::function<void()> onChange)
    : m_path(std::move(path))
    , m_onChange(std::move(onChange))
    , m_descriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
    , m_notifier(QSocketNotifier::Read)
{
    if (m_descriptor < 0)
        return;
    watch();
    m_notifier.setSocket(m_descriptor);
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { readEvents(); });
    m_notifier.setEnabled(true);
}

FileWatch::~FileWatch()
{
    m_notifier.setEnabled(false);
    if (m_descriptor >= 0)
        close(m_descriptor);
}

/// Watches for the file and, where it is a link, for every place that it leads through. The
/// kernel gives a folder that it already watches the same number again, so nothing that happens
/// meanwhile is lost.
void FileWatch::watch()
{
    constexpr int kMostLinks = 40; // the kernel's own limit
    std::vector<WatchedPath> watched;
    std::filesystem::path place = m_path;
    for (int count = 0; count < kMostLinks; ++count) {
        watchFor(place, watched);
        std::error_code error;
        const std::filesystem::path next = std::filesystem::read_symlink(place, error);
        if (error)
            break;
        place = place.parent_path() / next;
    }
    const auto isWatched = [](const std::vector<WatchedPath>& in, int folder) {
        return std::any_of(
            in.begin(), in.end(), [&](const WatchedPath& candidate) { return candidate.folder == folder; });
    };
    for (const WatchedPath& old : m_watched) {
        if (!isWatched(watched, old.folder))
            inotify_rm_watch(m_descriptor, old.folder); // fails for a folder that is gone
    }
    m_watched = std::move(watched);
}

/// Watches the folder of `path` or, as long as it is missing, the nearest one above it.
void FileWatch::watchFor(const std::string& path, std::vector<WatchedPath>& watched) const
{
    constexpr int kMostLooks = 64; // far more steps up, or folders made meanwhile, than there ever are
    std::filesystem::path awaited = path;
    bool isFile = true;
    for (int look = 0; look < kMostLooks && awaited.has_relative_path(); ++look) {
        const std::filesystem::path folder = awaited.parent_path();
        const std::uint32_t mask = kFolderItself | (isFile ? kAnyChange : kArrival);
        const int number = inotify_add_watch(m_descriptor, folder.c_str(), mask);
        if (number >= 0) {
            watched.push_back({.folder = number, .path = awaited, .isFile = isFile});
            if (isFile || !isFolder(awaited))
                return;
            // The folder came between the look at it and the watch above it.
            awaited = path;
            isFile = true;
        } else if (errno == ENOENT || errno == ENOTDIR) {
            awaited = folder;
            isFile = false;
        } else {
            return;
        }
    }
}

void FileWatch::readEvents()
{
    alignas(inotify_event) std::array<char, 4096> buffer;
    bool hasChanged = false;
    for (ssize_t length = 0; (length = read(m_descriptor, buffer.data(), buffer.size())) > 0;) {
        const auto end = static_cast<std::size_t>(length);
        for (std::size_t offset = 0; offset < end;) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + offset, sizeof event);
            const char* const name = event.len > 0 ? buffer.data() + offset + sizeof event : "";
            hasChanged = hasChanged || isAboutUs(event.wd, event.mask, name);
            offset += sizeof event + event.len;
        }
    }
    if (!hasChanged)
        return;
    watch(); // the file may be a link now, or its folder another one
    m_onChange();
}

bool FileWatch::isAboutUs(int folder, std::uint32_t mask, const char* name) const
{
    if ((mask & IN_Q_OVERFLOW) != 0)
        return true;
    const bool isFolderItself = (mask & (IN_DELETE_SELF | IN_MOVE_SELF)) != 0;
    return std::any_of(m_watched.begin(), m_watched.end(), [&](const WatchedPath& place) {
        if (place.folder != folder)
            return false;
        if (isFolderItself)
            return true;
        if (std::filesystem::path(place.path).filename() != name)
            return false;
        // A file that has just been made is empty until its writer closes it; a link is whole.
        const bool isNew = place.isFile && (mask & IN_CREATE) != 0 && (mask & IN_ISDIR) == 0;
        return !isNew || isLink(place.path);
    });
}

} // namespace amperly
