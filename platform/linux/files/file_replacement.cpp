#include "platform/linux/files/file_replacement.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace amperly {

FileReplacement::FileReplacement(std::string target, mode_t permissions)
    : m_target(std::move(target))
    , m_path(m_target + ".XXXXXX")
    , m_descriptor(mkostemp(m_path.data(), O_CLOEXEC))
{
    if (m_descriptor < 0) {
        fail(errno);
        m_path.clear();
    } else if (fchmod(m_descriptor, permissions) != 0) {
        fail(errno);
    }
}

FileReplacement::~FileReplacement()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
    if (!m_path.empty())
        unlink(m_path.c_str());
}

void FileReplacement::write(std::string_view bytes)
{
    while (!m_error && !bytes.empty()) {
        const ssize_t count = ::write(m_descriptor, bytes.data(), bytes.size());
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            fail(count == 0 ? ENOSPC : errno);
    }
    // Some file systems report a full disk only here, and without this step the name may reach
    // the disk before the contents do. Where there is nothing to synchronise with it is refused.
    if (!m_error && fsync(m_descriptor) != 0 && errno != EINVAL)
        fail(errno);
}

void FileReplacement::keepOriginalAside()
{
    constexpr int kMostKept = 1000;
    std::string name = m_target + ".damaged";
    int reason = m_error ? 0 : tryKeepingAs(name);
    for (int number = 1; reason == EEXIST && number < kMostKept; ++number) {
        name = m_target + ".damaged." + std::to_string(number);
        reason = tryKeepingAs(name);
    }
    if (reason != 0)
        fail(reason);
}

void FileReplacement::commit()
{
    if (m_error)
        return;
    if (rename(m_path.c_str(), m_target.c_str()) != 0)
        fail(errno);
    else
        m_path.clear();
}

void FileReplacement::fail(int reason)
{
    m_error = {reason, std::generic_category()};
}

/// A second name keeps the original without a moment in which there is no file at the target.
/// Folders, foreign files and some file systems take none; those are renamed.
int FileReplacement::tryKeepingAs(const std::string& name) const
{
    if (link(m_target.c_str(), name.c_str()) == 0)
        return 0;
    if (errno == EEXIST)
        return EEXIST;
    if (renameat2(AT_FDCWD, m_target.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    struct stat status { };
    if (lstat(name.c_str(), &status) == 0)
        return EEXIST;
    return rename(m_target.c_str(), name.c_str()) == 0 ? 0 : errno;
}

} // namespace amperly
