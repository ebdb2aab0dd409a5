#include "platform/linux/files/user_file.h"

#include "tests/support/as_ordinary_user.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace amperly {
namespace {

using State = UserFile::State;
using testing::ElementsAre;

class UserFileTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string path = folder / "settings";
};

TEST_F(UserFileTest, ContentsAndPermissionsAreRead)
{
    writeInPlace(path, "a=1");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    const UserFile file = readUserFile(path);
    EXPECT_EQ(file.state, State::Readable);
    EXPECT_EQ(file.bytes, "a=1");
    EXPECT_EQ(file.permissions, 0640u);
}

TEST_F(UserFileTest, MissingFileAndMissingFolderAreTheSame)
{
    EXPECT_EQ(readUserFile(path).state, State::Missing);
    EXPECT_EQ(readUserFile(folder / "none/settings").state, State::Missing);
    writeInPlace(path, "");
    EXPECT_EQ(readUserFile(path + "/below").state, State::Missing);
}

TEST_F(UserFileTest, FolderCannotBeRead)
{
    std::filesystem::create_directory(path);
    EXPECT_EQ(readUserFile(path).state, State::Unreadable);
}

TEST_F(UserFileTest, FileWithoutPermissionCannotBeRead)
{
    writeInPlace(path, "secret");
    const AsOrdinaryUser user(folder);
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    EXPECT_EQ(readUserFile(path).state, State::Unreadable);
}

TEST_F(UserFileTest, LinkThatLeadsToItselfCannotBeRead)
{
    std::filesystem::create_symlink("settings", path);
    EXPECT_EQ(readUserFile(path).state, State::Unreadable);
}

TEST_F(UserFileTest, NothingIsKeptOfAFileThatIsTooLarge)
{
    writeInPlace(path, std::string(kLargestUserFile, 'x'));
    EXPECT_EQ(readUserFile(path).bytes.size(), kLargestUserFile);
    writeInPlace(path, std::string(kLargestUserFile + 1, 'x'));
    EXPECT_EQ(readUserFile(path).state, State::Unreadable);
    EXPECT_EQ(readUserFile(path).bytes, "");
}

TEST_F(UserFileTest, NobodyWaitsForAPipeOrReadsAnEndlessDevice)
{
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(readUserFile(path).state, State::Untouchable);
    std::filesystem::create_symlink("/dev/zero", folder / "zeros");
    EXPECT_EQ(readUserFile(folder / "zeros").state, State::Untouchable);
    EXPECT_TRUE(readUserFile(folder / "zeros").error);
}

TEST_F(UserFileTest, FileIsReplacedWithThePermissionsThatAreAskedFor)
{
    writeInPlace(path, "old");
    EXPECT_FALSE(replaceUserFile(path, "new", 0666)); // more than the process gives new files
    EXPECT_EQ(readUserFile(path).bytes, "new");
    EXPECT_EQ(readUserFile(path).permissions, 0666u);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("settings"));
}

TEST_F(UserFileTest, OriginalIsKeptUnderAFreeName)
{
    for (const std::string contents : {"first", "second", "third"}) {
        std::string keptAs;
        writeInPlace(path, contents);
        EXPECT_FALSE(replaceUserFile(path, "new", 0600, &keptAs));
        EXPECT_EQ(contentsOf(keptAs), contents);
        EXPECT_EQ(contentsOf(path), "new");
    }
    EXPECT_THAT(namesIn(folder.path()),
        ElementsAre("settings", "settings.damaged", "settings.damaged.1", "settings.damaged.2"));
}

TEST_F(UserFileTest, FolderThatCannotBeReplacedStays)
{
    std::filesystem::create_directories(path + "/inside");
    EXPECT_EQ(replaceUserFile(path, "new", 0600), std::errc::is_a_directory);
    EXPECT_TRUE(std::filesystem::is_directory(path + "/inside"));
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("settings"));
}

} // namespace
} // namespace amperly
