#include "platform/linux/popover/placement.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr QSize kPanel{300, 200};

ScreenArea topPanel()
{
    return {QRect(0, 0, 1000, 600), QRect(0, 30, 1000, 570)};
}
ScreenArea bottomPanel()
{
    return {QRect(0, 0, 1000, 600), QRect(0, 0, 1000, 560)};
}
ScreenArea leftPanel()
{
    return {QRect(0, 0, 1000, 600), QRect(50, 0, 950, 600)};
}
ScreenArea noPanel()
{
    return {QRect(0, 0, 1000, 600), QRect(0, 0, 1000, 600)};
}

TEST(PlacementTest, HangsBelowAPanelAtTheTopUnderThePlace)
{
    EXPECT_EQ(besidePoint({500, 12}, kPanel, topPanel()), QRect(QPoint(350, 38), kPanel));
}

TEST(PlacementTest, StandsAboveAPanelAtTheBottom)
{
    EXPECT_EQ(besidePoint({500, 580}, kPanel, bottomPanel()), QRect(QPoint(350, 352), kPanel));
}

TEST(PlacementTest, LiesBesideAPanelAtTheSide)
{
    EXPECT_EQ(besidePoint({20, 300}, kPanel, leftPanel()), QRect(QPoint(58, 200), kPanel));
}

TEST(PlacementTest, KeepsAMarginToTheEndOfTheScreen)
{
    EXPECT_EQ(besidePoint({995, 12}, kPanel, topPanel()), QRect(QPoint(692, 38), kPanel));
    EXPECT_EQ(besidePoint({3, 12}, kPanel, topPanel()), QRect(QPoint(8, 38), kPanel));
}

TEST(PlacementTest, ClearsThePointerWhereNoPanelIsKnown)
{
    EXPECT_EQ(besidePoint({500, 10}, kPanel, noPanel()), QRect(QPoint(350, 22), kPanel));
    EXPECT_EQ(besidePoint({500, 590}, kPanel, noPanel()), QRect(QPoint(350, 378), kPanel));
}

TEST(PlacementTest, ASecondScreenHasItsOwnCoordinates)
{
    const ScreenArea second{QRect(1000, 200, 800, 600), QRect(1000, 230, 800, 570)};
    EXPECT_EQ(besidePoint({1790, 210}, kPanel, second), QRect(QPoint(1492, 238), kPanel));
}

TEST(PlacementTest, WhatIsTooLargeKeepsItsTopLeftCornerInView)
{
    EXPECT_EQ(besidePoint({500, 580}, {1200, 900}, bottomPanel()).topLeft(), QPoint(8, 8));
}

TEST(PlaceOfClickTest, IsThePointersOnAPanel)
{
    EXPECT_EQ(clickedPoint({700, 12}, ScreenPoint{0, 25}, topPanel()), QPoint(700, 12));
}

TEST(PlaceOfClickTest, IsThePointersNearAnEdgeWhoseAPanelMayBe)
{
    EXPECT_EQ(clickedPoint({700, 590}, ScreenPoint{0, 25}, noPanel()), QPoint(700, 590));
}

TEST(PlaceOfClickTest, IsTheAnchorsAfterAClickByKeyboard)
{
    EXPECT_EQ(clickedPoint({500, 300}, ScreenPoint{900, 12}, topPanel()), QPoint(900, 12));
}

TEST(PlaceOfClickTest, IsThePointersWhereThereIsNoAnchor)
{
    EXPECT_EQ(clickedPoint({500, 300}, std::nullopt, topPanel()), QPoint(500, 300));
}

TEST(AreaBesidePanelTest, APlaceOnThePanelTellsWhichEdgeItIsAt)
{
    const QSize usable(1000, 570);
    EXPECT_EQ(areaBesidePanel({1000, 600}, usable, {900, 29}).available, QRect(0, 30, 1000, 570));
    EXPECT_EQ(areaBesidePanel({1000, 600}, usable, {900, 571}).available, QRect(0, 0, 1000, 570));
}

TEST(AreaBesidePanelTest, PanelsAtTheSidesCountToo)
{
    const QSize usable(950, 600);
    EXPECT_EQ(areaBesidePanel({1000, 600}, usable, {10, 300}).available, QRect(50, 0, 950, 600));
    EXPECT_EQ(areaBesidePanel({1000, 600}, usable, {990, 300}).available, QRect(0, 0, 950, 600));
}

TEST(AreaBesidePanelTest, APlaceBesideThePanelTellsNothing)
{
    EXPECT_EQ(areaBesidePanel({1000, 600}, {1000, 570}, {500, 30}).available, QRect(0, 0, 1000, 600));
}

TEST(AreaBesidePanelTest, ACompositorThatTakesNothingOffLeavesAll)
{
    EXPECT_EQ(areaBesidePanel({1000, 600}, {1000, 600}, {500, 0}).available, QRect(0, 0, 1000, 600));
    EXPECT_EQ(areaBesidePanel({1000, 600}, {}, {500, 0}).available, QRect(0, 0, 1000, 600));
}

} // namespace
} // namespace amperly
