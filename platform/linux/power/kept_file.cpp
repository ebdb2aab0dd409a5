#include "platform/linux/power/kept_file.h"

#include "platform/linux/trimmed.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <utility>

namespace amperly {

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
        return {Outcome::Resting};

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

} // namespace amperly
