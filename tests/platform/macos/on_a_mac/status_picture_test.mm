#include "platform/macos/fonts/system_font.h"
#include "platform/memory_preference_store.h"
#include "prefs/pref.h"
#include "render/status_art.h"
#include "render/status_image.h"
#include "render/status_renderer.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace amperly {
namespace {

class StatusPictureOnAMacTest : public testing::Test {
protected:
    StatusPictureOnAMacTest()
    {
        StatusRenderer::useLocale("en_US");
        store.registerDefaults(Pref::defaults());
    }

    [[nodiscard]] StatusImage image() const { return StatusRenderer::image(sample, store); }

    static bool hasInk(const CoverageMask& mask)
    {
        return std::any_of(
            mask.coverage.begin(), mask.coverage.end(), [](std::uint8_t ink) { return ink == 255; });
    }

    SystemFont font;
    StatusArt art{font, 24.0};
    Injected<StatusArt> inForce{art};
    MemoryPreferenceStore store;
    PowerSample sample{.systemLoad = 14.2,
        .adapterIn = 30.1,
        .battery = 15.9,
        .batteryPercent = 64,
        .externalConnected = true};
};

TEST_F(StatusPictureOnAMacTest, ItIsAsHighAsTheBarAndHasInk)
{
    for (const double scale : {1.0, 2.0}) {
        CoverageMask mask;
        image().draw(mask, scale);
        EXPECT_EQ(mask.height, static_cast<int>(24.0 * scale));
        EXPECT_GT(mask.width, static_cast<int>(40.0 * scale));
        EXPECT_TRUE(hasInk(mask));
    }
}

TEST_F(StatusPictureOnAMacTest, AnySymbolOfTheSystemsCanBeTheComputers)
{
    store.set(Pref::macIcon, std::string("house.fill"));
    EXPECT_EQ(image().pieces().front().symbol, "house.fill");
    CoverageMask mask;
    image().draw(mask, 2.0);
    EXPECT_TRUE(hasInk(mask));
}

} // namespace
} // namespace amperly
