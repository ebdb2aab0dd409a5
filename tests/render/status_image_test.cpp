#include "tests/render/status_art_fixture.h"

#include <array>
#include <cmath>
#include <set>

namespace amperly {
namespace {

constexpr std::array kScales{1.0, 1.25, 1.5, 2.0, 3.0};

class StatusImageTest : public StatusArtTest {
protected:
    static StatusImage::Setting setting(Arrangement arrangement, bool large, bool compact)
    {
        return {.arrangement = arrangement, .large = large, .compact = compact};
    }

    static std::vector<StatusImage::Setting> allSettings()
    {
        std::vector<StatusImage::Setting> settings;
        for (const Arrangement arrangement : {Arrangement::Line, Arrangement::Stacked}) {
            for (const bool large : {false, true}) {
                for (const bool compact : {false, true})
                    settings.push_back(setting(arrangement, large, compact));
            }
        }
        return settings;
    }

    static StatusImage usual(const StatusImage::Setting& each)
    {
        return image(each,
            {piece(kLaptop, "14.2 W", "14"), piece(kPlug, "30.1 W", "30"),
                piece(kBattery, "\u221215.9 W", "\u221216")});
    }

    /// The ink that `each` has if nothing of it is cut off: that of its pieces drawn one by one on
    /// more than enough room.
    double wholeInk(const StatusImage& each, double scale)
    {
        const auto& [arrangement, large, compact] = each.setting();
        const StatusLook look
            = arrangement == Arrangement::Line ? lineLook(large, compact) : stackedLook(large, compact);
        double sum = 0.0;
        for (const ReadingPiece& one : each.pieces()) {
            if (!one.symbol.empty())
                sum += ink(art.glyphs.drawing(one.symbol, look.glyph, scale).mask);
            CoverageMask roomy;
            roomy.clear(static_cast<int>(200 * scale), static_cast<int>(60 * scale));
            art.text.draw(roomy, one.text, look.text, {.left = 20.0, .middle = 30.0}, scale);
            sum += ink(roomy);
        }
        return sum;
    }
};

TEST_F(StatusImageTest, PixelsArePointsTimesScaleRoundedUp)
{
    for (const StatusImage::Setting& each : allSettings()) {
        const StatusImage made = usual(each);
        for (const double scale : kScales) {
            const CoverageMask mask = drawn(made, scale);
            EXPECT_EQ(mask.width, static_cast<int>(std::ceil(made.widthPoints() * scale)));
            EXPECT_EQ(mask.height, static_cast<int>(std::ceil(made.heightPoints() * scale)));
        }
    }
}

TEST_F(StatusImageTest, WidthsAreWholePoints)
{
    for (const StatusImage::Setting& each : allSettings()) {
        const double width = usual(each).widthPoints();
        EXPECT_EQ(width, std::floor(width));
    }
}

TEST_F(StatusImageTest, AnImageWithoutReadingsIsOnePointWideAndEmpty)
{
    const StatusImage none(kLine);
    EXPECT_EQ(none.widthPoints(), 1.0);
    EXPECT_EQ(ink(drawn(none, 2.0)), 0.0);
}

TEST_F(StatusImageTest, NoInkIsCutOffOrAdded)
{
    for (const StatusImage::Setting& each : allSettings()) {
        for (const double scale : kScales)
            EXPECT_NEAR(ink(drawn(usual(each), scale)), wholeInk(usual(each), scale), 0.5) << scale;
    }
}

TEST_F(StatusImageTest, TheLayoutIsTheSameAtEveryScale)
{
    for (const StatusImage::Setting& each : allSettings()) {
        const InkBox once = inkBox(drawn(usual(each), 1.0));
        for (const int scale : {2, 3}) {
            const InkBox box = inkBox(drawn(usual(each), scale));
            EXPECT_NEAR(box.left, once.left * scale, scale);
            EXPECT_NEAR(box.right, once.right * scale, scale);
            EXPECT_NEAR(box.top, once.top * scale, scale);
            EXPECT_NEAR(box.bottom, once.bottom * scale, scale);
        }
    }
}

TEST_F(StatusImageTest, ALineIsCentredInTheHeight)
{
    for (const double scale : kScales) {
        const CoverageMask mask = drawn(image(kLine, {piece(kBattery, "14.2")}), scale);
        const InkBox box = inkBox(mask);
        EXPECT_NEAR(box.top, mask.height - box.bottom, 1.0) << scale;
    }
}

TEST_F(StatusImageTest, AColumnsSymbolAndValueAreCentredInItsWidth)
{
    for (const double scale : {1.0, 2.0, 3.0}) {
        const CoverageMask mask = drawn(image(kStacked, {piece(kBattery, "\u221288.88 W")}), scale);
        // The battery's terminal makes it a unit wider on the right; its body starts the box.
        const int middle = mask.width / 2;
        int left = mask.width;
        int right = 0;
        for (int y = mask.height * 3 / 4; y < mask.height; ++y) {
            for (int x = 0; x < mask.width; ++x) {
                if (mask.at(x, y) > 0) {
                    left = std::min(left, x);
                    right = std::max(right, x + 1);
                }
            }
        }
        EXPECT_NEAR(middle - left, right - middle, 1.0 + scale) << scale;
    }
}

TEST_F(StatusImageTest, ValuesStandAboveTheirSymbols)
{
    const InkBox both = inkBox(drawn(image(kStacked, {piece(kLaptop, "14.2")}), 2.0));
    EXPECT_LE(both.top, 8);
    EXPECT_GE(both.bottom, 40);
    EXPECT_LE(both.bottom, 48);
}

TEST_F(StatusImageTest, OneIconIsItsWidthRoundedUp)
{
    EXPECT_EQ(image(kStacked, {piece(kLaptop, "")}).widthPoints(), 14.0);
    EXPECT_EQ(image(setting(Arrangement::Stacked, true, false), {piece(kLaptop, "")}).widthPoints(), 15.0);
    const StatusImage icon = image(kStacked, {piece(kBattery, "")});
    EXPECT_EQ(icon.widthPoints(), 18.0);
    const CoverageMask mask = drawn(icon, 2.0);
    EXPECT_NEAR(inkBox(mask).top, mask.height - inkBox(mask).bottom, 1.0);
}

TEST_F(StatusImageTest, WidthDoesNotStirWhileDigitsChange)
{
    for (const StatusImage::Setting& each : allSettings()) {
        EXPECT_EQ(image(each, {piece(kLaptop, "11.1 W")}).widthPoints(),
            image(each, {piece(kLaptop, "88.8 W")}).widthPoints());
    }
}

TEST_F(StatusImageTest, CompactAndLargeChangeTheWidth)
{
    for (const Arrangement arrangement : {Arrangement::Line, Arrangement::Stacked}) {
        const double regular = usual(setting(arrangement, false, false)).widthPoints();
        EXPECT_LT(usual(setting(arrangement, false, true)).widthPoints(), regular);
        EXPECT_GT(usual(setting(arrangement, true, false)).widthPoints(), regular);
    }
}

TEST_F(StatusImageTest, DrawingAgainIntoAUsedMaskGivesTheSamePicture)
{
    CoverageMask mask = drawn(usual(kLine), 3.0);
    usual(kStacked).draw(mask, 1.0);
    EXPECT_EQ(mask, drawn(usual(kStacked), 1.0));
}

TEST_F(StatusImageTest, ReadingsAreCountedAndRead)
{
    const StatusImage made = image(kLine, {piece(kLaptop, "14.2 W"), piece(kPlug, "")});
    EXPECT_EQ(made.readingCount(), 2);
    EXPECT_EQ(made.readingText(0), "14.2 W");
    EXPECT_EQ(made.readingText(1), "");
}

TEST_F(StatusImageTest, ImagesAreEqualWhenAllThatIsSeenIs)
{
    EXPECT_EQ(usual(kLine), usual(kLine));
    EXPECT_NE(usual(kLine), usual(kStacked));
    EXPECT_NE(image(kLine, {piece(kLaptop, "1")}), image(kLine, {piece(kPlug, "1")}));
    EXPECT_NE(image(kLine, {piece(kLaptop, "1")}), image(kLine, {piece(kLaptop, "2")}));
    EXPECT_NE(image(kLine, {piece(kLaptop, "1", "1")}), image(kLine, {piece(kLaptop, "1", "2")}));
}

TEST_F(StatusImageTest, KeysAreEqualJustWhereImagesAre)
{
    EXPECT_EQ(usual(kLine).key(), usual(kLine).key());
    std::set<std::uint64_t> keys;
    for (const StatusImage::Setting& each : allSettings()) {
        keys.insert(usual(each).key());
        keys.insert(image(each, {}).key());
        keys.insert(image(each, {piece(kLaptop, "")}).key());
        keys.insert(image(each, {piece(kLaptop, "1", "2")}).key());
        keys.insert(image(each, {piece(kLaptop, "12", "")}).key());
        keys.insert(image(each, {piece(kLaptop, "1"), piece({}, "2")}).key());
        keys.insert(image(each, {piece({}, "12")}).key());
    }
    EXPECT_EQ(keys.size(), 7 * allSettings().size());
}

TEST_F(StatusImageTest, ASystemWithoutFontsStillShowsTheSymbols)
{
    const FixedUiFont none;
    StatusArt bare(none);
    const Injected<StatusArt> bareInForce(bare);
    EXPECT_GT(ink(drawn(usual(kLine), 1.0)), 50.0);
    EXPECT_GT(ink(drawn(usual(kStacked), 1.0)), 50.0);
    CoverageMask tile;
    usual(kStacked).drawTile(tile, 0, 22);
    EXPECT_GT(ink(tile), 10.0);
}

using StatusImageDeathTest = StatusImageTest;

TEST_F(StatusImageDeathTest, AFourthReadingIsAProgrammingError)
{
    StatusImage full = usual(kLine);
    EXPECT_DEATH(full.add(piece(kLaptop, "1")), "");
}

TEST_F(StatusImageTest, ItIsAsHighAsTheBarItStandsIn)
{
    const StatusImage made = usual(kLine);
    EXPECT_EQ(made.heightPoints(), kUsualBarHeight);
    const double middle = made.layout().places[0].glyphY;

    StatusArt higher(font, 24.0);
    const Injected<StatusArt> higherInForce(higher);
    EXPECT_EQ(made.heightPoints(), 24.0);
    EXPECT_EQ(made.layout().places[0].glyphY, middle + 1.0);
    EXPECT_EQ(drawn(made, 2.0).height, 48);
}

} // namespace
} // namespace amperly
