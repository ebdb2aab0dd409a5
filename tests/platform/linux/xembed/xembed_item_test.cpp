#include "platform/linux/xembed/xembed_item.h"

#include "platform/linux/tray/x11_tray_colors.h"
#include "tests/platform/linux/xembed/block_picture.h"
#include "tests/platform/linux/xembed/fake_tray.h"
#include "tests/support/private_display.h"
#include "tests/support/run_until.h"

#include <QApplication>
#include <QToolTip>
#include <gtest/gtest.h>
#include <optional>

namespace amperly {
namespace {

using test::BlockPicture;
using test::FakeTray;
using test::TrayManners;

constexpr std::uint32_t kNoAlphaByte = 0x00ffffff;

class XEmbedItemTest : public PrivateDisplayTest {
protected:
    void SetUp() override
    {
        PrivateDisplayTest::SetUp();
        if (IsSkipped())
            return;
        item
            = XEmbedItem::create({.ink = [this] { return ink; }, .hoverDelay = std::chrono::milliseconds(0)});
        ASSERT_TRUE(item);
        item->onPictureWanted([this] {
            ++picturesWanted;
            show();
        });
        item->onClick([this](const StatusClick& click) { clicks.push_back(click); });
    }

    static std::string display() { return s_display->name(); }

    void startTray(TrayManners manners = {}) { tray.emplace(display(), manners); }

    void show() { item->show(picture, toolTip, spokenLabel); }

    bool docks(int times = 1)
    {
        return runUntil([&] { return tray->docked() == times; });
    }

    bool middleBecomes(std::uint32_t pixel, std::uint32_t mask = kNoAlphaByte)
    {
        return runUntil([&] { return (tray->middlePixel() & mask) == pixel; });
    }

    /// Everything that was on its way has arrived.
    void settle()
    {
        const std::string mark = spokenLabel + ".";
        spokenLabel = mark;
        show();
        ASSERT_TRUE(runUntil([&] { return tray->iconName() == mark; }));
    }

    Ink ink{0xffffffff};
    BlockPicture picture{110.0};
    std::optional<std::string> toolTip = "12.3 W";
    std::string spokenLabel = "12.3 watts";
    int picturesWanted = 0;
    std::vector<StatusClick> clicks;
    std::optional<FakeTray> tray;
    std::unique_ptr<XEmbedItem> item;
};

TEST_F(XEmbedItemTest, DocksIntoTheTrayThatIsThereAtItsFullWidth)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    EXPECT_TRUE(middleBecomes(0xffffff));
    EXPECT_EQ(tray->iconSize(), (PixelSize{110, 22}));
}

TEST_F(XEmbedItemTest, MixesInkIntoThePanelsOwnPixels)
{
    startTray({.background = 0x00204060});
    ink = Ink{0x80ffffff};
    show();
    ASSERT_TRUE(docks());
    EXPECT_TRUE(middleBecomes(0x90a0b0));
    EXPECT_EQ(tray->cornerPixel() & kNoAlphaByte, 0x204060U);
}

TEST_F(XEmbedItemTest, IsTransparentWhereTheTrayOffersAnAlphaChannel)
{
    startTray({.offersAlpha = true});
    ink = Ink{0x80ffffff};
    show();
    ASSERT_TRUE(docks());
    EXPECT_TRUE(middleBecomes(0x80808080, ~0U));
    EXPECT_EQ(tray->cornerPixel(), 0U);
}

TEST_F(XEmbedItemTest, DrawsOnceMoreForPanelsThatWereBusyTheFirstTime)
{
    startTray({.offersAlpha = true});
    show();
    ASSERT_TRUE(docks());
    ASSERT_TRUE(middleBecomes(0xffffffff, ~0U));
    // Nothing but the second drawing would show it.
    ink = Ink{0xff000000};
    EXPECT_TRUE(middleBecomes(0xff000000, ~0U));
}

TEST_F(XEmbedItemTest, ShowsATileWhereTheTrayForcesASquare)
{
    startTray({.offersAlpha = true, .forcesSquare = true});
    show();
    ASSERT_TRUE(docks());
    EXPECT_TRUE(middleBecomes(0x80808080, ~0U));
    EXPECT_EQ(tray->iconSize(), (PixelSize{22, 22}));
}

TEST_F(XEmbedItemTest, AsksForASquareInAVerticalTray)
{
    startTray({.vertical = true});
    show();
    ASSERT_TRUE(docks());
    EXPECT_EQ(tray->leastSize(), (PixelSize{22, 22}));
}

TEST_F(XEmbedItemTest, FollowsAPanelThatIsMovedToAnotherEdge)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    tray->setOrientation(true);
    EXPECT_TRUE(runUntil([&] { return tray->iconSize() == PixelSize{22, 22}; }));
}

TEST_F(XEmbedItemTest, DrawsTwiceAsLargeInAPanelTwiceAsHigh)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    tray->resizeIcons(44);
    EXPECT_TRUE(runUntil([&] { return tray->iconSize() == PixelSize{220, 44}; }));
    EXPECT_TRUE(middleBecomes(0xffffff));
    EXPECT_GE(picturesWanted, 1);
}

TEST_F(XEmbedItemTest, AsksForMoreRoomWhenThePictureGrows)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    picture = BlockPicture(130.0);
    show();
    EXPECT_TRUE(runUntil([&] { return tray->iconSize() == PixelSize{130, 22}; }));
}

TEST_F(XEmbedItemTest, WaitsForATrayThatComesLater)
{
    show();
    EXPECT_EQ(picturesWanted, 0);
    startTray();
    ASSERT_TRUE(docks());
    EXPECT_GE(picturesWanted, 1);
    EXPECT_TRUE(middleBecomes(0xffffff));
}

TEST_F(XEmbedItemTest, OutlivesATrayAndDocksIntoTheNext)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    tray.reset();
    ASSERT_TRUE(runUntil([&] { return picturesWanted > 0; }));
    startTray();
    ASSERT_TRUE(docks());
    EXPECT_TRUE(middleBecomes(0xffffff));
}

TEST_F(XEmbedItemTest, MovesToATrayThatTakesOverFromAnother)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    FakeTray successor(display(), {});
    EXPECT_TRUE(runUntil([&] { return successor.docked() == 1; }));
    EXPECT_TRUE(runUntil([&] { return !tray->iconExists(); }));
}

TEST_F(XEmbedItemTest, LeavesNoStrayWindowWhenTheTrayPutsItOut)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    ASSERT_TRUE(middleBecomes(0xffffff));
    tray->putOut();
    EXPECT_TRUE(runUntil([&] { return !tray->iconExists(); }));
}

TEST_F(XEmbedItemTest, TakesItsWindowAwayWhenHiddenAndComesBackWhenShown)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    item->hide();
    EXPECT_TRUE(runUntil([&] { return !tray->iconExists(); }));
    show();
    EXPECT_TRUE(docks(2));
}

TEST_F(XEmbedItemTest, TellsTrayMemoryOneNameAndScreenReadersTheReading)
{
    startTray();
    show();
    ASSERT_TRUE(runUntil([&] { return tray->iconName() == "12.3 watts"; }));
    EXPECT_EQ(tray->nameAtDocking(), "Amperly");
    spokenLabel = "13 watts";
    show();
    EXPECT_TRUE(runUntil([&] { return tray->iconName() == "13 watts"; }));
}

TEST_F(XEmbedItemTest, RedrawsInTheNewInkWhenToldOfIt)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    ASSERT_TRUE(middleBecomes(0xffffff));
    ink = Ink{0xff112233};
    item->inkChanged();
    EXPECT_TRUE(middleBecomes(0x112233));
}

TEST_F(XEmbedItemTest, ColoursThatItsTrayStatesAreHeardWhileItIsDocked)
{
    startTray();
    const std::unique_ptr<X11TrayColors> colors = X11TrayColors::create();
    colors->onChanged([&] {
        ink = colors->ink().value_or(ink);
        item->inkChanged();
    });
    show();
    ASSERT_TRUE(docks());
    ASSERT_TRUE(middleBecomes(0xffffff));
    tray->stateColors(); // black
    EXPECT_TRUE(middleBecomes(0x000000));
}

TEST_F(XEmbedItemTest, HandsClicksOnWithWhereTheyWere)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    tray->click(1, 5, 6);
    tray->click(2, 7, 8);
    tray->click(3, 9, 10);
    ASSERT_TRUE(runUntil([&] { return clicks.size() == 3; }));
    EXPECT_EQ(clicks[0].button, ClickButton::Left);
    EXPECT_EQ(clicks[0].anchor, (ScreenPoint{105, 206}));
    EXPECT_EQ(clicks[1].button, ClickButton::Left);
    EXPECT_EQ(clicks[2].button, ClickButton::Right);
    EXPECT_EQ(clicks[2].anchor, (ScreenPoint{109, 210}));
}

TEST_F(XEmbedItemTest, IgnoresTheWheelAndButtonsLetGoElsewhere)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    tray->click(4, 5, 5);
    tray->click(1, 5, 40);
    tray->click(1, -1, 5);
    tray->click(3, 9, 10);
    ASSERT_TRUE(runUntil([&] { return !clicks.empty(); }));
    EXPECT_EQ(clicks.size(), 1U);
    EXPECT_EQ(clicks[0].button, ClickButton::Right);
}

TEST_F(XEmbedItemTest, ShowsItsToolTipWhileThePointerRestsOnIt)
{
    startTray();
    show();
    ASSERT_TRUE(docks());
    ASSERT_TRUE(middleBecomes(0xffffff));
    tray->movePointerOntoIcon();
    ASSERT_TRUE(runUntil([] { return QToolTip::isVisible(); }));
    EXPECT_EQ(QToolTip::text(), "12.3 W");
    toolTip = "<13 W>";
    show();
    EXPECT_EQ(QToolTip::text(), "<13 W>");
    tray->movePointerAway();
    EXPECT_TRUE(runUntil([] { return !QToolTip::isVisible(); }));
}

TEST_F(XEmbedItemTest, HasNoToolTipToShowWithoutAText)
{
    startTray();
    toolTip.reset();
    show();
    ASSERT_TRUE(docks());
    ASSERT_TRUE(middleBecomes(0xffffff));
    tray->movePointerOntoIcon();
    settle();
    EXPECT_FALSE(QToolTip::isVisible());
    tray->movePointerAway();
}

TEST_F(XEmbedItemTest, AsksForNoInkWhileNothingIsToBeDrawn)
{
    startTray();
    int inksAskedFor = 0;
    item = XEmbedItem::create({.ink = [&] {
        ++inksAskedFor;
        return Ink{0xffffffff};
    }});
    show();
    ASSERT_TRUE(docks());
    ASSERT_TRUE(middleBecomes(0xffffff));
    settle();
    const int before = inksAskedFor;
    spokenLabel = "the same picture with other words";
    toolTip = "other words";
    settle();
    EXPECT_EQ(inksAskedFor, before);
}

} // namespace
} // namespace amperly
