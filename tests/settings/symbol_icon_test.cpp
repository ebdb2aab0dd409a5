#include "settings/symbol_icon.h"

#include "tests/support/pinned_drawing.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include <gtest/gtest.h>

namespace amperly {
namespace {

class SymbolIconTest : public testing::Test {
protected:
    static QImage picture(const QIcon& icon, QIcon::Mode mode)
    {
        return icon.pixmap(QSize(20, 20), 1.0, mode).toImage().convertToFormat(QImage::Format_ARGB32);
    }

    /// The colour of the first pixel that is fully covered.
    static QColor ink(const QImage& image)
    {
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(image.pixel(x, y)) == 255)
                    return image.pixelColor(x, y);
            }
        }
        return {};
    }

    PinnedDrawing drawing;
};

TEST_F(SymbolIconTest, ItHasTheColourOfTheTextBesideIt)
{
    const QIcon icon = symbolIcon("powerplug.fill");
    const QPalette palette = QGuiApplication::palette();
    EXPECT_EQ(ink(picture(icon, QIcon::Normal)), palette.color(QPalette::Active, QPalette::WindowText));
    EXPECT_EQ(
        ink(picture(icon, QIcon::Selected)), palette.color(QPalette::Active, QPalette::HighlightedText));
    EXPECT_EQ(ink(picture(icon, QIcon::Active)), palette.color(QPalette::Active, QPalette::HighlightedText));
    EXPECT_EQ(ink(picture(icon, QIcon::Disabled)), palette.color(QPalette::Disabled, QPalette::WindowText));
}

TEST_F(SymbolIconTest, EverySymbolLooksDifferent)
{
    EXPECT_NE(
        picture(symbolIcon("cpu"), QIcon::Normal), picture(symbolIcon("laptopcomputer"), QIcon::Normal));
}

TEST_F(SymbolIconTest, ItIsDrawnForTheScreenItIsShownOn)
{
    const QPixmap large = symbolIcon("cpu").pixmap(QSize(20, 20), 2.0);
    EXPECT_EQ(large.size(), QSize(40, 40));
    EXPECT_EQ(large.devicePixelRatio(), 2.0);
}

} // namespace
} // namespace amperly
