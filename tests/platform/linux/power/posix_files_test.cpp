#include "platform/linux/power/posix_files.h"

#include "platform/linux/power/linux_power_source.h"
#include "tests/platform/linux/power/known_flows.h"
#include "tests/platform/linux/power/sysfs_folder.h"

#include <array>
#include <cerrno>
#include <gtest/gtest.h>

namespace amperly {
namespace {

class PosixFilesTest : public testing::Test {
protected:
    PosixFilesTest()
    {
        folder.addSupply("AC", {{"type", "Mains"}, {"online", "0"}});
        folder.addSupply("BAT0", withCapacity("50"));
    }
    static AttributeList withCapacity(const std::string& percent)
    {
        return {
            {"type", "Battery"}, {"status", "Discharging"}, {"power_now", "7250000"}, {"capacity", percent}};
    }

    SysfsFolder folder;
    PosixFiles files;
    LinuxPowerSource source{files, folder.root()};
};

TEST_F(PosixFilesTest, FilesOnDiskAreRead)
{
    const std::optional<PowerSample> sample = source.read();
    EXPECT_EQ(load(sample), 7.25);
    EXPECT_EQ(sample->batteryPercent, 50);
}

TEST_F(PosixFilesTest, TextWrittenIntoAFileShowsAtTheNextReading)
{
    static_cast<void>(source.read());
    folder.write("class/power_supply/BAT0/uevent", ueventText("BAT0", withCapacity("49")));
    EXPECT_EQ(source.read()->batteryPercent, 49);
}

TEST_F(PosixFilesTest, FileReplacedByAnotherShowsAtTheNextReading)
{
    static_cast<void>(source.read());
    for (const char* percent : {"49", "48", "47"})
        folder.replace("class/power_supply/BAT0/uevent", ueventText("BAT0", withCapacity(percent)));
    EXPECT_EQ(source.read()->batteryPercent, 47);
}

TEST_F(PosixFilesTest, FolderThatVanishesIsABatteryThatIsGone)
{
    static_cast<void>(source.read());
    std::filesystem::remove_all(folder.supply("BAT0"));
    EXPECT_EQ(source.read()->batteryPercent, std::nullopt);
}

TEST_F(PosixFilesTest, FolderThatAppearsIsABatteryWithinFiveReadings)
{
    static_cast<void>(source.read());
    folder.addSupply("BAT1", withCapacity("90"));
    for (int turn = 0; turn < 5; ++turn)
        static_cast<void>(source.read());
    EXPECT_EQ(batteryFlow(source.read()), -14.5);
}

TEST_F(PosixFilesTest, ClassFolderMayVanishAndAppear)
{
    static_cast<void>(source.read());
    std::filesystem::remove_all(folder.root() + "/class");
    EXPECT_EQ(source.read(), std::nullopt);
    folder.addSupply("BAT0", withCapacity("60"));
    for (int turn = 0; turn < 10; ++turn)
        static_cast<void>(source.read());
    EXPECT_EQ(source.read()->batteryPercent, 60);
}

TEST_F(PosixFilesTest, SupplyMayBeALink)
{
    std::filesystem::create_directories(folder.root() + "/devices");
    std::filesystem::rename(folder.supply("BAT0"), folder.root() + "/devices/BAT0");
    std::filesystem::create_directory_symlink("../../devices/BAT0", folder.supply("BAT0"));
    EXPECT_EQ(source.read()->batteryPercent, 50);
}

TEST_F(PosixFilesTest, ListingLeavesHiddenNamesOutAndSpansManyNames)
{
    folder.write("many/.hidden", "");
    for (int index = 0; index < 300; ++index)
        folder.write("many/a_rather_long_name_of_an_attribute_" + std::to_string(index), "");
    const int directory = files.open((folder.root() + "/many").c_str(), SystemFiles::Kind::Directory);
    ASSERT_GE(directory, 0);
    std::string names;
    for (int turn = 0; turn < 2; ++turn) {
        ASSERT_TRUE(files.list(directory, names));
        EXPECT_EQ(std::count(names.begin(), names.end(), '\0'), 300);
        EXPECT_EQ(names.find(".hidden"), std::string::npos);
    }
    files.close(directory);
}

TEST_F(PosixFilesTest, ErrorsAreThoseOfTheSystem)
{
    EXPECT_EQ(files.open((folder.root() + "/none").c_str(), SystemFiles::Kind::Attribute), -ENOENT);
    EXPECT_EQ(
        files.open((folder.root() + "/class/power_supply/AC/online").c_str(), SystemFiles::Kind::Directory),
        -ENOTDIR);
    const int directory = files.open((folder.root() + "/class").c_str(), SystemFiles::Kind::Directory);
    std::array<char, 16> buffer{};
    EXPECT_EQ(files.read(directory, buffer), -EISDIR);
    files.close(directory);
}

} // namespace
} // namespace amperly
