#include "render/look/window_colors.h"

#include "platform/injected.h"
#include "platform/simulated/desktop/fixed_contrast_setting.h"

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

TEST(WindowColorsTest, DesktopIsDarkWhereTextIsLighterThanItsGround)
{
    EXPECT_FALSE(isDark(kLight));
    EXPECT_TRUE(isDark(kDark));
}

TEST(WindowColorsTest, CaptionsAndLinesAreStrongerWhereTheUserAsksForMoreContrast)
{
    for (const QPalette& palette : {kLight, kDark}) {
        const QColor ground = palette.color(QPalette::Window);
        const double caption = contrastRatio(secondaryColor(palette), ground);
        const double line = contrastRatio(separatorColor(palette), ground);
        FixedContrastSetting more(true);
        const Injected<ContrastSetting> inForce(more);
        EXPECT_GT(contrastRatio(secondaryColor(palette), ground), 7.0);
        EXPECT_GT(contrastRatio(secondaryColor(palette), ground), caption);
        EXPECT_GT(contrastRatio(separatorColor(palette), ground), 3.0);
        EXPECT_GT(contrastRatio(separatorColor(palette), ground), line);
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
    EXPECT_GT(secondaryColor(kLight).lightness(), 0);
    EXPECT_LT(secondaryColor(kLight).lightness(), separatorColor(kLight).lightness());
    EXPECT_LT(secondaryColor(kDark).lightness(), 255);
    EXPECT_GT(secondaryColor(kDark).lightness(), separatorColor(kDark).lightness());
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
