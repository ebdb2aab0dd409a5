#include "platform/linux/power/sysfs.h"

#include "tests/platform/linux/power/fake_files.h"

#include <array>
#include <cerrno>
#include <gtest/gtest.h>

namespace amperly {
namespace {

using Outcome = KeptFile::Outcome;

class KeptFileTest : public testing::Test {
protected:
    void write(const std::string& text) { files.write("class/x/value", text); }
    KeptFile open() { return KeptFile(files, "/sys/class/x/value"); }
    KeptFile::Reading read(KeptFile& file) { return file.read(buffer); }

    /// In how many of the next `turns` the file is really read.
    int readsIn(KeptFile& file, int turns)
    {
        files.resetCounts();
        for (int turn = 0; turn < turns; ++turn)
            static_cast<void>(read(file));
        return files.reads();
    }

    FakeFiles files;
    std::array<char, 64> buffer{};
};

TEST_F(KeptFileTest, TextComesWithoutBlanksAroundIt)
{
    write(" 12 \n");
    KeptFile file = open();
    EXPECT_EQ(read(file).text, "12");
}

TEST_F(KeptFileTest, FileIsOpenedOnceHoweverOftenItIsRead)
{
    write("1\n");
    KeptFile file = open();
    EXPECT_EQ(readsIn(file, 10), 10);
    EXPECT_EQ(files.opens(), 0);
}

TEST_F(KeptFileTest, FileThatIsNotThereIsNeverAsked)
{
    KeptFile file = open();
    EXPECT_EQ(read(file).outcome, Outcome::NotThere);
    EXPECT_EQ(readsIn(file, 10), 0);
}

TEST_F(KeptFileTest, FailureSkipsTwiceAsManyTurnsEachTime)
{
    write("1\n");
    files.failReading("class/x/value", EIO);
    KeptFile file = open();
    EXPECT_EQ(read(file).outcome, Outcome::Failed);
    EXPECT_EQ(read(file).outcome, Outcome::Skipped);
    EXPECT_EQ(readsIn(file, 1), 1);
    EXPECT_EQ(readsIn(file, 2), 0);
    EXPECT_EQ(readsIn(file, 1), 1);
    EXPECT_EQ(readsIn(file, 4), 0);
    EXPECT_EQ(readsIn(file, 1), 1);
}

TEST_F(KeptFileTest, SkippingEndsWithinTenMinutes)
{
    write("1\n");
    files.failReading("class/x/value", EIO);
    KeptFile file = open();
    EXPECT_LE(readsIn(file, 2000), 16);
    EXPECT_GE(readsIn(file, 300), 1);
}

TEST_F(KeptFileTest, SuccessEndsTheBackoff)
{
    write("1\n");
    files.failReading("class/x/value", EIO);
    KeptFile file = open();
    static_cast<void>(readsIn(file, 20));
    files.failReading("class/x/value", 0);
    EXPECT_GE(readsIn(file, 40), 20);
    EXPECT_EQ(readsIn(file, 10), 10);
}

TEST_F(KeptFileTest, DriversWithoutAValueNowMayBeAskedEachTime)
{
    for (const int error : {ENODATA, EAGAIN, ENODEV}) {
        write("1\n");
        files.failReading("class/x/value", error);
        KeptFile file = open();
        EXPECT_EQ(readsIn(file, 5), 5) << error;
    }
}

TEST_F(KeptFileTest, EmptyFileIsAFailure)
{
    write("\n");
    KeptFile file = open();
    EXPECT_EQ(read(file).outcome, Outcome::Failed);
    EXPECT_EQ(read(file).outcome, Outcome::Skipped);
}

TEST_F(KeptFileTest, HandleIsGivenBack)
{
    write("1\n");
    {
        KeptFile file = open();
        KeptFile other = std::move(file);
        file = open();
        EXPECT_EQ(files.openHandles(), 2);
    }
    EXPECT_EQ(files.openHandles(), 0);
}

} // namespace
} // namespace amperly
