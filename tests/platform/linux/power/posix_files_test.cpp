#include "platform/linux/power/posix_files.h"

#include "tests/platform/linux/power/reading_of.h"
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
    LinuxRegistry registry{folder.root()};
};

TEST_F(PosixFilesTest, FilesOnDiskAreRead)
{
    const std::optional<PowerSample> sample = readingOf(registry);
    EXPECT_EQ(load(sample), 7.25);
    EXPECT_EQ(sample->batteryPercent, 50);
}

TEST_F(PosixFilesTest, TextWrittenIntoAFileShowsAtTheNextReading)
{
    static_cast<void>(readingOf(registry));
    folder.write("class/power_supply/BAT0/uevent", ueventText("BAT0", withCapacity("49")));
    EXPECT_EQ(readingOf(registry)->batteryPercent, 49);
}

TEST_F(PosixFilesTest, FileReplacedByAnotherShowsAtTheNextReading)
{
    static_cast<void>(readingOf(registry));
    for (const char* percent : {"49", "48", "47"})
        folder.replace("class/power_supply/BAT0/uevent", ueventText("BAT0", withCapacity(percent)));
    EXPECT_EQ(readingOf(registry)->batteryPercent, 47);
}

TEST_F(PosixFilesTest, FolderThatVanishesIsABatteryThatIsGone)
{
    static_cast<void>(readingOf(registry));
    std::filesystem::remove_all(folder.supply("BAT0"));
    EXPECT_EQ(readingOf(registry)->batteryPercent, std::nullopt);
}

TEST_F(PosixFilesTest, FolderThatAppearsIsABatteryWithinFiveReadings)
{
    static_cast<void>(readingOf(registry));
    folder.addSupply("BAT1", withCapacity("90"));
    for (int turn = 0; turn < 5; ++turn)
        static_cast<void>(readingOf(registry));
    EXPECT_EQ(batteryFlow(readingOf(registry)), -14.5);
}

TEST_F(PosixFilesTest, ClassFolderMayVanishAndAppear)
{
    static_cast<void>(readingOf(registry));
    std::filesystem::remove_all(folder.root() + "/class");
    EXPECT_EQ(readingOf(registry), std::nullopt);
    folder.addSupply("BAT0", withCapacity("60"));
    for (int turn = 0; turn < 10; ++turn)
        static_cast<void>(readingOf(registry));
    EXPECT_EQ(readingOf(registry)->batteryPercent, 60);
}

TEST_F(PosixFilesTest, SupplyMayBeALink)
{
    std::filesystem::create_directories(folder.root() + "/devices");
    std::filesystem::rename(folder.supply("BAT0"), folder.root() + "/devices/BAT0");
    std::filesystem::create_directory_symlink("../../devices/BAT0", folder.supply("BAT0"));
    EXPECT_EQ(readingOf(registry)->batteryPercent, 50);
}

TEST_F(PosixFilesTest, ListingLeavesHiddenNamesOutAndSpansManyNames)
{
    folder.write("many/.hidden", "");
    for (int index = 0; index < 300; ++index)
        folder.write("many/a_rather_long_name_of_an_attribute_" + std::to_string(index), "");
    PosixFiles files;
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
    PosixFiles files;
    EXPECT_EQ(files.open((folder.root() + "/none").c_str(), SystemFiles::Kind::Attribute), -ENOENT);
    EXPECT_EQ(
        files.open((folder.root() + "/class/power_supply/AC/online").c_str(), SystemFiles::Kind::Directory),
        -ENOTDIR);
    const int directory = files.open((folder.root() + "/class").c_str(), SystemFiles::Kind::Directory);
    std::array<char, 16> buffer{};
    EXPECT_EQ(files.read(directory, buffer), -EISDIR);
    files.close(directory);
}

TEST(NoSmcServiceTest, NothingOpens)
{
    NoSmcService service;
    const SmcOpening opening = service.open("AppleSMC");
    EXPECT_FALSE(opening.opened);
    EXPECT_EQ(opening.connection, 0U);
    service.close(opening.connection);
}

} // namespace
} // namespace amperly
