// Whole pictures of the status item.
#include "tests/render/status_art_fixture.h"
#include "tests/support/golden_picture.h"

namespace amperly {
namespace {

// Other versions of the font library hint and smooth a little differently.
constexpr int kMostDifferent = 96; ///< of 255, in any pixel
constexpr double kMostDifferentOnAverage = 2.0; ///< of 255, over all pixels

QImage pictureOf(const CoverageMask& mask)
{
    QImage picture(mask.width, mask.height, QImage::Format_Grayscale8);
    for (int y = 0; y < mask.height; ++y) {
        for (int x = 0; x < mask.width; ++x)
            picture.scanLine(y)[x] = static_cast<std::uint8_t>(255 - mask.at(x, y));
    }
    return picture;
}

class GoldenTest : public StatusArtTest {
protected:
    static void compare(const CoverageMask& mask, const std::string& name)
    {
        const QImage drawn = pictureOf(mask);
        const std::optional<QImage> golden = goldenPicture(name, drawn);
        if (!golden)
            return;
        const PictureSteps steps = stepsBetween(drawn, *golden, drawn.rect());
        EXPECT_LE(steps.most, kMostDifferent) << name;
        EXPECT_LE(steps.mean, kMostDifferentOnAverage) << name;
    }

    static std::string suffix(double scale)
    {
        return scale == 1.0 ? "-1x" : scale == 1.25 ? "-1.25x" : scale == 1.5 ? "-1.5x" : "-2x";
    }
};

TEST_F(GoldenTest, Stacked)
{
    const StatusImage made = image(
        kStacked, {piece(kLaptop, "14.2"), piece(kPlug, "30.1"), piece("battery.100percent.bolt", "+15.9")});
    for (const double scale : {1.0, 1.25, 1.5, 2.0})
        compare(drawn(made, scale), "stacked" + suffix(scale));
}

TEST_F(GoldenTest, Line)
{
    const StatusImage made = image(kLine, {piece(kLaptop, "8.6 W"), piece(kBattery, "\u22128.6 W")});
    for (const double scale : {1.0, 1.25, 1.5, 2.0})
        compare(drawn(made, scale), "line" + suffix(scale));
}

TEST_F(GoldenTest, LargeAndCompact)
{
    const StatusImage::Setting line{.arrangement = Arrangement::Line, .large = true, .compact = true};
    const StatusImage::Setting stacked{.arrangement = Arrangement::Stacked, .large = true, .compact = true};
    for (const double scale : {1.0, 2.0}) {
        compare(drawn(image(line, {piece("cpu", "7.0 W"), piece(kPlug, "\u2013")}), scale),
            "line-large-compact" + suffix(scale));
        compare(drawn(image(stacked, {piece("cpu", "7.0"), piece(kPlug, "\u2013")}), scale),
            "stacked-large-compact" + suffix(scale));
    }
}

TEST_F(GoldenTest, LargeGlyphs)
{
    for (const Arrangement each : {Arrangement::Line, Arrangement::Stacked}) {
        const StatusImage::Setting setting{.arrangement = each, .large = true};
        const std::string name = each == Arrangement::Line ? "line-large-glyphs" : "stacked-large-glyphs";
        const StatusImage made = image(setting,
            {piece(kLaptop, "8"), piece("battery.25percent", "8"), piece("battery.100percent.bolt", "8")});
        for (const double scale : {1.0, 2.0})
            compare(drawn(made, scale), name + suffix(scale));
    }
}

TEST_F(GoldenTest, OtherScripts)
{
    const StatusImage made = image(
        kLine, {piece(kLaptop, "1\u202f234,5 W"), piece(kBattery, "\u2212\u0666\u0667\u066b\u0668 W")});
    compare(drawn(made, 1.0), "scripts-1x");
}

TEST_F(GoldenTest, Tiles)
{
    const StatusImage made = image(kStacked,
        {piece(kLaptop, "14.2 W", "14"), piece(kBattery, "\u221215.9", "\u221216"), piece(kPlug, "")});
    CoverageMask mask;
    for (const int pixels : {22, 44}) {
        for (int reading = 0; reading < made.readingCount(); ++reading) {
            made.drawTile(mask, reading, pixels);
            compare(mask, "tile-" + std::to_string(reading) + "-" + std::to_string(pixels));
        }
    }
}

} // namespace
} // namespace amperly
