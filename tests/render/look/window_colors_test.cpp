#include "render/look/window_colors.h"

#include "platform/simulated/desktop/fixed_display_settings.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

QPalette paletteOf(const QColor& text, const QColor& window)
{
    QPalette palette;
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Window, window);
    return palette;
}

const QPalette kLight = paletteOf(Qt::black, Qt::white);
const QPalette kDark = paletteOf(Qt::white, Qt::black);
const FixedDisplaySettings kUsual;

TEST(WindowColorsTest, DesktopIsDarkWhereTextIsLighterThanItsGround)
{
    EXPECT_FALSE(isDark(kLight));
    EXPECT_TRUE(isDark(kDark));
}

TEST(WindowColorsTest, CaptionsAndLinesAreStrongerWhereTheUserAsksForMoreContrast)
{
    for (const QPalette& palette : {kLight, kDark}) {
        const QColor ground = palette.color(QPalette::Window);
        const double caption = contrastRatio(secondaryColor(palette, kUsual), ground);
        const double line = contrastRatio(separatorColor(palette, kUsual), ground);
        FixedDisplaySettings more;
        more.setIncreasesContrast(true);
        EXPECT_GT(contrastRatio(secondaryColor(palette, more), ground), 7.0);
        EXPECT_GT(contrastRatio(secondaryColor(palette, more), ground), caption);
        EXPECT_GT(contrastRatio(separatorColor(palette, more), ground), 3.0);
        EXPECT_GT(contrastRatio(separatorColor(palette, more), ground), line);
    }
}

TEST(WindowColorsTest, BlendGoesFromTheBackToTheFront)
{
    EXPECT_EQ(blended(Qt::white, Qt::black, 0.0).rgb(), QColor(Qt::black).rgb());
    EXPECT_EQ(blended(Qt::white, Qt::black, 1.0).rgb(), QColor(Qt::white).rgb());
    EXPECT_NEAR(blended(Qt::white, Qt::black, 0.25).red(), 64, 1);
}

TEST(WindowColorsTest, SecondaryTextStandsBetweenTextAndSeparatorOnLightAndDark)
{
    EXPECT_GT(secondaryColor(kLight, kUsual).lightness(), 0);
    EXPECT_LT(secondaryColor(kLight, kUsual).lightness(), separatorColor(kLight, kUsual).lightness());
    EXPECT_LT(secondaryColor(kDark, kUsual).lightness(), 255);
    EXPECT_GT(secondaryColor(kDark, kUsual).lightness(), separatorColor(kDark, kUsual).lightness());
}

TEST(WindowColorsTest, ContrastGoesFromOneToTwentyOne)
{
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::white), 1.0, 0.01);
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::black), 21.0, 0.01);
    EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21.0, 0.01);
}

TEST(WindowColorsTest, ALinkIsTheAccentAsFarAsThatIsLegible)
{
    QPalette palette = kLight;
    palette.setColor(QPalette::Highlight, QColor(0, 0, 0x90));
    EXPECT_EQ(linkColor(palette).rgb(), qRgb(0, 0, 0x90));
    for (const QPalette& desktop : {kLight, kDark}) {
        palette = desktop;
        palette.setColor(QPalette::Highlight, QColor(0x80, 0x80, 0xc0));
        EXPECT_GE(contrastRatio(linkColor(palette), palette.color(QPalette::Window)), 4.5);
    }
}

} // namespace
} // namespace amperly
