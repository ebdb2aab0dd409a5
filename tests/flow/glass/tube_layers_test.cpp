// How much light and how much of its own colour each sharp layer of a tube has, measured on a tube
// that is black, where all that is not is white light.
#include "tests/flow/glass/curves.h"

#include <cmath>

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

class TubeLayersTest : public testing::Test {
protected:
    static constexpr double kScale = 6.0; // lines are several pixels wide
    static constexpr double kWidth = 18.0; // points
    static constexpr double kAxis = 30.0; // of the tube, from the top
    static constexpr double kPixel = 1.0 / 255.0;

    static constexpr double kStart = 20.0; // of the tube, from the left
    static constexpr double kTravelled = 48.0; // of the first pulse that shows
    // Near the start nothing swells. A pulse throws a glint, beside which the upper side is seen.
    static constexpr double kAtRest = kStart + 6.0;
    static constexpr double kOnPulse = kStart + kTravelled;
    static constexpr double kBesideGlint = kOnPulse - 12.0;

    static const GlassPicture& picture()
    {
        static const GlassPicture s_picture = [] {
            GlassPicture drawing(static_cast<int>(80 * kScale), static_cast<int>(60 * kScale));
            GlassCanvas canvas;
            canvas.begin(drawing.target(), kScale);
            drawGlassFlow(canvas, line({kStart, kAxis}, {220.0, kAxis}), {0.0, 0.0, 0.0}, kWidth, kTravelled);
            canvas.finish();
            return drawing;
        }();
        return s_picture;
    }

    static double swellAt(double x)
    {
        return x == kAtRest ? 0.0 : std::exp(-0.5 * std::pow((x - kOnPulse) / 15.0, 2.0));
    }
    static double halfAt(double x) { return 0.5 * kWidth * (1.0 + 0.8 * swellAt(x)); }

    /// The pixel at so many points from the left and so many above the axis.
    [[nodiscard]] static std::uint32_t pixelAt(double x, double above)
    {
        return picture().at(static_cast<int>(x * kScale), static_cast<int>((kAxis - above) * kScale));
    }
    /// The white light of a pixel, from 0 to 1.
    [[nodiscard]] static double whiteAt(double x, double above)
    {
        return static_cast<double>(pixelAt(x, above) & 0xffU) / 255.0;
    }
    [[nodiscard]] static double opacityAt(double x, double above)
    {
        return static_cast<double>(pixelAt(x, above) >> 24U) / 255.0;
    }

    /// The same at a fraction of the half width.
    [[nodiscard]] static double whiteOn(double x, double fraction)
    {
        return whiteAt(x, fraction * halfAt(x));
    }

    /// The opacity of what is at one fraction of the half width and not at another one nearby.
    [[nodiscard]] static double opacityOf(double with, double without)
    {
        return 1.0
            - (1.0 - opacityAt(kAtRest, with * halfAt(kAtRest)))
            / (1.0 - opacityAt(kAtRest, without * halfAt(kAtRest)));
    }

    static double over(double below, double above) { return above + below * (1.0 - above); }
};

TEST_F(TubeLayersTest, TheSheenIsWhiteOnTheUpperSide)
{
    for (const double fraction : {0.2, 0.35, 0.7, 0.8})
        EXPECT_NEAR(whiteOn(kAtRest, fraction), 0.06, kPixel) << fraction;
    for (const double fraction : {-0.9, -0.5, 0.0, 0.1, 0.88})
        EXPECT_EQ(whiteOn(kAtRest, fraction), 0.0) << fraction;
}

TEST_F(TubeLayersTest, TheHighlightBandLiesOnTheSheen)
{
    for (const double fraction : {0.46, 0.52, 0.58})
        EXPECT_NEAR(whiteOn(kAtRest, fraction), over(0.06, 0.12), kPixel) << fraction;
}

TEST_F(TubeLayersTest, TheSpecularLineIsThinAndWhite)
{
    EXPECT_NEAR(whiteOn(kAtRest, 0.93), 0.22, kPixel);
    double points = 0.0; // as much white as a line of this width would be
    for (double above = 7.8; above < 9.0; above += 1.0 / kScale)
        points += whiteAt(kAtRest, above) / 0.22 / kScale;
    EXPECT_NEAR(points, 0.6, 0.02);
}

TEST_F(TubeLayersTest, ThePulseCoreIsMixedWithWhite)
{
    for (const double fraction : {-0.79, -0.62, -0.46})
        EXPECT_NEAR(whiteOn(kOnPulse, fraction), 0.75 * 0.45, 1.5 * kPixel) << fraction;
    EXPECT_EQ(whiteOn(kOnPulse, -0.86), 0.0);
    EXPECT_EQ(whiteOn(kOnPulse, -0.36), 0.0);
}

TEST_F(TubeLayersTest, ThePulseHighlightIsTheBrightestLight)
{
    const double lit = over(0.06, 0.7 * swellAt(kBesideGlint));
    EXPECT_NEAR(whiteOn(kBesideGlint, 0.39), lit, 2.0 * kPixel);
    EXPECT_NEAR(whiteOn(kBesideGlint, 0.65), lit, 2.0 * kPixel);
    EXPECT_NEAR(whiteOn(kBesideGlint, 0.72), 0.06, kPixel);
}

TEST_F(TubeLayersTest, ShadesLieOnTheLowerSide)
{
    EXPECT_NEAR(opacityOf(-0.47, -0.42), 0.22, 0.02);
    EXPECT_NEAR(opacityOf(-0.54, -0.47), 0.18, 0.02);
    EXPECT_NEAR(opacityOf(-0.74, -0.82), 0.18, 0.02);
}

TEST_F(TubeLayersTest, TheRimIsALineOnTheBodysEdge)
{
    for (const double side : {-1.0, 1.0}) {
        // Half of it lies outside, where only the glow is under it.
        const double glow = opacityAt(kAtRest, side * (halfAt(kAtRest) + 0.8));
        EXPECT_NEAR(
            1.0 - (1.0 - opacityAt(kAtRest, side * (halfAt(kAtRest) + 0.17))) / (1.0 - glow), 0.55, 0.02);
        double points = 0.0;
        for (double beyond = 0.5 / kScale; beyond < 0.7; beyond += 1.0 / kScale) {
            const double opacity = opacityAt(kAtRest, side * (halfAt(kAtRest) + beyond));
            points += (1.0 - (1.0 - opacity) / (1.0 - glow)) / 0.55 / kScale;
        }
        EXPECT_NEAR(points, 0.35, 0.04);
    }
}

} // namespace
} // namespace amperly::glass
