#include "platform/linux/tray/desktop_ink.h"

#include <QGuiApplication>
#include <QPalette>
#include <gtest/gtest.h>

namespace amperly {
namespace {

/// Goes back to the palette that there was, after all that listens has gone.
struct UsualPalette {
    UsualPalette() = default;
    UsualPalette(const UsualPalette&) = delete;
    UsualPalette& operator=(const UsualPalette&) = delete;
    ~UsualPalette() { QGuiApplication::setPalette(QPalette()); }
};

class PaletteInkTest : public testing::Test {
protected:
    static void paletteBecomes(QColor text)
    {
        QPalette palette;
        palette.setColor(QPalette::WindowText, text);
        QGuiApplication::setPalette(palette);
    }

    UsualPalette after;
    Ink told{};
    int tellings = 0;
    DesktopInk ink{nullptr};
};

TEST_F(PaletteInkTest, PaletteThatChangesIsNewsAtOnce)
{
    paletteBecomes(QColor(0x23, 0x26, 0x29));
    ink.onChanged([&] {
        told = ink.ink(PanelInk::Palette);
        ++tellings;
    });
    paletteBecomes(QColor(0xfc, 0xfc, 0xfc));
    EXPECT_EQ(told, Ink{0xfffcfcfc});
    EXPECT_EQ(tellings, 1);
}

TEST_F(PaletteInkTest, WithoutAPortalThePalettesLightnessIsTheScheme)
{
    paletteBecomes(Qt::black);
    EXPECT_EQ(ink.ink(PanelInk::ColorScheme), kBlackInk);
    paletteBecomes(Qt::white);
    EXPECT_EQ(ink.ink(PanelInk::ColorScheme), kWhiteInk);
}

} // namespace
} // namespace amperly
