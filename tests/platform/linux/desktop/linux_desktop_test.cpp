#include "platform/linux/desktop/linux_desktop.h"
#include "tests/support/temporary_folder.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <cstdarg>
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <syslog.h>

namespace {

struct LogLine {
    int priority = 0;
    std::string text;
};
std::vector<LogLine> loggedLines;

void record(int priority, const char* format, va_list arguments)
{
    char text[512];
    std::vsnprintf(text, sizeof text, format, arguments);
    loggedLines.push_back({priority, text});
}

} // namespace

// In place of the C library's, so that the test neither needs a system log nor writes to one.
extern "C" void syslog(int priority, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    record(priority, format, arguments);
    va_end(arguments);
}

namespace amperly {
namespace {

using testing::ElementsAre;

class LinuxDesktopTest : public testing::Test {
protected:
    TemporaryFolder prefix;
    SingleInstance instance{{"org.example.Program", "/org/example/Program"}, "unix:path=/nonexistent/bus"};
    std::vector<CommandLine> launched;
    bool launches = true;

    void SetUp() override { loggedLines.clear(); }

    LinuxDesktop desktop(const std::filesystem::path& program = {}, std::optional<std::string> version = {})
    {
        return {instance, {prefix.path() / "bin", prefix.path() / program, std::move(version)},
            [this](const CommandLine& command) {
                launched.push_back(command);
                return launches;
            }};
    }
};

TEST_F(LinuxDesktopTest, AnAddressGoesToTheDesktopsOpenerAsOneArgument)
{
    desktop().openAddress("https://example.org/a b?c=d&e");
    EXPECT_THAT(launched, ElementsAre(ElementsAre("xdg-open", "https://example.org/a b?c=d&e")));
    EXPECT_TRUE(loggedLines.empty());
}

TEST_F(LinuxDesktopTest, WhatKeepsThePointerLeavesBeforeTheOpenerStarts)
{
    LinuxDesktop leaving = desktop();
    std::size_t launchedBefore = 1;
    leaving.onLeaving([&] { launchedBefore = launched.size(); });
    leaving.openAddress("https://example.org");
    EXPECT_EQ(launchedBefore, 0u);
    EXPECT_EQ(launched.size(), 1u);
}

TEST_F(LinuxDesktopTest, AMissingOpenerIsToldToWhoeverStartedTheProgramAndNotLogged)
{
    launches = false;
    testing::internal::CaptureStderr();
    desktop().openAddress("https://example.org");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Amperly: couldn't start xdg-open\n");
    EXPECT_TRUE(loggedLines.empty());
}

TEST_F(LinuxDesktopTest, ALineIsLoggedAsItIsWhateverIsInIt)
{
    desktop().log("Amperly: 100%s of %n");
    ASSERT_EQ(loggedLines.size(), 1u);
    EXPECT_EQ(loggedLines[0].text, "Amperly: 100%s of %n");
    EXPECT_EQ(loggedLines[0].priority, LOG_USER | LOG_WARNING);
}

TEST_F(LinuxDesktopTest, AProgramInTheFolderOfProgramsIsInstalled)
{
    prefix.write("bin/amperly", "");
    EXPECT_TRUE(desktop("bin/amperly").isInstalled());
}

TEST_F(LinuxDesktopTest, ALinkedFolderOfProgramsIsTheFolderItself)
{
    prefix.write("usr/bin/amperly", "");
    std::filesystem::create_directory_symlink("usr/bin", prefix.path() / "bin");
    EXPECT_TRUE(desktop("usr/bin/amperly").isInstalled());
}

TEST_F(LinuxDesktopTest, AProgramInABuildTreeIsNotInstalled)
{
    prefix.write("bin/other", "");
    prefix.write("build/app/amperly", "");
    prefix.write("binary/amperly", "");
    EXPECT_FALSE(desktop("build/app/amperly").isInstalled());
    EXPECT_FALSE(desktop("binary/amperly").isInstalled());
}

TEST_F(LinuxDesktopTest, AProgramThatWasRemovedWhileItRunsIsNotInstalled)
{
    prefix.write("bin/other", "");
    EXPECT_FALSE(desktop("bin/amperly (deleted)").isInstalled());
}

TEST_F(LinuxDesktopTest, ThisTestIsNotInstalled)
{
    EXPECT_FALSE(LinuxDesktop(instance, {}).isInstalled());
    EXPECT_EQ(Installation::runningProgram().filename(), "linux_desktop_test");
}

TEST_F(LinuxDesktopTest, TheVersionIsWhatTheInstallationStates)
{
    EXPECT_EQ(desktop({}, "1.2").shortVersion(), "1.2");
    EXPECT_EQ(desktop().shortVersion(), std::nullopt);
}

TEST_F(LinuxDesktopTest, TheVisibleHeightIsThatOfTheMainScreen)
{
    EXPECT_EQ(
        desktop().visibleScreenHeight(), QGuiApplication::primaryScreen()->availableGeometry().height());
}

TEST_F(LinuxDesktopTest, QuittingEndsTheEventLoop)
{
    LinuxDesktop ending = desktop();
    QTimer::singleShot(0, [&ending] { ending.quit(); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
}

TEST(LauncherTest, AStartedProgramGetsItsArgumentsAndOutlivesTheCall)
{
    const TemporaryFolder folder;
    const std::string pipePath = folder / "pipe";
    ASSERT_EQ(mkfifo(pipePath.c_str(), 0600), 0);
    ASSERT_TRUE(startDetached({"sh", "-c", "printf %s \"$1\" > \"$0\"", pipePath, "a 'b' \"c\""}));
    EXPECT_EQ(contentsOf(pipePath), "a 'b' \"c\""); // opening waits for the writer
}

TEST(LauncherTest, ProgramsAreLookedForInThePath)
{
    EXPECT_TRUE(isProgram("sh"));
    EXPECT_FALSE(isProgram("no-such-program-anywhere"));
}

TEST(LauncherTest, AProgramThatDoesNotExistCannotBeStarted)
{
    EXPECT_FALSE(startDetached({"/nonexistent/program"}));
    EXPECT_FALSE(startDetached({}));
}

} // namespace
} // namespace amperly
