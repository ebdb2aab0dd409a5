// Texts are made anew on every tick, so what they take from the heap is counted here: by this
// program's operator new, and apart from it by ICU, which has its own.
#include "render/status_renderer.h"
#include "tests/support/allocation_count.h"
#include "tests/support/number_environment.h"

#include <unicode/uclean.h>

#include <cstdlib>

#include <gtest/gtest.h>

namespace {

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

namespace amperly {
namespace {

const NumberEnvironment kEnglish{"en_US.UTF-8"};

class WattsCostTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(kIcuIsCounted);
        static_cast<void>(StatusRenderer::watts(1.0, 1)); // builds the formatters
        icuCalls = 0;
    }
};

TEST_F(WattsCostTest, AFormatterOfIcuIsNoticedByTheCount)
{
    const AllocationCount newCalls;
    EXPECT_EQ(StatusRenderer::watts(1e15, 0), "1,000,000,000,000,000 W");
    EXPECT_GT(newCalls.value() + icuCalls, 0);
}

TEST_F(WattsCostTest, AUsualWattageAllocatesNothing)
{
    const AllocationCount newCalls;
    std::size_t length = 0;
    for (int tenth = -12345; tenth <= 12345; tenth += 5)
        length += StatusRenderer::watts(tenth / 10.0, tenth % 2, true, true).size();
    EXPECT_GT(length, 0U);
    EXPECT_EQ(newCalls.value(), 0);
    EXPECT_EQ(icuCalls, 0);
}

TEST_F(WattsCostTest, DashesAndSymbolsAllocateNothing)
{
    const AllocationCount newCalls;
    const PowerSample sample{.batteryPercent = 40, .batteryKnown = false};
    EXPECT_EQ(StatusRenderer::batteryText(sample, 1).size(), StatusRenderer::noValue.size());
    EXPECT_EQ(StatusRenderer::batterySymbol(sample), "battery.50percent");
    EXPECT_EQ(newCalls.value(), 0);
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
    const AllocationCount newCalls;

    kept.clear();
    StatusRenderer::appendAccessibilityText(kept, sample);
    EXPECT_EQ(newCalls.value(), 0);
    EXPECT_EQ(icuCalls, 0);
    EXPECT_EQ(kept, first);
}

} // namespace
} // namespace amperly
