#include "platform/linux/xembed/tray_window.h"

#include <gmock/gmock.h>

namespace amperly {
namespace {

using testing::ElementsAre;

CoverageMask row(std::vector<std::uint8_t> coverage)
{
    return {.width = static_cast<int>(coverage.size()), .height = 1, .coverage = std::move(coverage)};
}

std::vector<std::uint32_t> premultiplied(const CoverageMask& mask, Ink ink, PixelSize window)
{
    std::vector<std::uint32_t> pixels;
    premultipliedPixels(mask, ink, window, pixels);
    return pixels;
}

TEST(PremultipliedPixels, CarryTheInkScaledByItsAlpha)
{
    EXPECT_THAT(premultiplied(row({0, 128, 255}), Ink{0xffff8000}, {3, 1}),
        ElementsAre(0x00000000U, 0x80804000U, 0xffff8000U));
}

TEST(PremultipliedPixels, TakeTheInksOwnAlphaIn)
{
    EXPECT_THAT(
        premultiplied(row({255, 128}), Ink{0x80ffffff}, {2, 1}), ElementsAre(0x80808080U, 0x40404040U));
}

TEST(PremultipliedPixels, StandInTheMiddleOfALargerWindow)
{
    EXPECT_THAT(premultiplied(row({255}), Ink{0xffffffff}, {3, 3}),
        ElementsAre(0U, 0U, 0U, 0U, 0xffffffffU, 0U, 0U, 0U, 0U));
}

TEST(PremultipliedPixels, AreCutAtTheEdgesOfASmallerWindow)
{
    EXPECT_THAT(
        premultiplied(row({10, 20, 30, 40}), Ink{0xff000000}, {2, 1}), ElementsAre(0x14000000U, 0x1e000000U));
}

TEST(PremultipliedPixels, OfAnEmptyMaskAreAllTransparent)
{
    EXPECT_THAT(premultiplied({}, Ink{}, {2, 1}), ElementsAre(0U, 0U));
}

TEST(PixelsOver, LeaveTheBackgroundWhereThereIsNoInk)
{
    std::vector<std::uint32_t> pixels;
    const std::vector<std::uint32_t> background{0x00204060, 0x00204060, 0x00204060};
    pixelsOver(background, row({0, 255, 51}), Ink{0xffffffff}, {3, 1}, pixels);
    EXPECT_THAT(pixels, ElementsAre(0x00204060U, 0xffffffffU, 0xff4d6680U));
}

TEST(PixelsOver, MixTransparentInk)
{
    std::vector<std::uint32_t> pixels;
    pixelsOver(std::vector<std::uint32_t>{0xff000000}, row({255}), Ink{0x33ffffff}, {1, 1}, pixels);
    EXPECT_THAT(pixels, ElementsAre(0xff333333U));
}

} // namespace
} // namespace amperly
