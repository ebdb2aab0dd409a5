#include "platform/linux/files/xdg_session.h"

#include <algorithm>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace amperly {

namespace {

std::string homeFolder()
{
    if (const char* const home = std::getenv("HOME"); home != nullptr && *home == '/')
        return home;
    const passwd* const user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

} // namespace

std::string configFolder()
{
    if (const char* const configured = std::getenv("XDG_CONFIG_HOME");
        configured != nullptr && *configured == '/')
        return configured;
    return homeFolder() + "/.config";
}

CurrentDesktop::CurrentDesktop(std::string_view list)
{
    while (!list.empty()) {
        const std::size_t length = std::min(list.find(':'), list.size());
        if (length > 0)
            m_names.emplace_back(list.substr(0, length));
        list.remove_prefix(std::min(length + 1, list.size()));
    }
}

CurrentDesktop CurrentDesktop::ofSession()
{
    const char* const list = std::getenv("XDG_CURRENT_DESKTOP");
    return CurrentDesktop(list != nullptr ? list : "");
}

bool CurrentDesktop::is(std::string_view name) const
{
    return std::find(m_names.begin(), m_names.end(), name) != m_names.end();
}

} // namespace amperly
