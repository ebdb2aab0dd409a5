#include "platform/linux/power/sysfs.h"

#include "platform/linux/trimmed.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <utility>

namespace amperly {

namespace {

constexpr std::uint16_t kMostTurnsToSkip = 256; ///< some nine minutes at two seconds each

} // namespace

std::optional<std::int64_t> parseNumber(std::string_view text)
{
    text = trimmed(text, kSysfsBlanks);
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end)
        return std::nullopt;
    return number;
}

std::string readOnce(SystemFiles& files, const std::string& path)
{
    std::array<char, 256> buffer;
    return std::string(KeptFile(files, path).read(buffer).text);
}

bool Backoff::isDue()
{
    if (m_turnsToSkip == 0)
        return true;
    --m_turnsToSkip;
    return false;
}

void Backoff::failed()
{
    m_turnsToSkip = m_nextTurnsToSkip;
    m_nextTurnsToSkip
        = std::min<std::uint16_t>(static_cast<std::uint16_t>(m_nextTurnsToSkip * 2), kMostTurnsToSkip);
}

KeptFile::KeptFile(SystemFiles& files, const std::string& path)
    : m_files(&files), m_handle(files.open(path.c_str(), SystemFiles::Kind::Attribute))
{
}

KeptFile::~KeptFile()
{
    if (isOpen())
        m_files->close(m_handle);
}

KeptFile::KeptFile(KeptFile&& other) noexcept
    : m_files(other.m_files), m_handle(std::exchange(other.m_handle, -1)), m_backoff(other.m_backoff)
{
}

KeptFile& KeptFile::operator=(KeptFile&& other) noexcept
{
    std::swap(m_files, other.m_files);
    std::swap(m_handle, other.m_handle);
    std::swap(m_backoff, other.m_backoff);
    return *this;
}

KeptFile::Reading KeptFile::read(std::span<char> buffer)
{
    if (!isOpen())
        return {Outcome::NotThere};
    if (!m_backoff.isDue())
        return {Outcome::Skipped};

    const std::ptrdiff_t size = m_files->read(m_handle, buffer);
    switch (-size) {
    case ENODEV:
        return {Outcome::NoDevice};
    case ENODATA:
    case EAGAIN: // from co-processors that have not started yet
        return {Outcome::Unknown};
    case ESTALE:
        return {Outcome::Replaced};
    default:
        break;
    }
    const std::string_view text = size > 0
        ? trimmed({buffer.data(), static_cast<std::size_t>(size)}, kSysfsBlanks)
        : std::string_view();
    if (text.empty()) {
        m_backoff.failed();
        return {Outcome::Failed};
    }
    m_backoff.succeeded();
    return {Outcome::Read, text};
}

KeptFolder::KeptFolder(SystemFiles& files, std::string path) : m_files(files), m_path(std::move(path)) { }

KeptFolder::~KeptFolder()
{
    close();
}

void KeptFolder::close()
{
    if (m_directory >= 0)
        m_files.close(std::exchange(m_directory, -1));
}

bool KeptFolder::changed()
{
    if (m_directory < 0)
        m_directory = m_files.open(m_path.c_str(), SystemFiles::Kind::Directory);
    if (m_directory < 0 || !m_files.list(m_directory, m_newNames))
        m_newNames.clear();
    // An empty folder may be one that was removed and made anew since it was opened.
    if (m_newNames.empty())
        close();
    if (m_newNames == m_names)
        return false;
    std::swap(m_names, m_newNames);
    return true;
}

std::vector<std::string> KeptFolder::names() const
{
    std::vector<std::string> names;
    std::size_t start = 0;
    for (std::size_t end = m_names.find('\0'); end != std::string::npos; end = m_names.find('\0', start)) {
        names.push_back(m_names.substr(start, end - start));
        start = end + 1;
    }
    return names;
}

} // namespace amperly
