#include "platform/linux/desktop/window_palette.h"

#include "render/look/window_colors.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(DesktopLookTest, PortalsWordCountsBeforeTheThemesName)
{
    EXPECT_TRUE(isDarkDesktop({.prefersDark = true, .themeName = "Adwaita"}));
    EXPECT_FALSE(isDarkDesktop({.prefersDark = false, .themeName = "Adwaita-dark"}));
}

TEST(DesktopLookTest, ThemeCalledDarkIsDark)
{
    EXPECT_TRUE(isDarkDesktop({.prefersDark = {}, .themeName = "Adwaita-dark"}));
    EXPECT_TRUE(isDarkDesktop({.prefersDark = {}, .themeName = "Mint-Y-Dark-Aqua"}));
    EXPECT_FALSE(isDarkDesktop({.prefersDark = {}, .themeName = "Greybird"}));
}

TEST(DesktopLookTest, DesktopThatTellsNothingIsLight)
{
    EXPECT_FALSE(isDarkDesktop({}));
}

class WindowPaletteTest : public testing::Test {
protected:
    DesktopLook look;
    QPalette before = QApplication::palette();
    static bool applicationIsDark() { return isDark(QApplication::palette()); }
};

TEST_F(WindowPaletteTest, WindowsAreDarkOnADarkDesktopAndLightAgainOnALightOne)
{
    WindowPalette palette([this] { return look; });
    palette.refresh();
    EXPECT_FALSE(applicationIsDark());
    look.prefersDark = true;
    palette.refresh();
    EXPECT_TRUE(applicationIsDark());
    look.prefersDark = false;
    palette.refresh();
    EXPECT_FALSE(applicationIsDark());
    EXPECT_EQ(QApplication::palette(), before);
}

TEST_F(WindowPaletteTest, TakesItsColoursWithIt)
{
    {
        look.prefersDark = true;
        WindowPalette palette([this] { return look; });
        palette.refresh();
        EXPECT_TRUE(applicationIsDark());
    }
    EXPECT_EQ(QApplication::palette(), before);
}

TEST_F(WindowPaletteTest, ColoursThatTheDesktopGaveStay)
{
    QPalette given = before;
    given.setColor(QPalette::Window, QColor(0xe0, 0xf0, 0xe0));
    QApplication::setPalette(given);
    look.prefersDark = true;
    WindowPalette palette([this] { return look; });
    palette.refresh();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(0xe0, 0xf0, 0xe0));
    QApplication::setPalette(QPalette());
}

TEST_F(WindowPaletteTest, DarkTextIsReadableInEveryRoleAndState)
{
    look.prefersDark = true;
    WindowPalette palette([this] { return look; });
    palette.refresh();
    const QPalette now = QApplication::palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        EXPECT_GT(
            contrastRatio(now.color(group, QPalette::WindowText), now.color(group, QPalette::Window)), 7.0);
        EXPECT_GT(contrastRatio(now.color(group, QPalette::Text), now.color(group, QPalette::Base)), 7.0);
        EXPECT_GT(
            contrastRatio(now.color(group, QPalette::ButtonText), now.color(group, QPalette::Button)), 7.0);
        EXPECT_GT(contrastRatio(now.color(group, QPalette::Link), now.color(group, QPalette::Window)), 4.5);
    }
}

} // namespace
} // namespace amperly
