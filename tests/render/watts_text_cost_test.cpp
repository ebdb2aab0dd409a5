// Texts are made anew on every tick, so what they take from the heap is counted here: by this
// program's operator new, and apart from it by ICU, which has its own.
#include "render/status_renderer.h"
#include "tests/render/number_environment.h"

#include <unicode/uclean.h>

#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

namespace {

int newCalls = 0;
int icuCalls = 0;

void* icuAllocate(const void*, std::size_t size)
{
    ++icuCalls;
    return std::malloc(size);
}

void* icuReallocate(const void*, void* block, std::size_t size)
{
    ++icuCalls;
    return std::realloc(block, size);
}

void icuFree(const void*, void* block)
{
    std::free(block);
}

/// ICU takes other functions only before its first use.
const bool kIcuIsCounted = [] {
    UErrorCode status = U_ZERO_ERROR;
    u_setMemoryFunctions(nullptr, icuAllocate, icuReallocate, icuFree, &status);
    return U_SUCCESS(status);
}();

} // namespace

void* operator new(std::size_t size)
{
    ++newCalls;
    if (void* const block = std::malloc(size))
        return block;
    throw std::bad_alloc{};
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

namespace amperly {
namespace {

const NumberEnvironment kEnglish{"en_US.UTF-8"};

class WattsCostTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(kIcuIsCounted);
        static_cast<void>(StatusRenderer::watts(1.0, 1)); // builds the formatters
        newCalls = 0;
        icuCalls = 0;
    }
};

TEST_F(WattsCostTest, AFormatterOfIcuIsNoticedByTheCount)
{
    EXPECT_EQ(StatusRenderer::watts(1e15, 0), "1,000,000,000,000,000 W");
    EXPECT_GT(newCalls + icuCalls, 0);
}

TEST_F(WattsCostTest, AUsualWattageAllocatesNothing)
{
    std::size_t length = 0;
    for (int tenth = -12345; tenth <= 12345; tenth += 5)
        length += StatusRenderer::watts(tenth / 10.0, tenth % 2, true, true).size();
    EXPECT_GT(length, 0U);
    EXPECT_EQ(newCalls, 0);
    EXPECT_EQ(icuCalls, 0);
}

TEST_F(WattsCostTest, DashesAndSymbolsAllocateNothing)
{
    const PowerSample sample{.batteryPercent = 40, .batteryKnown = false};
    EXPECT_EQ(StatusRenderer::batteryText(sample, 1).size(), StatusRenderer::noValue.size());
    EXPECT_EQ(StatusRenderer::batterySymbol(sample), "battery.50percent");
    EXPECT_EQ(newCalls, 0);
}

TEST_F(WattsCostTest, ASentenceInATextThatIsKeptAllocatesNothing)
{
    const PowerSample sample{.systemLoad = 14.2,
        .adapterIn = 30.1,
        .battery = 15.9,
        .batteryPercent = 64,
        .externalConnected = true};
    std::string kept;
    StatusRenderer::appendAccessibilityText(kept, sample);
    const std::string first = kept;
    newCalls = 0;

    kept.clear();
    StatusRenderer::appendAccessibilityText(kept, sample);
    EXPECT_EQ(newCalls, 0);
    EXPECT_EQ(icuCalls, 0);
    EXPECT_EQ(kept, first);
}

} // namespace
} // namespace amperly
