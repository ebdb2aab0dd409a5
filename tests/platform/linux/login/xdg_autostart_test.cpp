#include "platform/linux/login/xdg_autostart.h"

#include "tests/support/temporary_folder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace amperly {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class XdgAutostartTest : public testing::Test {
protected:
    void write(const std::string& text) const { config.write(kEntryPath, text); }

    static constexpr std::string_view kEntryPath = "autostart/org.example.Program.desktop";

    TemporaryFolder config;
    fs::path file = config / kEntryPath;
    std::vector<std::string> launched;
    std::string available;
    XdgAutostart item{{"org.example.Program", "Program", "/opt/a program"}, config.path().string(),
        [this](const std::string& program, const std::string& argument) {
            if (program != available)
                return false;
            launched.push_back(program + ' ' + argument);
            return true;
        }};
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
    EXPECT_THAT(contentsOf(file), HasSubstr("Exec=\"/opt/a program\"\n"));
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

TEST_F(XdgAutostartTest, AnEntryThatTheUserSwitchedOffDoesNotCount)
{
    write("[Desktop Entry]\nExec=x\nHidden=true\n");
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
    write("[Desktop Entry]\nExec=x\nX-GNOME-Autostart-enabled=false\n");
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
}

TEST_F(XdgAutostartTest, RegisteringSwitchesASwitchedOffEntryOnAgain)
{
    write("[Desktop Entry]\nExec=x\nHidden=true\n");
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
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

TEST_F(XdgAutostartTest, TheDesktopsOwnListIsOpenedWhereThereIsOne)
{
    available = "systemsettings";
    item.openSystemSettings();
    EXPECT_THAT(launched, testing::ElementsAre("systemsettings kcm_autostart"));
}

TEST_F(XdgAutostartTest, ElseTheFolderIsOpened)
{
    available = "xdg-open";
    item.openSystemSettings();
    EXPECT_THAT(launched, testing::ElementsAre("xdg-open " + config / "autostart"));
    EXPECT_TRUE(fs::is_directory(config / "autostart"));
}

} // namespace
} // namespace amperly
