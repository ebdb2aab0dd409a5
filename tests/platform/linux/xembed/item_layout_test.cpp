#include "platform/linux/xembed/item_layout.h"

#include "tests/platform/linux/xembed/block_picture.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

using test::BlockPicture;

TEST(ScaleForHeight, GrowsInHalvesAndNeverBelowOne)
{
    EXPECT_EQ(scaleForHeight(16), 1.0);
    EXPECT_EQ(scaleForHeight(22), 1.0);
    EXPECT_EQ(scaleForHeight(32), 1.0);
    EXPECT_EQ(scaleForHeight(33), 1.5);
    EXPECT_EQ(scaleForHeight(44), 2.0);
    EXPECT_EQ(scaleForHeight(66), 3.0);
}

TEST(WishedSize, IsAsWideAsThePicture)
{
    EXPECT_EQ(wishedSize(110.0, 22, TrayOrientation::Horizontal), (PixelSize{110, 22}));
    EXPECT_EQ(wishedSize(110.5, 22, TrayOrientation::Horizontal), (PixelSize{111, 22}));
    EXPECT_EQ(wishedSize(110.0, 44, TrayOrientation::Horizontal), (PixelSize{220, 44}));
}

TEST(WishedSize, IsNeverNarrowerThanASquare)
{
    EXPECT_EQ(wishedSize(14.0, 22, TrayOrientation::Horizontal), (PixelSize{22, 22}));
}

TEST(WishedSize, IsASquareAlongAVerticalPanel)
{
    EXPECT_EQ(wishedSize(110.0, 22, TrayOrientation::Vertical), (PixelSize{22, 22}));
}

TEST(ChooseLayout, TakesTheWholePictureWhereItFits)
{
    EXPECT_EQ(chooseLayout(110.0, {110, 22}), (ItemLayout{ItemShape::Wide, 1.0, 0}));
    EXPECT_EQ(chooseLayout(110.0, {220, 44}), (ItemLayout{ItemShape::Wide, 2.0, 0}));
    EXPECT_EQ(chooseLayout(110.0, {300, 30}), (ItemLayout{ItemShape::Wide, 1.0, 0}));
}

TEST(ChooseLayout, ShrinksThePictureALittleRatherThanLosingIt)
{
    const ItemLayout layout = chooseLayout(100.0, {80, 22});
    EXPECT_EQ(layout.shape, ItemShape::Wide);
    EXPECT_DOUBLE_EQ(layout.scale, 0.8);
    EXPECT_EQ(chooseLayout(100.0, {75, 22}).shape, ItemShape::Wide);
}

TEST(ChooseLayout, FallsBackToATileOfTheWholeSquare)
{
    EXPECT_EQ(chooseLayout(110.0, {22, 22}), (ItemLayout{ItemShape::Tile, 1.0, 22}));
    EXPECT_EQ(chooseLayout(100.0, {74, 22}).shape, ItemShape::Tile);
    EXPECT_EQ(chooseLayout(110.0, {22, 40}).side, 22);
    EXPECT_EQ(chooseLayout(110.0, {60, 40}).side, 40);
}

TEST(DrawItem, AirAboveAndBelowMayBeCutSoThatTextsKeepTheirSize)
{
    CoverageMask mask;
    drawItem(BlockPicture(50.0, 14.0), chooseLayout(50.0, {50, 16}), {50, 16}, mask);
    EXPECT_EQ(mask.width, 50);
    EXPECT_EQ(mask.height, 24);
}

TEST(DrawItem, InkHigherThanTheWindowMakesThePictureShrink)
{
    CoverageMask mask;
    drawItem(BlockPicture(50.0, 24.0), chooseLayout(50.0, {50, 16}), {50, 16}, mask);
    EXPECT_EQ(mask.height, 16);
    EXPECT_EQ(mask.width, 34);
}

TEST(DrawItem, ATileIsAsLargeAsItsSide)
{
    CoverageMask mask;
    drawItem(BlockPicture(110.0), {ItemShape::Tile, 1.0, 22}, {22, 30}, mask);
    EXPECT_EQ(mask.width, 22);
    EXPECT_EQ(mask.height, 22);
    EXPECT_EQ(mask.at(0, 0), BlockPicture::kTile);
}

} // namespace
} // namespace amperly
