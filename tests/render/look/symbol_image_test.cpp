#include "render/look/symbol_image.h"

#include "tests/render/status_art_fixture.h"

namespace amperly {
namespace {

constexpr GlyphStyle kStyle{.pointSize = 20.0, .weight = FontWeight::Medium};

using SymbolImageTest = StatusArtTest;

TEST_F(SymbolImageTest, SizeInPointsIsTheBoxAtEveryScale)
{
    const GlyphSize box = glyphSize(kLaptop, kStyle);
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const QImage image = symbolImage(kLaptop, kStyle, Qt::red, scale);
        EXPECT_NEAR(image.width() / scale, box.width, 2.0 / scale) << scale;
        EXPECT_NEAR(image.height() / scale, box.height, 2.0 / scale) << scale;
        EXPECT_EQ(image.devicePixelRatio(), scale);
    }
}

TEST_F(SymbolImageTest, InkHasTheColour)
{
    const QImage image = symbolImage(kPlug, kStyle, QColor(10, 200, 30), 2.0);
    int solid = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() < 255)
                continue;
            ++solid;
            EXPECT_EQ(image.pixelColor(x, y), QColor(10, 200, 30));
        }
    }
    EXPECT_GT(solid, 100);
}

TEST_F(SymbolImageTest, TranslucentColourMakesTranslucentInk)
{
    QColor color(Qt::white);
    color.setAlpha(128);
    const QImage image = symbolImage(kPlug, kStyle, color, 2.0);
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            most = std::max(most, image.pixelColor(x, y).alpha());
    }
    EXPECT_EQ(most, 128);
}

} // namespace
} // namespace amperly
