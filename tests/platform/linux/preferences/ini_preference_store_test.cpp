#include "platform/linux/preferences/ini_preference_store.h"

#include "prefs/pref.h"
#include "tests/platform/preference_store_contract.h"
#include "tests/support/allocation_count.h"
#include "tests/support/as_ordinary_user.h"
#include "tests/support/run_until.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

#include <array>
#include <memory>
#include <spawn.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace amperly {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class IniStoreMaker {
public:
    PreferenceStore& make()
    {
        m_store = std::make_unique<IniPreferenceStore>(m_folder / "amperly.ini", nullptr);
        return *m_store;
    }

private:
    TemporaryFolder m_folder;
    std::unique_ptr<IniPreferenceStore> m_store;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Ini, PreferenceStoreContract, IniStoreMaker);

class IniPreferenceStoreTest : public testing::Test {
protected:
    /// Starts the program: a store on what the file says.
    IniPreferenceStore& start()
    {
        store = std::make_unique<IniPreferenceStore>(
            path, [this](const std::string& line) { warnings.push_back(line); });
        subscription = store->onDidChange([this] { ++announcements; });
        return *store;
    }

    IniPreferenceStore& startWith(std::string_view contents)
    {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        writeInPlace(path, contents);
        return start();
    }

    void end() { store.reset(); }

    [[nodiscard]] bool showsSoon(std::string_view key, const std::string& text) const
    {
        return runUntil([&] { return store->text(key) == text; });
    }

    [[nodiscard]] bool isSoonInTheFile(const std::string& contents) const
    {
        return runUntil([&] { return contentsOf(path) == contents; });
    }

    /// Lets the store see all that happened so far: the kernel tells in order, so once it has
    /// seen one more edit it has seen everything before.
    [[nodiscard]] bool hasCaughtUp()
    {
        replaceFile(path, contentsOf(path) + "caughtUp=" + std::to_string(++edits) + "\n");
        return showsSoon("caughtUp", std::to_string(edits));
    }

    TemporaryFolder folder;
    std::string path = folder / "amperly/amperly.ini";
    std::unique_ptr<IniPreferenceStore> store;
    std::vector<std::string> warnings;
    Subscription subscription;
    int announcements = 0;
    int edits = 0;
};

TEST_F(IniPreferenceStoreTest, NothingIsWrittenUntilSomethingIsStored)
{
    start().registerDefaults(Pref::defaults());
    EXPECT_TRUE(store->boolean(Pref::stacked));
    store->remove(Pref::stacked);
    QCoreApplication::processEvents();
    end();
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(IniPreferenceStoreTest, ValuesStandInTheFileForPeopleToRead)
{
    start();
    store->set("stackedLayout", true);
    store->set("showUnit", false);
    store->set("updateInterval", 2.0);
    store->set("shortInterval", 0.5);
    store->set("decimals", std::int64_t{1});
    store->set("clickShows", "menu"s);
    end();
    EXPECT_EQ(contentsOf(path),
        "clickShows=menu\ndecimals=1\nshortInterval=0.5\nshowUnit=false\nstackedLayout=true\nupdateInterval="
        "2.0\n");
}

TEST_F(IniPreferenceStoreTest, ValuesOutliveTheProgram)
{
    start().set("stackedLayout", true);
    store->set("updateInterval", 0.1);
    store->set("macStyle", " odd \n text\0"s);
    end();
    start();
    EXPECT_TRUE(store->boolean("stackedLayout"));
    EXPECT_EQ(store->real("updateInterval"), 0.1);
    EXPECT_EQ(store->text("macStyle"), " odd \n text\0"s);
}

TEST_F(IniPreferenceStoreTest, RegisteredDefaultsAreNeverWritten)
{
    start().registerDefaults(Pref::defaults());
    store->set(Pref::decimals, std::int64_t{0});
    end();
    EXPECT_EQ(contentsOf(path), "decimals=0\n");
}

TEST_F(IniPreferenceStoreTest, HandEditedFileIsReadByType)
{
    startWith("# by hand\n[General]\n stackedLayout = YES\ndecimals=2.7\nupdateInterval=\"5\"\n");
    EXPECT_TRUE(store->boolean("stackedLayout"));
    EXPECT_EQ(store->integer("decimals"), 2);
    EXPECT_EQ(store->real("updateInterval"), 5.0);
}

TEST_F(IniPreferenceStoreTest, ValueReachesTheFileAtTheNextTurn)
{
    start().set("decimals", std::int64_t{0});
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_TRUE(isSoonInTheFile("decimals=0\n"));
}

TEST_F(IniPreferenceStoreTest, AllChangesOfOneTurnAreOneWrite)
{
    start();
    for (const Preference& row : Pref::rows)
        store->set(row.key, "changed"s);
    QCoreApplication::processEvents();
    ASSERT_EQ(IniDocument(contentsOf(path)).values().size(), 14u);

    const int replacements = inotify_init1(IN_NONBLOCK);
    ASSERT_GE(inotify_add_watch(replacements, (folder / "amperly").c_str(), IN_MOVED_TO), 0);
    Pref::resetToDefaults(*store);
    ASSERT_TRUE(isSoonInTheFile(""));
    alignas(inotify_event) std::array<char, 4096> news;
    constexpr ssize_t kOneEvent = sizeof(inotify_event) + 16; // the name, padded
    EXPECT_EQ(read(replacements, news.data(), news.size()), kOneEvent);
    close(replacements);
}

TEST_F(IniPreferenceStoreTest, ResetKeepsTheLoginItemMarkAndWhatIsNotOurs)
{
    startWith(
        "# mine\nloginItemConfigured=true\nmacStyle=hidden\ndecimals=0\nsomethingElse=1\n[x]\ndecimals=7\n");
    store->registerDefaults(Pref::defaults());
    Pref::resetToDefaults(*store);
    EXPECT_EQ(store->integer(Pref::decimals), 1);
    EXPECT_TRUE(store->boolean(Pref::loginItemConfigured));
    end();
    EXPECT_EQ(contentsOf(path), "# mine\nloginItemConfigured=true\nsomethingElse=1\n[x]\ndecimals=7\n");
}

TEST_F(IniPreferenceStoreTest, ReadsAskForNoMemory)
{
    startWith("updateInterval=2.5\nmacIcon=gauge.with.dots.needle.50percent\nstackedLayout=true\n");
    store->registerDefaults(Pref::defaults());
    const AllocationCount count;
    const bool stacked = store->boolean(Pref::stacked);
    const double interval = store->real(Pref::interval);
    const std::int64_t number = store->integer(Pref::macIcon) + store->integer("a key that is far from here");
    const ReadingStyle style = Pref::style(Pref::macStyle, *store);
    EXPECT_EQ(count.value(), 0);
    EXPECT_TRUE(stacked);
    EXPECT_EQ(interval, 2.5);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(style, ReadingStyle::iconAndValue);
}

TEST_F(IniPreferenceStoreTest, ReplacedFileIsAnnounced)
{
    startWith("decimals=1\n");
    replaceFile(path, "decimals=0\n");
    EXPECT_TRUE(showsSoon("decimals", "0"));
    EXPECT_EQ(announcements, 1);
}

TEST_F(IniPreferenceStoreTest, FileWrittenInPlaceIsAnnouncedOnceItIsWhole)
{
    startWith("decimals=1\nshowUnit=true\n");
    {
        std::ofstream editor(path);
        editor << "decimals=0\nshow" << std::flush;
        // Something else the store can see happens while the editor is not done.
        replaceFile(folder / "amperly/another.ini", "");
        QCoreApplication::processEvents();
        EXPECT_EQ(store->text("decimals"), "1");
        editor << "Unit=false\n";
    }
    EXPECT_TRUE(showsSoon("decimals", "0"));
    EXPECT_EQ(store->text("showUnit"), "false");
    EXPECT_EQ(announcements, 1);
}

TEST_F(IniPreferenceStoreTest, OldFileMovedAwayBeforeTheNewOneIsWrittenShowsNoDefaultsMeanwhile)
{
    startWith("decimals=2\n");
    std::vector<std::int64_t> seen;
    const Subscription follower = store->onDidChange([&] { seen.push_back(store->integer("decimals")); });
    std::filesystem::rename(path, path + "~");
    QCoreApplication::processEvents();
    writeInPlace(path, "decimals=3\n");
    EXPECT_TRUE(showsSoon("decimals", "3"));
    EXPECT_THAT(seen, ElementsAre(3));
}

TEST_F(IniPreferenceStoreTest, DeletedFileShowsTheDefaultsAgain)
{
    startWith("decimals=2\n").registerDefaults(Pref::defaults());
    std::filesystem::remove(path);
    EXPECT_TRUE(showsSoon("decimals", "1"));
    EXPECT_EQ(announcements, 1);
}

TEST_F(IniPreferenceStoreTest, FileInAFolderMadeLaterIsSeen)
{
    path = folder / "config/amperly/amperly.ini";
    start();
    std::filesystem::create_directory(folder / "config");
    QCoreApplication::processEvents();
    std::filesystem::create_directory(folder / "config/amperly");
    writeInPlace(path, "decimals=0\n");
    EXPECT_TRUE(showsSoon("decimals", "0"));
    replaceFile(path, "decimals=2\n");
    EXPECT_TRUE(showsSoon("decimals", "2"));
}

TEST_F(IniPreferenceStoreTest, NewFileIsReadOnceItIsWhole)
{
    std::filesystem::create_directory(folder / "amperly");
    start();
    {
        std::ofstream editor(path);
        editor << "decimals=1" << std::flush;
        QCoreApplication::processEvents();
        EXPECT_EQ(store->text("decimals"), std::nullopt);
        editor << "0\n";
    }
    EXPECT_TRUE(showsSoon("decimals", "10"));
    EXPECT_EQ(announcements, 1);
}

TEST_F(IniPreferenceStoreTest, FolderMovedIntoPlaceWithItsFileIsSeen)
{
    start();
    std::filesystem::create_directory(folder / "restored");
    writeInPlace(folder / "restored/amperly.ini", "decimals=0\n");
    std::filesystem::rename(folder / "restored", folder / "amperly");
    EXPECT_TRUE(showsSoon("decimals", "0"));
}

TEST_F(IniPreferenceStoreTest, FolderRemovedAndMadeAgainIsFollowed)
{
    startWith("decimals=2\n");
    std::filesystem::remove_all(folder / "amperly");
    EXPECT_TRUE(runUntil([&] { return store->text("decimals") == std::nullopt; }));
    std::filesystem::create_directory(folder / "amperly");
    writeInPlace(path, "decimals=3\n");
    EXPECT_TRUE(showsSoon("decimals", "3"));
}

TEST_F(IniPreferenceStoreTest, FolderMovedAwayIsNoLongerFollowed)
{
    startWith("decimals=2\n");
    std::filesystem::rename(folder / "amperly", folder / "away");
    EXPECT_TRUE(runUntil([&] { return store->text("decimals") == std::nullopt; }));
    store->set("decimals", std::int64_t{3});
    EXPECT_TRUE(isSoonInTheFile("decimals=3\n"));
    writeInPlace(folder / "away/amperly.ini", "decimals=4\n");
    EXPECT_TRUE(hasCaughtUp());
    EXPECT_EQ(store->text("decimals"), "3");
}

TEST_F(IniPreferenceStoreTest, EditBehindALinkIsAnnounced)
{
    std::filesystem::create_directories(folder / "dotfiles");
    std::filesystem::create_directories(folder / "amperly");
    writeInPlace(folder / "dotfiles/one.ini", "decimals=1\n");
    writeInPlace(folder / "dotfiles/two.ini", "decimals=2\n");
    std::filesystem::create_symlink(folder / "dotfiles/one.ini", path);
    start();
    replaceFile(folder / "dotfiles/one.ini", "decimals=3\n");
    EXPECT_TRUE(showsSoon("decimals", "3"));

    std::filesystem::create_symlink(folder / "dotfiles/two.ini", path + "~new");
    std::filesystem::rename(path + "~new", path);
    EXPECT_TRUE(showsSoon("decimals", "2"));
    writeInPlace(folder / "dotfiles/two.ini", "decimals=4\n");
    EXPECT_TRUE(showsSoon("decimals", "4"));
}

TEST_F(IniPreferenceStoreTest, EditThatChangesNoPreferenceIsNotAnnounced)
{
    startWith("decimals=1\n");
    replaceFile(path, "# a comment\ndecimals = 1\n[x]\na=1\n");
    QCoreApplication::processEvents();
    replaceFile(path, "decimals=0\n");
    EXPECT_TRUE(showsSoon("decimals", "0"));
    EXPECT_EQ(announcements, 1) << "the one for the second edit";
}

TEST_F(IniPreferenceStoreTest, OwnWriteIsAnnouncedOnceAndNotAgainByItsEcho)
{
    start().set("decimals", std::int64_t{0});
    EXPECT_EQ(announcements, 1);
    ASSERT_TRUE(isSoonInTheFile("decimals=0\n"));
    ASSERT_TRUE(hasCaughtUp());
    EXPECT_EQ(announcements, 2) << "the one for the edit that was waited for, and no other";
}

TEST_F(IniPreferenceStoreTest, EditMadeBeforeTheWriteSurvivesIt)
{
    startWith("decimals=1\nshowUnit=true\n");
    store->set("decimals", std::int64_t{0});
    replaceFile(path, "# new\ndecimals=2\nshowUnit=false\n");
    EXPECT_TRUE(isSoonInTheFile("# new\ndecimals=0\nshowUnit=false\n"));
    EXPECT_EQ(store->text("decimals"), "0");
    EXPECT_EQ(store->text("showUnit"), "false");
    ASSERT_TRUE(hasCaughtUp());
    EXPECT_EQ(announcements, 3) << "the stored value, the foreign one, and the edit waited for";
}

TEST_F(IniPreferenceStoreTest, TwoStoresOnOneFileSeeEachOther)
{
    start();
    IniPreferenceStore other(path, nullptr);
    store->set("mine", "1"s);
    other.set("yours", "2"s);
    EXPECT_TRUE(showsSoon("yours", "2"));
    EXPECT_TRUE(runUntil([&] { return other.text("mine") == "1"; }));
    other.remove("mine");
    EXPECT_TRUE(runUntil([&] { return store->text("mine") == std::nullopt; }));
}

TEST_F(IniPreferenceStoreTest, TwoProgramsWritingAtOnceLoseNothing)
{
    constexpr int kCount = 150;
    const auto startWriter = [&](const char* prefix) {
        std::string program = AMPERLY_PREFERENCE_WRITER;
        std::string prefixText = prefix;
        std::string count = std::to_string(kCount);
        char* const arguments[] = {program.data(), path.data(), prefixText.data(), count.data(), nullptr};
        pid_t process = -1;
        EXPECT_EQ(posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ), 0);
        return process;
    };
    start();
    for (const pid_t process : {startWriter("left"), startWriter("right")}) {
        int status = -1;
        EXPECT_EQ(waitpid(process, &status, 0), process);
        EXPECT_EQ(status, 0);
    }
    const PreferenceDictionary values = IniDocument(contentsOf(path)).values();
    EXPECT_EQ(values.size(), 2u * kCount);
    for (int index = 0; index < kCount; ++index) {
        EXPECT_EQ(values.count("left" + std::to_string(index)), 1u) << index;
        EXPECT_EQ(values.count("right" + std::to_string(index)), 1u) << index;
    }
    EXPECT_TRUE(showsSoon("left0", "0"));
    EXPECT_TRUE(showsSoon("right" + std::to_string(kCount - 1), std::to_string(kCount - 1)));
    EXPECT_THAT(namesIn(folder / "amperly"), ElementsAre("amperly.ini", "amperly.ini.lock"));
}

TEST_F(IniPreferenceStoreTest, DamagedFileShowsWhatCanBeReadAndIsKeptAtTheFirstWrite)
{
    const std::string damaged = "decimals=0\n\0\0\0\nshowUnit=false\nmacSty"s;
    startWith(damaged).registerDefaults(Pref::defaults());
    EXPECT_EQ(store->integer(Pref::decimals), 0);
    EXPECT_FALSE(store->boolean(Pref::showUnit));
    EXPECT_EQ(Pref::style(Pref::macStyle, *store), ReadingStyle::iconAndValue);
    EXPECT_FALSE(std::filesystem::exists(path + ".damaged"));
    store->set(Pref::decimals, std::int64_t{1});
    end();
    EXPECT_EQ(contentsOf(path + ".damaged"), damaged);
    EXPECT_EQ(contentsOf(path), "decimals=1\nshowUnit=false\n");
    ASSERT_THAT(warnings, SizeIs(1));
    EXPECT_THAT(warnings.front(), HasSubstr(path + ".damaged"));
}

TEST_F(IniPreferenceStoreTest, ValuesThatCannotBeWrittenStayInMemoryAndAreTriedAgain)
{
    writeInPlace(folder / "amperly", "a file where the folder belongs");
    start().set("decimals", std::int64_t{0});
    ASSERT_TRUE(runUntil([&] { return !warnings.empty(); }));
    store->set("showUnit", false);
    QCoreApplication::processEvents();
    EXPECT_EQ(store->text("decimals"), "0");
    EXPECT_EQ(store->text("showUnit"), "false");
    ASSERT_THAT(warnings, SizeIs(1));
    EXPECT_THAT(warnings.front(), HasSubstr("Amperly: couldn't save preferences to " + path + ": "));
    EXPECT_EQ(contentsOf(folder / "amperly"), "a file where the folder belongs");

    std::filesystem::remove(folder / "amperly");
    store->set("smoothing", true);
    EXPECT_TRUE(isSoonInTheFile("decimals=0\nshowUnit=false\nsmoothing=true\n"));
    EXPECT_THAT(warnings, SizeIs(1));
}

TEST_F(IniPreferenceStoreTest, ValuesThatCouldNotBeWrittenSurviveAnEditFromOutside)
{
    startWith("decimals=1\n");
    std::filesystem::create_symlink("nowhere", path + ".lock"); // no lock, no write
    store->set("decimals", std::int64_t{0});
    ASSERT_TRUE(runUntil([&] { return !warnings.empty(); }));
    replaceFile(path, "decimals=2\nshowUnit=false\n");
    EXPECT_TRUE(showsSoon("showUnit", "false"));
    EXPECT_EQ(store->text("decimals"), "0");
    std::filesystem::remove(path + ".lock");
    end();
    EXPECT_EQ(contentsOf(path), "decimals=0\nshowUnit=false\n");
}

TEST_F(IniPreferenceStoreTest, StoreThatMayNotWatchSaysSoAndWorks)
{
    std::filesystem::create_directory(folder / "amperly");
    writeInPlace(path, "decimals=1\n");
    const AsOrdinaryUser user(folder);
    ASSERT_EQ(chmod((folder / "amperly").c_str(), 0300), 0); // to be entered but not looked at
    start();
    ASSERT_THAT(warnings, SizeIs(1));
    EXPECT_THAT(warnings.front(), HasSubstr(path));
    EXPECT_EQ(store->text("decimals"), "1");
    store->set("showUnit", false);
    EXPECT_TRUE(isSoonInTheFile("decimals=1\nshowUnit=false\n"));
    ASSERT_EQ(chmod((folder / "amperly").c_str(), 0700), 0);
}

TEST_F(IniPreferenceStoreTest, ListenersHearNothingOfTheLastWrite)
{
    startWith("decimals=1\n");
    store->set("decimals", std::int64_t{0});
    replaceFile(path, "showUnit=false\n");
    end();
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(contentsOf(path), "showUnit=false\ndecimals=0\n");
}

} // namespace
} // namespace amperly
