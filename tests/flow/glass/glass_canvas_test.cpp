#include "flow/glass/glass_canvas.h"
#include "tests/flow/glass/curves.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

const Bezier kLevel = line({60.0, 100.0}, {252.0, 100.0});
const Bezier kStanding = line({150.0, 10.0}, {150.0, 190.0});

bool isEmpty(const GlassPicture& picture)
{
    return std::all_of(
        picture.pixels.begin(), picture.pixels.end(), [](std::uint32_t pixel) { return pixel == 0; });
}

/// How white the pixels of a column are above and below a row, or of a row left and right of a column.
int lightness(std::uint32_t pixel)
{
    const auto channel = [&](unsigned shift) { return static_cast<int>(pixel >> shift & 0xffU); };
    return std::min({channel(0), channel(8), channel(16)});
}

TEST(GlassCanvasTest, ACanvasBeginsTransparent)
{
    EXPECT_TRUE(isEmpty(drawn({})));
    EXPECT_TRUE(isEmpty(drawn({}, 2.0)));
}

TEST(GlassCanvasTest, ACurveOfAPointOrLessDrawsNothing)
{
    EXPECT_TRUE(isEmpty(drawn({{line({50.0, 50.0}, {50.0, 50.0})}})));
    EXPECT_TRUE(isEmpty(drawn({{line({50.0, 50.0}, {51.0, 50.0})}})));
    EXPECT_FALSE(isEmpty(drawn({{line({50.0, 50.0}, {51.5, 50.0})}})));
}

TEST(GlassCanvasTest, CurvesThatAreNowhereDrawNothing)
{
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(isEmpty(drawn({{line({50.0, kNan}, {90.0, 50.0})}})));
    EXPECT_TRUE(isEmpty(drawn({{line({50.0, 50.0}, {kInfinity, 50.0})}})));
    EXPECT_TRUE(isEmpty(drawn({{line({50.0, 50.0}, {1e9 + 50.0, 50.0})}})));
    EXPECT_FALSE(isEmpty(drawn({{line({50.0, 50.0}, {9e8, 50.0})}})));
    EXPECT_TRUE(isEmpty(drawn({{line({-2000.0, 50.0}, {-1000.0, 50.0})}})));
}

TEST(GlassCanvasTest, AWholeSpacingFurtherIsTheSameFrame)
{
    for (const double travelled : {0.0, 0.5, 41.25, 83.75}) {
        EXPECT_TRUE(drawn(diagramFlows(16.0, travelled)) == drawn(diagramFlows(16.0, travelled + 84.0)));
        EXPECT_FALSE(drawn(diagramFlows(16.0, travelled)) == drawn(diagramFlows(16.0, travelled + 42.0)));
    }
}

TEST(GlassCanvasTest, ATubeIsLitFromAboveWhicheverWayTheFlowGoes)
{
    for (const Bezier& curve : {kLevel, reversed(kLevel)}) {
        const GlassPicture picture
            = drawn({{curve, FlowColor::charger, 20.0, 12.0}}); // a pulse in the middle
        EXPECT_GT(lightness(picture.at(150, 90)), lightness(picture.at(150, 110)) + 60);
        EXPECT_GT(lightness(picture.at(156, 90)), 200) << "the glint";
    }
}

TEST(GlassCanvasTest, AFlowAndItsReverseDifferInNothingButTheBodysGradient)
{
    const GlassPicture there = drawn({{kLevel, FlowColor::charger, 16.0, 12.0}});
    const GlassPicture back = drawn({{reversed(kLevel), FlowColor::charger, 16.0, 12.0}});
    for (int y = 0; y < there.height; ++y) {
        for (int x = 0; x < there.width; ++x) {
            const int one = static_cast<int>(there.at(x, y) >> 24U);
            const int other = static_cast<int>(back.at(x, y) >> 24U);
            EXPECT_NEAR(one, other, 0.12 * 255.0 + 2.0);
        }
    }
}

TEST(GlassCanvasTest, ATubeThatStandsIsLitFromTheLeft)
{
    for (const Bezier& curve : {kStanding, reversed(kStanding)}) {
        const GlassPicture picture = drawn({{curve, FlowColor::charger, 20.0, 6.0}}); // a pulse in the middle
        EXPECT_GT(lightness(picture.at(140, 100)), lightness(picture.at(160, 100)) + 60);
    }
}

TEST(GlassCanvasTest, ATubeTooShortToSwellShowsItsStaticLayersOnly)
{
    // So near to both of its ends no pulse rises above the least swell of a run.
    const Bezier stub = line({151.0, 100.0}, {155.0, 100.0});
    const GlassPicture one = drawn({{stub, FlowColor::charger, 16.0, 2.0}});
    const GlassPicture other = drawn({{stub, FlowColor::charger, 16.0, 44.0}});
    EXPECT_GT(one.at(153, 100) >> 24U, 50U);
    int most = 0;
    for (std::size_t i = 0; i < one.pixels.size(); ++i)
        most = std::max(most,
            std::abs(static_cast<int>(one.pixels[i] >> 24U) - static_cast<int>(other.pixels[i] >> 24U)));
    EXPECT_LE(most, 12); // its outline breathes by a fraction of a pixel
}

TEST(GlassCanvasTest, GlowsReachFurtherThanTheTube)
{
    const GlassPicture picture = drawn({{kLevel, FlowColor::charger, 16.0, 12.0}});
    const auto opacity = [&](int y) { return picture.at(156, y) >> 24U; };
    EXPECT_GT(opacity(80), 10U);
    EXPECT_GT(opacity(80), opacity(70));
    EXPECT_GT(opacity(70), opacity(60));
}

TEST(GlassCanvasTest, PixelsArePremultiplied)
{
    for (const double scale : {1.0, 1.25, 2.0}) {
        for (const std::uint32_t pixel : drawn(diagramFlows(23.0, 20.0), scale).pixels) {
            const std::uint32_t alpha = pixel >> 24U;
            ASSERT_LE(pixel & 0xffU, alpha);
            ASSERT_LE(pixel >> 8U & 0xffU, alpha);
            ASSERT_LE(pixel >> 16U & 0xffU, alpha);
        }
    }
}

TEST(GlassCanvasTest, LaterFlowsLieOverEarlierOnes)
{
    const Flow level{kLevel, FlowColor::charger, 20.0, 50.0};
    const Flow standing{kStanding, FlowColor::draining, 20.0, 50.0};
    const GlassPicture over = drawn({level, standing});
    const GlassPicture under = drawn({standing, level});
    const auto redness = [](const GlassPicture& picture) {
        return static_cast<int>(picture.at(147, 104) >> 16U & 0xffU)
            - static_cast<int>(picture.at(147, 104) >> 8U & 0xffU);
    };
    EXPECT_GT(redness(over), redness(under) + 10);
}

TEST(GlassCanvasTest, AUsedCanvasDrawsWhatANewOneDraws)
{
    const std::vector<Flow> shuffled{
        {kStanding, FlowColor::charging, 30.0, 5.0}, {kLevel, FlowColor::draining, 2.0, 70.0}};
    const std::vector<std::vector<Flow>> frames{diagramFlows(16.0, 3.0), shuffled, {},
        diagramFlows(9.0, 40.0), {shuffled[1]}, diagramFlows(16.125, 3.5), diagramFlows(23.0, 80.0),
        {shuffled[0]}};
    GlassCanvas used;
    for (int turn = 0; turn < 2; ++turn) {
        for (const double scale : {2.0, 1.0, 1.25, 3.0, 1.5}) {
            for (const std::vector<Flow>& flows : frames)
                EXPECT_TRUE(drawn(used, flows, scale) == drawn(flows, scale)) << scale;
        }
    }
}

TEST(GlassCanvasTest, OnlyTheCanvasItselfIsWrittenTo)
{
    constexpr std::uint32_t kForeign = 0x12345678U;
    for (const int width : {1, 7, 16, 33, 308}) {
        for (const int height : {1, 5, 64}) {
            for (const int beside : {0, 3}) {
                const int stride = width + beside;
                std::vector<std::uint32_t> memory(static_cast<std::size_t>(stride * height) + 64, kForeign);
                GlassCanvas canvas;
                canvas.begin({memory.data() + 32, width, height, stride}, 1.25);
                drawGlassFlow(canvas, line({-40.0, 4.0}, {400.0, 30.0}), FlowColor::charger, 16.0, 9.0);
                drawGlassFlow(canvas, line({-40.0, 30.0}, {400.0, 4.0}), FlowColor::charging, 23.0, 9.0);
                canvas.finish();
                for (int i = 0; i < static_cast<int>(memory.size()); ++i) {
                    const int place = i - 32;
                    const bool inside = place >= 0 && place < stride * height && place % stride < width;
                    ASSERT_EQ(memory[static_cast<std::size_t>(i)] == kForeign, !inside)
                        << width << " × " << height << " and " << beside << ", at " << place;
                }
            }
        }
    }
}

TEST(GlassCanvasTest, RowsThatLieApartHoldTheSamePicture)
{
    std::vector<Flow> flows = diagramFlows(16.0, 20.0);
    flows.push_back({line({-40.0, 20.0}, {340.0, 90.0}), FlowColor::draining, 23.0, 8.0}); // over both edges
    const GlassPicture close = drawn(flows, 1.5);
    constexpr int kBeside = 10;
    const int stride = close.width + kBeside;
    std::vector<std::uint32_t> memory(static_cast<std::size_t>(stride * close.height));
    GlassCanvas canvas;
    canvas.begin({memory.data(), close.width, close.height, stride}, 1.5);
    for (const Flow& flow : flows)
        drawGlassFlow(canvas, flow.curve, flow.color, flow.width, flow.travelled);
    canvas.finish();
    for (int y = 0; y < close.height; ++y) {
        for (int x = 0; x < close.width; ++x)
            ASSERT_EQ(memory[static_cast<std::size_t>(y * stride + x)], close.at(x, y));
    }
}

TEST(GlassCanvasTest, ANearlyEqualWidthIsANearlyEqualPicture)
{
    const GlassPicture one = drawn(diagramFlows(16.0, 20.0), 2.0);
    const GlassPicture other = drawn(diagramFlows(16.02, 20.0), 2.0);
    int most = 0;
    for (std::size_t i = 0; i < one.pixels.size(); ++i) {
        for (unsigned shift = 0; shift < 32; shift += 8)
            most = std::max(most,
                std::abs(static_cast<int>(one.pixels[i] >> shift & 0xffU)
                    - static_cast<int>(other.pixels[i] >> shift & 0xffU)));
    }
    EXPECT_LE(most, 8);
    EXPECT_FALSE(one == other) << "the width is not rounded away";
}

TEST(GlassCanvasTest, WidthsThatNobodyAsksForDoNoHarm)
{
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    const GlassPicture nothing = drawn({{kLevel, FlowColor::charger, 0.0, 12.0}});
    EXPECT_TRUE(drawn({{kLevel, FlowColor::charger, -5.0, 12.0}}) == nothing);
    EXPECT_TRUE(drawn({{kLevel, FlowColor::charger, kNan, 12.0}}) == nothing);
    EXPECT_FALSE(isEmpty(drawn({{kLevel, FlowColor::charger, 1000.0, 12.0}}, 3.0)));
    EXPECT_FALSE(isEmpty(drawn({{kLevel, FlowColor::charger, 16.0, kNan}})));
}

TEST(GlassCanvasTest, NoPixelsAreNoFrame)
{
    GlassCanvas canvas;
    canvas.begin({}, 1.0);
    drawGlassFlow(canvas, kLevel, FlowColor::charger, 16.0, 0.0);
    canvas.finish();
    EXPECT_FALSE(isEmpty(drawn(canvas, {{kLevel}})));
}

} // namespace
} // namespace amperly::glass
