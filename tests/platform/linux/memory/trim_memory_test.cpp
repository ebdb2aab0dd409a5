#include "platform/linux/memory/memory_trimming.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <malloc.h>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace amperly {
namespace {

constexpr std::size_t kLength = 1 << 20;

/// A mapping of a file of its own, every page of it touched.
class MappedFile {
public:
    explicit MappedFile(int protection)
    {
        std::string name = testing::TempDir() + "mapping-XXXXXX";
        const int descriptor = mkstemp(name.data());
        unlink(name.c_str());
        const std::string page(kLength, 'a');
        EXPECT_EQ(write(descriptor, page.data(), page.size()), static_cast<ssize_t>(page.size()));
        m_bytes = static_cast<char*>(mmap(nullptr, kLength, protection, MAP_PRIVATE, descriptor, 0));
        close(descriptor);
        EXPECT_EQ(sum(), kLength * 'a');
    }
    ~MappedFile() { munmap(m_bytes, kLength); }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    [[nodiscard]] char* bytes() const { return m_bytes; }

    [[nodiscard]] std::size_t sum() const
    {
        std::size_t total = 0;
        for (std::size_t index = 0; index < kLength; ++index)
            total += static_cast<unsigned char>(m_bytes[index]);
        return total;
    }

    [[nodiscard]] long residentKilobytes() const
    {
        std::ifstream smaps("/proc/self/smaps");
        char start[32];
        std::snprintf(start, sizeof start, "%lx-", reinterpret_cast<unsigned long>(m_bytes));
        bool inside = false;
        for (std::string line; std::getline(smaps, line);) {
            if (line.starts_with(start))
                inside = true;
            if (inside && line.starts_with("Rss:"))
                return std::atol(line.c_str() + 4);
        }
        return -1;
    }

private:
    char* m_bytes = nullptr;
};

TEST(TrimMemoryTest, PagesOfAFileThatOnlyWasReadAreLetGoAndReadTheSameAgain)
{
    const MappedFile file(PROT_READ);
    ASSERT_EQ(file.residentKilobytes(), static_cast<long>(kLength / 1024));
    EXPECT_GE(trimMemory(), kLength);
    EXPECT_EQ(file.residentKilobytes(), 0);
    EXPECT_EQ(file.sum(), kLength * 'a');
}

TEST(TrimMemoryTest, PagesThatWereWrittenBeforeTheyBecameReadOnlyKeepWhatWasWritten)
{
    const MappedFile file(PROT_READ | PROT_WRITE);
    file.bytes()[4096] = 'b';
    ASSERT_EQ(mprotect(file.bytes(), kLength, PROT_READ), 0);
    trimMemory();
    EXPECT_EQ(file.bytes()[4096], 'b');
}

TEST(TrimMemoryTest, WritableMappingsAreLeftAlone)
{
    const MappedFile file(PROT_READ | PROT_WRITE);
    trimMemory();
    EXPECT_EQ(file.residentKilobytes(), static_cast<long>(kLength / 1024));
}

TEST(TrimMemoryTest, FreeHeapGoesBackToTheSystem)
{
    std::vector<void*> blocks;
    for (int index = 0; index < 4096; ++index) {
        blocks.push_back(std::malloc(4000));
        std::fill_n(static_cast<char*>(blocks.back()), 4000, 'x');
    }
    // One block stays behind, so that the top of the heap can't simply be lowered.
    for (std::size_t index = 0; index + 1 < blocks.size(); ++index)
        std::free(blocks[index]);
    const auto residentPages = [] {
        std::ifstream statm("/proc/self/statm");
        long size = 0;
        long resident = 0;
        statm >> size >> resident;
        return resident;
    };
    const long before = residentPages();
    trimMemory();
    EXPECT_LT(residentPages(), before - 2000);
    std::free(blocks.back());
}

TEST(TrimMemoryTest, LargeBlocksStayApartFromTheHeapThoughOthersWereFreed)
{
    keepLargeBlocksApart();
    for (int turn = 0; turn < 2; ++turn) {
        const std::size_t before = mallinfo2().hblkhd;
        void* const picture = std::malloc(4 * kLength);
        EXPECT_GE(mallinfo2().hblkhd, before + 4 * kLength) << "in turn " << turn;
        std::free(picture);
        EXPECT_EQ(mallinfo2().hblkhd, before);
    }
}

} // namespace
} // namespace amperly
