#include "platform/linux/preferences/preference_file.h"

#include "platform/linux/files/user_file.h"
#include "platform/linux/preferences/file_lock.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>

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

} // namespace

WrittenPreferences writePreferences(const std::string& path, const PreferenceChanges& changes)
{
    const std::string target = behindLinks(path);
    if (const std::error_code error = makeFolder(std::filesystem::path(target).parent_path()))
        return {.error = error};
    const FileLock lock(target + ".lock");
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
