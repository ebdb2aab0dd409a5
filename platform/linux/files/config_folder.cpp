#include "platform/linux/files/config_folder.h"

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

} // namespace amperly
