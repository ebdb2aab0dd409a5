#include "platform/linux/files/xdg_session.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>

namespace amperly {
namespace {

/// Sets one environment variable, or none with null, for as long as it lives.
class Environment {
public:
    Environment(const char* name, const char* value) : m_name(name)
    {
        if (const char* const before = std::getenv(name))
            m_before = before;
        put(value);
    }
    ~Environment() { put(m_before ? m_before->c_str() : nullptr); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    void put(const char* value) const
    {
        if (value != nullptr)
            setenv(m_name, value, 1);
        else
            unsetenv(m_name);
    }

    const char* m_name;
    std::optional<std::string> m_before;
};

TEST(ConfigFolderTest, IsTheOneInTheEnvironmentIfThatIsAbsolute)
{
    const Environment home("HOME", "/home/somebody");
    {
        const Environment config("XDG_CONFIG_HOME", "/elsewhere");
        EXPECT_EQ(configFolder(), "/elsewhere");
    }
    for (const char* const unusable : {static_cast<const char*>(nullptr), "", "relative/folder"}) {
        const Environment config("XDG_CONFIG_HOME", unusable);
        EXPECT_EQ(configFolder(), "/home/somebody/.config");
    }
}

TEST(ConfigFolderTest, HomeFolderIsKnownWithoutTheEnvironment)
{
    const Environment config("XDG_CONFIG_HOME", nullptr);
    const Environment home("HOME", nullptr);
    EXPECT_TRUE(configFolder().starts_with('/'));
    EXPECT_TRUE(configFolder().ends_with("/.config"));
}

TEST(CurrentDesktopTest, ListIsSplitAtColons)
{
    const CurrentDesktop desktop("ubuntu:GNOME");
    EXPECT_TRUE(desktop.is("ubuntu"));
    EXPECT_TRUE(desktop.is("GNOME"));
    EXPECT_FALSE(desktop.is("ubuntu:GNOME"));
    EXPECT_FALSE(desktop.is("GNOM"));
    EXPECT_EQ(desktop.names().front(), "ubuntu");
    EXPECT_EQ(CurrentDesktop("::XFCE:").names(), std::vector<std::string>{"XFCE"});
}

TEST(CurrentDesktopTest, SessionThatDoesNotSayHasNoNames)
{
    for (const char* const silent : {static_cast<const char*>(nullptr), ""}) {
        const Environment variable("XDG_CURRENT_DESKTOP", silent);
        EXPECT_TRUE(CurrentDesktop::ofSession().names().empty());
    }
    const Environment variable("XDG_CURRENT_DESKTOP", "KDE");
    EXPECT_TRUE(CurrentDesktop::ofSession().is("KDE"));
}

} // namespace
} // namespace amperly
