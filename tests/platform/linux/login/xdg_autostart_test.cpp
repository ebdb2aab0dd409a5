#include "platform/linux/login/xdg_autostart.h"

#include "platform/linux/login/exec_value.h"
#include "tests/support/temporary_folder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>
#include <vector>

namespace amperly {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class XdgAutostartTest : public testing::Test {
protected:
    XdgAutostartTest()
    {
        programs.write("a \"program\" for $5 \\ 100%/amperly", "");
        fs::permissions(program, fs::perms::owner_all);
    }

    void write(const std::string& text) const { config.write(kEntryPath, text); }

    static constexpr std::string_view kEntryPath = "autostart/org.example.Program.desktop";

    TemporaryFolder config;
    TemporaryFolder programs;
    fs::path program = programs / "a \"program\" for $5 \\ 100%/amperly";
    fs::path file = config / kEntryPath;
    std::vector<std::string> launched;
    std::set<std::string> available;
    XdgAutostart item = itemOf("");

    XdgAutostart itemOf(std::string_view desktop)
    {
        return {{"org.example.Program", "Program", program.string()},
            {config.path().string(), CurrentDesktop(desktop)}, desktopPrograms()};
    }

    XdgAutostart::Programs desktopPrograms()
    {
        return {.isThere = [this](const std::string& name) { return available.contains(name); },
            .launch =
                [this](const std::string& name, const std::string& argument) {
                    if (!available.contains(name))
                        return false;
                    launched.push_back(name + ' ' + argument);
                    return true;
                }};
    }

    static constexpr const char* kHidden = "[Desktop Entry]\nExec=sh\nHidden=true\n";
    static constexpr const char* kDisabled = "[Desktop Entry]\nExec=sh\nX-GNOME-Autostart-enabled=false\n";
    static constexpr const char* kDisabledInMate
        = "[Desktop Entry]\nExec=sh\nX-MATE-Autostart-enabled=false\n";
};

TEST_F(XdgAutostartTest, NothingIsRegisteredAtFirst)
{
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
}

TEST_F(XdgAutostartTest, RegisteringWritesAnEntryThatStartsTheProgram)
{
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    EXPECT_THAT(contentsOf(file), HasSubstr("Type=Application\n"));
    EXPECT_THAT(contentsOf(file), HasSubstr("Exec=" + execValue(program.string()) + "\n"));
    EXPECT_THAT(namesIn(file.parent_path()), testing::ElementsAre(file.filename()))
        << "nothing unfinished is left beside it";
}

TEST_F(XdgAutostartTest, UnregisteringRemovesItAndMayBeRepeated)
{
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
}

TEST_F(XdgAutostartTest, AnEntryThatIsOffDoesNotCountWhereTheDesktopHasNoListOfItsOwn)
{
    available = {"xdg-open", "xfce4-session-settings"}; // another desktop's list
    for (const char* const off : {kHidden, kDisabled}) {
        write(off);
        EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered) << off;
        EXPECT_EQ(item.registerItem(), std::nullopt);
        EXPECT_EQ(item.status(), LoginItemStatus::Enabled) << off;
    }
}

TEST_F(XdgAutostartTest, AnEntryThatIsOffInTheDesktopsOwnListIsTheUsersToSwitchOn)
{
    available = {"xfce4-session-settings"};
    XdgAutostart inXfce = itemOf("XFCE");
    for (const char* const off : {kHidden, kDisabled}) {
        write(off);
        EXPECT_EQ(inXfce.status(), LoginItemStatus::RequiresApproval) << off;
        EXPECT_EQ(inXfce.registerItem(), std::nullopt);
        EXPECT_EQ(inXfce.status(), LoginItemStatus::RequiresApproval) << off;
        EXPECT_EQ(contentsOf(file), off);
    }
    write("[Desktop Entry]\nExec=sh\nHidden=false\nX-GNOME-Autostart-enabled=true\n");
    EXPECT_EQ(inXfce.status(), LoginItemStatus::Enabled);
}

TEST_F(XdgAutostartTest, AListThatIsNotInstalledIsNone)
{
    write(kHidden);
    EXPECT_EQ(itemOf("XFCE").status(), LoginItemStatus::NotRegistered);
}

TEST_F(XdgAutostartTest, TheListThatIsThereIsTheOneThatIsOpened)
{
    available = {"xfce4-session-settings"};
    write(kHidden);
    XdgAutostart inXfce = itemOf("XFCE");
    ASSERT_EQ(inXfce.status(), LoginItemStatus::RequiresApproval);
    inXfce.openSystemSettings();
    EXPECT_THAT(launched, testing::ElementsAre("xfce4-session-settings "));
}

TEST_F(XdgAutostartTest, OnlyMateMindsTheWayInWhichItsOwnListSwitchesOff)
{
    available = {"mate-session-properties", "xfce4-session-settings"};
    write(kDisabledInMate);
    EXPECT_EQ(itemOf("MATE").status(), LoginItemStatus::RequiresApproval);
    EXPECT_EQ(itemOf("XFCE").status(), LoginItemStatus::Enabled);
}

TEST_F(XdgAutostartTest, WithoutAnEntryTheFirstLaunchWritesOne)
{
    EXPECT_EQ(item.registerUnasked(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    EXPECT_THAT(contentsOf(file), HasSubstr("Exec=" + execValue(program.string()) + "\n"));
}

TEST_F(XdgAutostartTest, TheFirstLaunchLeavesAnyEntryAloneThatIsThere)
{
    for (const char* const there :
        {kHidden, kDisabled, "[Desktop Entry]\nExec=/nowhere/amperly\n", "[Desktop Entry]\nExec=sh\n", ""}) {
        write(there);
        EXPECT_EQ(item.registerUnasked(), std::nullopt);
        EXPECT_EQ(contentsOf(file), there);
    }
}

TEST_F(XdgAutostartTest, AFailureSaysWhatAndWhy)
{
    config.write("autostart", "a file where the folder should be");
    const LoginItem::Failure failure = item.registerItem();
    ASSERT_TRUE(failure.has_value());
    EXPECT_THAT(*failure, HasSubstr(config / "autostart"));
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
}

TEST_F(XdgAutostartTest, AnEntryThatCannotBeReplacedIsAFailureAndLeavesNothingBehind)
{
    fs::create_directories(file / "a folder in its place");
    const LoginItem::Failure failure = item.registerItem();
    ASSERT_TRUE(failure.has_value());
    EXPECT_THAT(*failure, HasSubstr("Couldn't write " + file.string() + ": "));
    EXPECT_THAT(namesIn(file.parent_path()), testing::ElementsAre(file.filename()));
    EXPECT_THAT(item.unregisterItem().value_or(""), HasSubstr("Couldn't remove " + file.string() + ": "));
}

TEST_F(XdgAutostartTest, WhatIsNoFileIsNoEntry)
{
    fs::create_directories(file);
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered) << "a folder";
    fs::remove(file);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered) << "a pipe";
    fs::remove(file);
    fs::create_symlink("/dev/zero", file);
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered) << "an endless device";
}

TEST_F(XdgAutostartTest, AnEntryWhoseProgramIsGoneIsNotFoundUntilItIsWrittenAnew)
{
    write("[Desktop Entry]\nExec=/nowhere/amperly\n");
    EXPECT_EQ(item.status(), LoginItemStatus::NotFound);
    write("[Desktop Entry]\nName=without a program\n");
    EXPECT_EQ(item.status(), LoginItemStatus::NotFound);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    fs::remove(program);
    EXPECT_EQ(item.status(), LoginItemStatus::NotFound);
}

TEST_F(XdgAutostartTest, AnEntryThatStartsAnotherInstallationCounts)
{
    write("[Desktop Entry]\nExec=amperly --from-the-path\n");
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    write("[Desktop Entry]\nExec=/bin/sh -c amperly\n");
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
}

TEST_F(XdgAutostartTest, TheCurrentDesktopsOwnListIsOpenedWhereSeveralAreInstalled)
{
    available = {"systemsettings", "xfce4-session-settings", "gnome-session-properties"};
    itemOf("KDE").openSystemSettings();
    itemOf("Debian:XFCE").openSystemSettings();
    itemOf("GNOME").openSystemSettings();
    EXPECT_THAT(launched,
        testing::ElementsAre(
            "systemsettings kcm_autostart", "xfce4-session-settings ", "gnome-session-properties "));
}

TEST_F(XdgAutostartTest, ElseTheFolderIsOpened)
{
    available = {"xdg-open", "xfce4-session-settings"};
    item.openSystemSettings();
    EXPECT_THAT(launched, testing::ElementsAre("xdg-open " + config / "autostart"));
    EXPECT_TRUE(fs::is_directory(config / "autostart"));
}

} // namespace
} // namespace amperly
