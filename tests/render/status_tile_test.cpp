#include "render/status_tile.h"

#include "tests/render/status_art_fixture.h"

namespace amperly {
namespace {

constexpr int kPanelTile = 22;

class StatusTileTest : public StatusArtTest {
protected:
    CoverageMask tile(const ReadingPiece& each, int pixels)
    {
        CoverageMask mask;
        drawReadingTile(mask, each, pixels, art);
        return mask;
    }

    CoverageMask glyphTile(std::string_view symbol, int pixels)
    {
        CoverageMask mask;
        drawGlyphTile(mask, symbol, pixels, art);
        return mask;
    }

    static bool hasEmptyRow(const CoverageMask& mask, int from, int to)
    {
        for (int y = from; y < to; ++y) {
            bool empty = true;
            for (int x = 0; x < mask.width; ++x)
                empty = empty && mask.at(x, y) == 0;
            if (empty)
                return true;
        }
        return false;
    }
};

TEST_F(StatusTileTest, ATileIsSquare)
{
    for (const int pixels : {1, 8, 16, 22, 33, 64}) {
        for (const ReadingPiece& each : {piece(kLaptop, "14.2 W", "14"), piece({}, "14.2 W", "14"),
                 piece(kLaptop, ""), piece(kBattery, "\u22121,234.5 W", "\u22121,234")}) {
            const CoverageMask mask = tile(each, pixels);
            EXPECT_EQ(mask.width, pixels);
            EXPECT_EQ(mask.height, pixels);
        }
    }
}

TEST_F(StatusTileTest, TheUnitIsNeverShown)
{
    EXPECT_EQ(
        tile(piece(kLaptop, "14.2 W", "14"), kPanelTile), tile(piece(kLaptop, "14.2", "14"), kPanelTile));
}

TEST_F(StatusTileTest, ADecimalThatFitsIsShown)
{
    EXPECT_NE(tile(piece(kLaptop, "14.2", "14"), kPanelTile), tile(piece(kLaptop, "14", "14"), kPanelTile));
    EXPECT_NE(tile(piece(kLaptop, "\u22128.6", "\u22129"), kPanelTile),
        tile(piece(kLaptop, "\u22129", "\u22129"), kPanelTile));
}

TEST_F(StatusTileTest, ADecimalThatDoesNotFitIsDroppedAndTheSignKept)
{
    EXPECT_EQ(
        tile(piece(kLaptop, "100.6", "101"), kPanelTile), tile(piece(kLaptop, "101", "101"), kPanelTile));
    EXPECT_EQ(tile(piece(kBattery, "\u221215.9", "\u221216"), kPanelTile),
        tile(piece(kBattery, "\u221216", "\u221216"), kPanelTile));
    EXPECT_NE(tile(piece(kBattery, "\u221215.9", "\u221216"), kPanelTile),
        tile(piece(kBattery, "16", "16"), kPanelTile));
}

TEST_F(StatusTileTest, TwiceTheTileShowsTheSame)
{
    for (const auto& [text, whole] : {std::pair{"14.2", "14"}, std::pair{"\u221215.9", "\u221216"}}) {
        const InkBox once = inkBox(tile(piece(kBattery, text, whole), kPanelTile));
        const InkBox twice = inkBox(tile(piece(kBattery, text, whole), 2 * kPanelTile));
        EXPECT_NEAR(twice.width(), 2 * once.width(), 4);
        EXPECT_NEAR(twice.height(), 2 * once.height(), 4);
    }
}

TEST_F(StatusTileTest, NothingIsCutOff)
{
    for (const int pixels : {16, 22, 24, 32, 44, 64}) {
        for (const auto& [text, whole] :
            {std::pair{"8.8", "9"}, std::pair{"88.8", "89"}, std::pair{"888.8", "889"},
                std::pair{"\u221288.8", "\u221289"}, std::pair{"\u22128,888.8", "\u22128,889"}}) {
            for (const std::string_view symbol : {std::string_view{}, kBattery}) {
                const CoverageMask mask = tile(piece(symbol, text, whole), pixels);
                const InkBox box = inkBox(mask);
                EXPECT_GE(box.top, 0);
                EXPECT_LE(box.height(), pixels);
                // Digits that reached over an edge would leave more than a trace in it.
                double edges = 0.0;
                for (int y = 0; y < pixels / 2; ++y)
                    edges += mask.at(0, y) / 255.0 + mask.at(pixels - 1, y) / 255.0;
                EXPECT_LT(edges, pixels * 0.3) << text << " in " << pixels;
            }
        }
    }
}

TEST_F(StatusTileTest, ValueAndSymbolStandApart)
{
    for (const int pixels : {16, 22, 24, 32, 44, 64}) {
        const CoverageMask mask = tile(piece("bolt.fill", "14", "14"), pixels);
        EXPECT_TRUE(hasEmptyRow(mask, pixels / 4, pixels * 3 / 4)) << pixels;
    }
}

TEST_F(StatusTileTest, ValueAndSymbolAreCentred)
{
    for (const int pixels : {16, 22, 24, 32, 44, 64}) {
        const CoverageMask mask = tile(piece("bolt.fill", "88", "88"), pixels);
        const InkBox box = inkBox(mask);
        EXPECT_NEAR(box.top, pixels - box.bottom, 2) << pixels;
        EXPECT_NEAR(box.left, pixels - box.right, 2) << pixels;
    }
}

TEST_F(StatusTileTest, AValueAloneIsCentred)
{
    for (const int pixels : {16, 22, 44}) {
        const InkBox box = inkBox(tile(piece({}, "88", "88"), pixels));
        EXPECT_NEAR(box.top, pixels - box.bottom, 1) << pixels;
        EXPECT_NEAR(box.left, pixels - box.right, 2) << pixels;
    }
}

TEST_F(StatusTileTest, AnIconAloneIsTheGlyphTile)
{
    EXPECT_EQ(tile(piece(kPlug, ""), kPanelTile), glyphTile(kPlug, kPanelTile));
}

TEST_F(StatusTileTest, TheSymbolKeepsItsPlaceWhileValuesChange)
{
    const auto lowerHalf = [&](std::string text, std::string whole) {
        const CoverageMask mask = tile(piece(kLaptop, std::move(text), std::move(whole)), kPanelTile);
        return std::vector<std::uint8_t>(mask.coverage.begin() + 12 * mask.width, mask.coverage.end());
    };
    EXPECT_EQ(lowerHalf("9.9", "10"), lowerHalf("1,234.5", "1,234"));
    EXPECT_EQ(lowerHalf("9.9", "10"), lowerHalf("\u2013", "\u2013"));
}

TEST_F(StatusTileTest, EverySymbolFitsEveryTile)
{
    for (const GlyphForm& form : kGlyphForms) {
        for (const int pixels : {16, 22, 24, 32, 48}) {
            const InkBox box = inkBox(glyphTile(form.name, pixels));
            EXPECT_GE(std::max(box.width(), box.height()), pixels / 2) << form.name << pixels;
            EXPECT_NEAR(box.top, pixels - box.bottom, 3) << form.name << pixels;
            EXPECT_NEAR(box.left, pixels - box.right, 3) << form.name << pixels;
        }
    }
}

TEST_F(StatusTileTest, TheGlyphIsTheFirstReadingsOrTheBolt)
{
    CoverageMask mask;
    image(kStacked, {piece(kPlug, "1"), piece(kBattery, "2")}).drawGlyph(mask, kPanelTile);
    EXPECT_EQ(mask, glyphTile(kPlug, kPanelTile));
    image(kStacked, {piece({}, "1"), piece(kBattery, "2")}).drawGlyph(mask, kPanelTile);
    EXPECT_EQ(mask, glyphTile("bolt.fill", kPanelTile));
    StatusImage(kStacked).drawGlyph(mask, kPanelTile);
    EXPECT_EQ(mask, glyphTile("bolt.fill", kPanelTile));
}

TEST_F(StatusTileTest, TilesGoByTheirReading)
{
    const StatusImage made = image(kLine, {piece(kLaptop, "1"), piece(kBattery, "2")});
    CoverageMask mask;
    made.drawTile(mask, 1, kPanelTile);
    EXPECT_EQ(mask, tile(piece(kBattery, "2"), kPanelTile));
}

} // namespace
} // namespace amperly
