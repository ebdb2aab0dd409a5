// The image is composed on every tick and drawn on many, so neither may lean on the heap.
#include "platform/memory_preference_store.h"
#include "prefs/pref.h"
#include "render/status_renderer.h"
#include "tests/render/status_art_fixture.h"
#include "tests/support/allocation_count.h"
#include "tests/support/number_environment.h"

namespace amperly {
namespace {

const NumberEnvironment kEnglish{"en_US.UTF-8"};

class StatusImageCostTest : public StatusArtTest {
protected:
    StatusImageCostTest()
    {
        store.registerDefaults(Pref::defaults());
        // What happens at start-up: the formatters are built, the mask gets its size, the usual
        // characters and the symbols are drawn.
        composed().draw(mask, 1.0);
        composed().draw(mask, 2.0);
        composed().drawTile(mask, 0, 22);
        composed().drawTile(mask, 2, 22);
    }

    [[nodiscard]] StatusImage composed() const { return StatusRenderer::image(sample, store); }

    MemoryPreferenceStore store;
    std::optional<PowerSample> sample = PowerSample{.systemLoad = 14.2,
        .adapterIn = 30.1,
        .battery = 15.9,
        .batteryPercent = 64,
        .externalConnected = true};
    CoverageMask mask;
};

TEST_F(StatusImageCostTest, ALongNameIsNoticedByTheCount)
{
    store.set(Pref::macIcon, std::string{"gauge.with.dots.needle.50percent"});
    const AllocationCount count;
    EXPECT_EQ(composed().readingCount(), 3);
    EXPECT_GT(count.value(), 0);
}

TEST_F(StatusImageCostTest, ComposingAndComparingAllocatesNothing)
{
    const StatusImage shown = composed();
    const AllocationCount count;
    const StatusImage next = composed();
    EXPECT_TRUE(next == shown);
    EXPECT_EQ(next.key(), shown.key());
    EXPECT_EQ(count.value(), 0);
}

TEST_F(StatusImageCostTest, DrawingChangedFiguresAllocatesNothing)
{
    for (const double scale : {1.0, 2.0}) {
        composed().draw(mask, scale);
        for (int tenth = 100; tenth < 999; tenth += 37) {
            sample->systemLoad = tenth / 10.0;
            sample->battery = -tenth / 10.0;
            composed().draw(mask, scale); // the battery's symbol is new the first time
            const AllocationCount count;
            sample->adapterIn = tenth / 10.0;
            composed().draw(mask, scale);
            EXPECT_EQ(count.value(), 0);
        }
    }
}

TEST_F(StatusImageCostTest, DrawingChangedTilesAllocatesNothing)
{
    const AllocationCount count;
    for (int tenth = 100; tenth < 999; tenth += 37) {
        sample->systemLoad = tenth / 10.0;
        composed().drawTile(mask, 0, 22);
    }
    EXPECT_EQ(count.value(), 0);
}

} // namespace
} // namespace amperly
