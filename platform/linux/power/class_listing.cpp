#include "platform/linux/power/class_listing.h"

#include <utility>

namespace amperly {

ClassListing::ClassListing(SystemFiles& files, std::string path) : m_files(files), m_path(std::move(path)) { }

ClassListing::~ClassListing()
{
    close();
}

void ClassListing::close()
{
    if (m_directory >= 0)
        m_files.close(std::exchange(m_directory, -1));
}

bool ClassListing::changed()
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

std::vector<std::string> ClassListing::names() const
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
