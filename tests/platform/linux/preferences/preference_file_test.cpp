#include "platform/linux/preferences/preference_file.h"

#include "platform/linux/files/user_file.h"
#include "tests/support/as_ordinary_user.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace amperly {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;

/// No file of this process may grow as long as this lives: what a full disk looks like to it.
class FullDisk {
public:
    FullDisk()
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        m_handlerBefore = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit none{.rlim_cur = 0, .rlim_max = m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handlerBefore);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
    void (*m_handlerBefore)(int) = nullptr;
};

class PreferenceFileTest : public testing::Test {
protected:
    [[nodiscard]] std::error_code set(const std::string& key, const std::string& text) const
    {
        return writePreferences(path, {{key, text}}).error;
    }

    [[nodiscard]] static mode_t permissionsOf(const std::string& path)
    {
        struct stat status { };
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & mode_t{07777};
    }

    TemporaryFolder folder;
    std::string path = folder / "amperly.ini";
};

TEST_F(PreferenceFileTest, MissingFileIsMadeWithItsFoldersForThisUserAlone)
{
    const std::string deep = folder / "config/amperly/amperly.ini";
    EXPECT_FALSE(writePreferences(deep, {{"a", "1"}}).error);
    EXPECT_EQ(contentsOf(deep), "a=1\n");
    EXPECT_EQ(permissionsOf(deep), 0600u);
    EXPECT_EQ(permissionsOf(folder / "config/amperly"), 0700u);
    EXPECT_EQ(permissionsOf(folder / "config"), 0700u);
}

TEST_F(PreferenceFileTest, OnlyTheChangedKeysChange)
{
    writeInPlace(path, "# mine\na=1\nb=2\n[x]\na=3\n");
    const WrittenPreferences written = writePreferences(path, {{"a", "5"}, {"b", std::nullopt}, {"c", "6"}});
    EXPECT_FALSE(written.error);
    EXPECT_EQ(contentsOf(path), "# mine\na=5\nc=6\n[x]\na=3\n");
    EXPECT_EQ(written.document.bytes(), contentsOf(path));
    EXPECT_EQ(written.keptAs, "");
}

TEST_F(PreferenceFileTest, PermissionsStay)
{
    writeInPlace(path, "a=1\n");
    ASSERT_EQ(chmod(path.c_str(), 0644), 0);
    EXPECT_FALSE(set("a", "2"));
    EXPECT_EQ(permissionsOf(path), 0644u);
}

TEST_F(PreferenceFileTest, FileWithNothingToChangeIsNotReplaced)
{
    writeInPlace(path, "a=1\n");
    struct stat before { };
    struct stat after { };
    ASSERT_EQ(stat(path.c_str(), &before), 0);
    EXPECT_FALSE(set("a", "1"));
    ASSERT_EQ(stat(path.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(PreferenceFileTest, LinkStaysAndItsTargetIsReplaced)
{
    std::filesystem::create_directory(folder / "dotfiles");
    writeInPlace(folder / "dotfiles/mine.ini", "a=1\n");
    std::filesystem::create_symlink("dotfiles/link.ini", path);
    std::filesystem::create_symlink("mine.ini", folder / "dotfiles/link.ini");
    EXPECT_FALSE(set("a", "2"));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "dotfiles/link.ini"));
    EXPECT_EQ(contentsOf(folder / "dotfiles/mine.ini"), "a=2\n");
}

TEST_F(PreferenceFileTest, LinkToNothingYetIsFollowed)
{
    std::filesystem::create_symlink("dotfiles/mine.ini", path);
    EXPECT_FALSE(set("a", "1"));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(contentsOf(folder / "dotfiles/mine.ini"), "a=1\n");
}

TEST_F(PreferenceFileTest, DamagedFileIsKeptBeforeItIsWrittenOver)
{
    const std::string damaged = "a=1\nnonsense \xFF\nb=2\n";
    writeInPlace(path, damaged);
    const WrittenPreferences written = writePreferences(path, {{"a", "5"}});
    EXPECT_FALSE(written.error);
    EXPECT_EQ(contentsOf(path), "a=5\nb=2\n");
    EXPECT_EQ(written.keptAs, path + ".damaged");
    EXPECT_EQ(contentsOf(path + ".damaged"), damaged);
}

TEST_F(PreferenceFileTest, EveryDamagedFileIsKept)
{
    for (const std::string& damage : {"first"s, "second"s, "third"s}) {
        writeInPlace(path, damage);
        EXPECT_FALSE(set("a", damage));
    }
    EXPECT_EQ(contentsOf(path + ".damaged"), "first");
    EXPECT_EQ(contentsOf(path + ".damaged.1"), "second");
    EXPECT_EQ(contentsOf(path + ".damaged.2"), "third");
}

TEST_F(PreferenceFileTest, DamagedFileIsLeftAloneWhileNothingIsWritten)
{
    writeInPlace(path, "a=1\nnonsense\n");
    EXPECT_FALSE(set("a", "1"));
    EXPECT_EQ(contentsOf(path), "a=1\nnonsense\n");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("amperly.ini", "amperly.ini.lock"));
}

TEST_F(PreferenceFileTest, FolderInThePlaceOfTheFileIsKept)
{
    std::filesystem::create_directories(path + "/inside");
    EXPECT_EQ(readUserFile(path).state, UserFile::State::Unreadable);
    EXPECT_FALSE(set("a", "1"));
    EXPECT_EQ(contentsOf(path), "a=1\n");
    EXPECT_TRUE(std::filesystem::is_directory(path + ".damaged/inside"));
}

TEST_F(PreferenceFileTest, FileWithoutPermissionToReadIsKept)
{
    writeInPlace(path, "secret=1\n");
    const AsOrdinaryUser user(folder);
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    EXPECT_EQ(readUserFile(path).state, UserFile::State::Unreadable);
    EXPECT_FALSE(set("a", "1"));
    EXPECT_EQ(contentsOf(path), "a=1\n");
    ASSERT_EQ(chmod((path + ".damaged").c_str(), 0600), 0);
    EXPECT_EQ(contentsOf(path + ".damaged"), "secret=1\n");
}

TEST_F(PreferenceFileTest, LinkThatLeadsToItselfIsKept)
{
    std::filesystem::create_symlink("amperly.ini", path);
    EXPECT_FALSE(set("a", "1"));
    EXPECT_EQ(contentsOf(path), "a=1\n");
    EXPECT_TRUE(std::filesystem::is_symlink(path + ".damaged"));
}

TEST_F(PreferenceFileTest, FileFarTooLargeIsKeptUnread)
{
    writeInPlace(path, "a=1\n" + std::string(1024 * 1024, '#'));
    EXPECT_EQ(readUserFile(path).state, UserFile::State::Unreadable);
    EXPECT_FALSE(set("b", "2"));
    EXPECT_EQ(contentsOf(path), "b=2\n");
    EXPECT_EQ(std::filesystem::file_size(path + ".damaged"), 1024u * 1024u + 4u);
}

TEST_F(PreferenceFileTest, VeryLongLineIsReadLikeAnyOther)
{
    const std::string longText(100'000, 'x');
    writeInPlace(path, "a=" + longText + "\nb=2\n");
    EXPECT_EQ(IniDocument(readUserFile(path).bytes).values().at("a"), PreferenceValue(longText));
}

TEST_F(PreferenceFileTest, TextTooLongForAnyFileIsRefused)
{
    writeInPlace(path, "a=1\n");
    EXPECT_EQ(set("a", std::string(200'000, 'x')), std::errc::file_too_large);
    EXPECT_EQ(contentsOf(path), "a=1\n");
}

TEST_F(PreferenceFileTest, DeviceIsNeitherReadNorReplaced)
{
    std::filesystem::create_symlink("/dev/zero", path);
    EXPECT_EQ(readUserFile(path).state, UserFile::State::Untouchable);
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(readUserFile(pipe).state, UserFile::State::Untouchable);
    EXPECT_TRUE(writePreferences(pipe, {{"a", "1"}}).error);
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST_F(PreferenceFileTest, FullDiskLeavesTheFileAsItWas)
{
    writeInPlace(path, "a=1\n");
    {
        const FullDisk full;
        EXPECT_TRUE(set("a", "2"));
    }
    EXPECT_EQ(contentsOf(path), "a=1\n");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("amperly.ini", "amperly.ini.lock"));
    EXPECT_FALSE(set("a", "2"));
    EXPECT_EQ(contentsOf(path), "a=2\n");
}

TEST_F(PreferenceFileTest, FullDiskLeavesADamagedFileInItsPlace)
{
    writeInPlace(path, "nonsense\n");
    {
        const FullDisk full;
        EXPECT_TRUE(set("a", "2"));
    }
    EXPECT_EQ(contentsOf(path), "nonsense\n");
    EXPECT_FALSE(std::filesystem::exists(path + ".damaged"));
}

TEST_F(PreferenceFileTest, FolderWithoutPermissionToWriteIsAnError)
{
    writeInPlace(path, "a=1\n");
    const AsOrdinaryUser user(folder);
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    EXPECT_EQ(set("a", "2"), std::errc::permission_denied);
    EXPECT_EQ(contentsOf(path), "a=1\n");
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
}

TEST_F(PreferenceFileTest, FileInThePlaceOfTheFolderIsAnError)
{
    writeInPlace(folder / "config", "");
    const std::string inFile = folder / "config/amperly/amperly.ini";
    EXPECT_EQ(readUserFile(inFile).state, UserFile::State::Missing);
    EXPECT_EQ(writePreferences(inFile, {{"a", "1"}}).error, std::errc::not_a_directory);
}

TEST_F(PreferenceFileTest, OnlyOneWritesAtATime)
{
    const std::string lockPath = path + ".lock";
    const int other = open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    const PreferenceChanges changes{{"a", "1"}};
    EXPECT_EQ(writePreferences(path, changes, std::chrono::milliseconds(0)).error, std::errc::timed_out);
    EXPECT_FALSE(std::filesystem::exists(path));
    close(other);
    EXPECT_FALSE(writePreferences(path, changes, std::chrono::milliseconds(0)).error);
    EXPECT_EQ(contentsOf(path), "a=1\n");
}

TEST_F(PreferenceFileTest, NothingIsWrittenThroughALinkInThePlaceOfTheLock)
{
    std::filesystem::create_symlink(folder / "elsewhere", path + ".lock");
    EXPECT_TRUE(set("a", "1"));
    EXPECT_FALSE(std::filesystem::exists(folder / "elsewhere"));
}

} // namespace
} // namespace amperly
