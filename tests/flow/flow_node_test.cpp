#include "flow/flow_node.h"

#include "flow/diagram_layout.h"
#include "flow/node_glow.h"
#include "flow/node_look.h"
#include "platform/simulated/desktop/fixed_display_settings.h"
#include "render/look/window_colors.h"
#include "tests/support/pinned_drawing.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <utility>

namespace amperly {
namespace {

/// A premultiplied colour from 0 to 1.
struct Light {
    std::array<double, 3> parts{};
    double opacity = 1.0;

    static Light of(const Color& color, double opacity)
    {
        return {{color.red * opacity, color.green * opacity, color.blue * opacity}, opacity};
    }
    static Light white(double opacity) { return of({1.0, 1.0, 1.0}, opacity); }

    [[nodiscard]] Light over(const Light& below) const
    {
        Light sum = *this;
        for (std::size_t part = 0; part < parts.size(); ++part)
            sum.parts[part] += below.parts[part] * (1.0 - opacity);
        sum.opacity += below.opacity * (1.0 - opacity);
        return sum;
    }
    [[nodiscard]] Light dimmed(double share) const
    {
        return {{parts[0] * share, parts[1] * share, parts[2] * share}, opacity * share};
    }
    [[nodiscard]] Light towards(const Light& other, double way) const
    {
        Light sum = dimmed(1.0 - way);
        const Light rest = other.dimmed(way);
        for (std::size_t part = 0; part < parts.size(); ++part)
            sum.parts[part] += rest.parts[part];
        sum.opacity += rest.opacity;
        return sum;
    }
};

struct Opacities {
    double tint = 0.0;
    double borderWhite = 0.0;
    double borderTint = 0.0;
    double borderEnd = 0.0;
    double whole = 0.0;
};
constexpr Opacities kActive{
    .tint = 0.1, .borderWhite = 0.45, .borderTint = 0.55, .borderEnd = 0.2, .whole = 1.0};
constexpr Opacities kInactive{
    .tint = 0.03, .borderWhite = 0.15, .borderTint = 0.12, .borderEnd = 0.05, .whole = 0.55};

class FlowNodeTest : public testing::TestWithParam<bool> {
protected:
    // The border is four pixels wide, of which those that are looked at are all border.
    static constexpr double kScale = 4.0;
    static constexpr double kNear = 2.0 / 255.0;

    FlowNodeTest()
    {
        QApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
        palette.setColor(QPalette::WindowText, Qt::white);
    }

    static NodeContent content(bool active, std::string value = "8.6 W")
    {
        return {.symbol = "bolt.fill",
            .value = std::move(value),
            .title = "Mac",
            .tint = FlowColor::charger,
            .active = active};
    }

    /// The node on black, without its glow.
    [[nodiscard]] QImage picture(FlowNode& node, double glow = 0.0) const
    {
        QImage image(QSizeF(124.0 * kScale, 114.0 * kScale).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(kScale);
        image.fill(Qt::black);
        QPainter painter(&image);
        node.paint(painter, {20.0, 20.0}, palette, glow);
        return image;
    }

    /// At a place in points from the node's corner.
    [[nodiscard]] static QColor at(const QImage& picture, double x, double y)
    {
        return picture.pixelColor(
            static_cast<int>((20.0 + x) * kScale), static_cast<int>((20.0 + y) * kScale));
    }

    /// All that lies under the border, where neither symbol nor words are.
    [[nodiscard]] Light sheet(double y) const
    {
        const Light material = Light::white(0.06); // on dark
        const Light tint = Light::of(FlowColor::charger, look().tint);
        const Light gloss = Light::white(0.1 * std::max(1.0 - y / 37.0, 0.0));
        return gloss.over(tint.over(material));
    }

    /// The border across the sheet from the upper left to the lower right.
    [[nodiscard]] Light border(double x, double y) const
    {
        const double way
            = (x * kNodeWidth + y * kNodeHeight) / (kNodeWidth * kNodeWidth + kNodeHeight * kNodeHeight);
        const Light start = Light::white(look().borderWhite);
        const Light middle = Light::of(FlowColor::charger, look().borderTint);
        const Light end = Light::of(FlowColor::charger, look().borderEnd);
        return way < 0.5 ? start.towards(middle, 2.0 * way) : middle.towards(end, 2.0 * way - 1.0);
    }

    void expectAt(const QImage& picture, double x, double y, const Light& light) const
    {
        const QColor color = at(picture, x, y);
        const Light shown = light.dimmed(look().whole);
        EXPECT_NEAR(color.redF(), shown.parts[0], kNear) << x << ", " << y;
        EXPECT_NEAR(color.greenF(), shown.parts[1], kNear) << x << ", " << y;
        EXPECT_NEAR(color.blueF(), shown.parts[2], kNear) << x << ", " << y;
    }

    [[nodiscard]] const Opacities& look() const { return GetParam() ? kActive : kInactive; }

    PinnedDrawing drawing;
    FixedDisplaySettings display;
    QPalette palette{QColor(Qt::black)};
};

TEST_P(FlowNodeTest, TheSheetIsTintedGlassWithGlossOnItsUpperHalf)
{
    FlowNode node(content(GetParam()), display);
    const QImage shown = picture(node);
    for (const double y : {3.0, 5.0, 20.0, 30.0, 36.0, 40.0, 60.0})
        expectAt(shown, y < 14.0 ? 42.0 : 6.0, y, sheet(y));
}

TEST_P(FlowNodeTest, TheBorderRunsFromWhiteThroughTheTintToLessOfIt)
{
    FlowNode node(content(GetParam()), display);
    const QImage shown = picture(node);
    for (const double x : {20.0, 42.0, 64.0}) {
        expectAt(shown, x, 0.4, border(x, 0.4).over(sheet(0.4)));
        expectAt(shown, x, 73.6, border(x, 73.6).over(sheet(73.6)));
    }
    for (const double y : {20.0, 37.0, 54.0}) {
        expectAt(shown, 0.4, y, border(0.4, y).over(sheet(y)));
        expectAt(shown, 83.6, y, border(83.6, y).over(sheet(y)));
    }
    // It is a point wide.
    expectAt(shown, 1.1, 37.0, sheet(37.0));
    EXPECT_EQ(at(shown, -0.1, 37.0), QColor(Qt::black));
}

TEST_P(FlowNodeTest, TheSymbolHasTheTintWhereThereIsPower)
{
    FlowNode node(content(GetParam()), display);
    const QImage shown = picture(node);
    const QColor ink = GetParam() ? QColor::fromRgbF(0.25F, 0.78F, 0.45F) : secondaryColor(palette, display);
    const Light expected = Light::of({ink.redF(), ink.greenF(), ink.blueF()}, 1.0).dimmed(look().whole);
    int inked = 0;
    constexpr int kSide = static_cast<int>(24.0 * kScale);
    for (int row = 0; row < kSide; ++row) {
        for (int column = 0; column < kSide; ++column) {
            const QColor color = at(shown, 30.0 + column / kScale, 9.0 + row / kScale);
            inked += std::abs(color.redF() - expected.parts[0]) < kNear
                    && std::abs(color.greenF() - expected.parts[1]) < kNear
                    && std::abs(color.blueF() - expected.parts[2]) < kNear
                ? 1
                : 0;
        }
    }
    EXPECT_GT(inked, 500);
}

TEST_P(FlowNodeTest, TheTitleIsInTheSecondaryColor)
{
    FlowNode node(content(GetParam()), display);
    const QImage shown = picture(node);
    const auto value = [&](const QColor& color) { return color.value() * look().whole; };
    const double secondary = value(secondaryColor(palette, display));
    ASSERT_LT(secondary, value(Qt::white) - 30.0);
    int brightest = 0;
    for (int y = static_cast<int>(56.0 * kScale); y < static_cast<int>(70.0 * kScale); ++y) {
        for (int x = static_cast<int>(20.0 * kScale); x < static_cast<int>(64.0 * kScale); ++x)
            brightest = std::max(brightest, at(shown, x / kScale, y / kScale).value());
    }
    EXPECT_NEAR(brightest, secondary, 12.0); // there is a little of the sheet under it
}

TEST_P(FlowNodeTest, CornersAreAsRoundAsArcsOfFourteenPoints)
{
    FlowNode node(content(GetParam()), display);
    const QImage shown = picture(node);
    // On its diagonal a quarter circle of radius r is r × (1 - √½) away from either side.
    const double expected = 14.0 * (1.0 - std::sqrt(0.5));
    for (const bool right : {false, true}) {
        for (const bool lower : {false, true}) {
            double inset = 0.0;
            while (inset < 10.0
                && at(shown, right ? kNodeWidth - inset - 0.1 : inset + 0.1,
                       lower ? kNodeHeight - inset - 0.1 : inset + 0.1)
                        .value()
                    == 0)
                inset += 0.5 / kScale;
            EXPECT_NEAR(inset, expected, 0.4);
        }
    }
}

TEST_P(FlowNodeTest, TheGlowLiesUnderTheNodeAndAroundIt)
{
    FlowNode node(content(GetParam()), display);
    const QImage dark = picture(node);
    const QImage lit = picture(node, 0.38);
    EXPECT_EQ(at(dark, -2.0, 37.0), QColor(Qt::black));
    const QColor beside = at(lit, -2.0, 37.0);
    EXPECT_GT(beside.green(), beside.red());
    EXPECT_GT(beside.green(), GetParam() ? 20 : 10);
    EXPECT_GT(at(lit, 6.0, 60.0).green(), at(dark, 6.0, 60.0).green());
}

TEST_P(FlowNodeTest, ANewValueRollsIn)
{
    FlowNode node(content(GetParam()), display);
    const QImage before = picture(node);
    FlowNode other(content(GetParam(), "9.7 W"), display);
    const QImage after = picture(other);
    ASSERT_NE(before, after);
    node.setContent(other.content());
    node.advance(5.0);
    EXPECT_EQ(picture(node), before);
    node.advance(5.2);
    const QImage halfway = picture(node);
    EXPECT_NE(halfway, before);
    EXPECT_NE(halfway, after);
    node.advance(5.45);
    EXPECT_EQ(picture(node), after);
}

TEST_P(FlowNodeTest, SettledItShowsTheNewValueAtOnce)
{
    FlowNode node(content(GetParam()), display);
    static_cast<void>(picture(node));
    FlowNode other(content(GetParam(), "19.7 W"), display);
    node.setContent(other.content());
    node.settle();
    EXPECT_EQ(picture(node), picture(other));
}

TEST(NodeGlowTest, IsTheNodesShapeBlurredByNinePoints)
{
    const QImage glow = nodeGlow(Qt::white, 4.0);
    constexpr double kReach = kNodeLook.glowReach;
    // Past the middle of a long side: what a blurred edge lets through, less what is left at the reach.
    const auto through = [](double beyond) { return 0.5 * std::erfc(beyond / (9.0 * std::sqrt(2.0))); };
    const double left = through(kReach);
    for (const double beyond : {-12.0, -6.0, 0.0, 4.0, 8.0, 12.0}) {
        const double expected = (through(beyond) - left) / (1.0 - left);
        const QColor shown = glow.pixelColor(
            static_cast<int>((kReach - beyond) * 4.0), static_cast<int>((kReach + 37.0) * 4.0));
        EXPECT_NEAR(shown.alphaF(), expected, 0.01) << beyond;
    }
}

INSTANTIATE_TEST_SUITE_P(ActiveOrNot, FlowNodeTest, testing::Bool());

} // namespace
} // namespace amperly
