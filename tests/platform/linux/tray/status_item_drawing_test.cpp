// How the item is drawn for each kind of host, and when it is drawn again.
#include "platform/linux/tray/desktop_ink.h"
#include "tests/platform/linux/tray/second_screen.h"
#include "tests/platform/linux/tray/status_item_fixture.h"
#include "tests/support/run_until.h"

#include <QGuiApplication>
#include <QPalette>
#include <gmock/gmock.h>

namespace amperly {
namespace {

using test::FakePicture;
using test::Heard;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::UnorderedElementsAre;

constexpr Ink kOther{0xffa0b0c0};

class StatusItemDrawingTest : public test::StatusItemFixture {
protected:
    /// What the items' first pixmaps were drawn from, in the order of registration.
    std::vector<int> tileCoverages(std::size_t items)
    {
        std::vector<int> coverages;
        for (std::size_t place = panel->items().size() - items; place < panel->items().size(); ++place)
            coverages.push_back(panel->pixmaps(panel->items()[place]).front().bytes[0]);
        return coverages;
    }
};

TEST_F(StatusItemDrawingTest, OtherInkRepaintsWithoutDrawing)
{
    startOn("mate-panel");
    const std::string name = onlyItem();
    static_cast<void>(panel->heard());
    const int drawings = picture.drawings;
    ink.become(kOther);
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{name, "NewIcon"}));
    EXPECT_THAT(panel->pixmaps(name)[2].firstPixel(), ElementsAre(4, 0xa0, 0xb0, 0xc0));
    EXPECT_EQ(picture.drawings, drawings);
}

TEST_F(StatusItemDrawingTest, PaletteThatChangesRepaintsWithoutWaitingForATick)
{
    DesktopInk paletteInk(nullptr);
    inkInForce = &paletteInk;
    startOn("plasmashell");
    const std::string name = onlyItem();
    static_cast<void>(panel->heard());
    QPalette palette;
    palette.setColor(QPalette::WindowText, QColor(0xa0, 0xb0, 0xc0));
    QGuiApplication::setPalette(palette);
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{name, "NewIcon"}));
    EXPECT_THAT(panel->pixmaps(name)[0].firstPixel(), ElementsAre(4, 0xa0, 0xb0, 0xc0));
    QGuiApplication::setPalette(QPalette());
    item.reset();
}

TEST_F(StatusItemDrawingTest, SamePictureIsDrawnAgainForScreensOfAnotherScale)
{
    startOn("panel-2-systray");
    EXPECT_EQ(panel->pixmaps(onlyItem()).front().width, 22);
    {
        const test::SecondScreen screen(2.0);
        EXPECT_TRUE(runUntil([&] { return panel->pixmaps(onlyItem()).front().width == 44; }));
    }
    EXPECT_TRUE(runUntil([&] { return panel->pixmaps(onlyItem()).front().width == 22; }));
}

TEST_F(StatusItemDrawingTest, ScreenThatChangesItsScaleGetsItsOwnPicture)
{
    test::SecondScreen screen(1.0);
    startOn("panel-2-systray");
    EXPECT_EQ(panel->pixmaps(onlyItem()).front().width, 22);
    screen.become(2.0);
    EXPECT_TRUE(runUntil([&] { return panel->pixmaps(onlyItem()).front().width == 44; }));
}

TEST_F(StatusItemDrawingTest, ScreenOfTheSameScaleIsNoNews)
{
    startOn("panel-2-systray");
    static_cast<void>(panel->pixmaps(onlyItem()));
    const int drawings = picture.drawings;
    const test::SecondScreen screen(1.0);
    QCoreApplication::processEvents();
    EXPECT_EQ(picture.drawings, drawings);
}

TEST_F(StatusItemDrawingTest, FallbackLearnsOfOtherInkAsWell)
{
    startUnder("waybar");
    ASSERT_TRUE(runUntil([&] { return fallback.shown; }));
    ink.become(kOther);
    EXPECT_EQ(fallback.inks, 1);
}

TEST_F(StatusItemDrawingTest, TitlesPutTheTilesInOrderOnPlasma)
{
    picture = FakePicture({"1", "22", "333"});
    startOn("plasmashell");
    ASSERT_TRUE(panel->sees(3));
    EXPECT_EQ(panel->textProperty(panel->items()[0], "Title"), "Amperly");
    EXPECT_EQ(panel->textProperty(panel->items()[1], "Title"), "Amperly 2");
    EXPECT_EQ(panel->textProperty(panel->items()[2], "Title"), "Amperly 3");
}

TEST_F(StatusItemDrawingTest, TilesAreOfOneTitleWhereNobodySortsThem)
{
    picture = FakePicture({"1", "22"});
    startOn("lxqt-panel");
    ASSERT_TRUE(panel->sees(2));
    EXPECT_EQ(panel->textProperty(panel->items()[1], "Title"), "Amperly");
}

TEST_F(StatusItemDrawingTest, SquareHostGetsATileForEachReadingInReadingOrder)
{
    picture = FakePicture({"1", "22", "333"});
    startOn("kded5");
    ASSERT_TRUE(panel->sees(3));
    EXPECT_THAT(tileCoverages(3), ElementsAre(1, 2, 3));
    EXPECT_THAT(panel->items(), testing::Each(testing::StartsWith(":")));
    EXPECT_NE(panel->items()[0], panel->items()[1]);
}

TEST_F(StatusItemDrawingTest, HostThatPutsTheLastFirstGetsTheTilesBackwards)
{
    picture = FakePicture({"1", "22", "333"});
    startOn("panel-2-systray");
    ASSERT_TRUE(panel->sees(3));
    EXPECT_THAT(tileCoverages(3), ElementsAre(3, 2, 1));
}

TEST_F(StatusItemDrawingTest, HostThatTakesTheLargestPixmapGetsTheFittingOneOnly)
{
    startOn("panel-2-systray");
    const std::vector<test::Pixmap> pixmaps = panel->pixmaps(onlyItem());
    ASSERT_EQ(pixmaps.size(), 1U);
    EXPECT_EQ(pixmaps[0].width, 22);
    EXPECT_EQ(pixmaps[0].height, 22);
}

TEST_F(StatusItemDrawingTest, ReadingThatAppearsIsRegisteredInItsPlace)
{
    picture = FakePicture({"1", "333"});
    startOn("panel-2-systray");
    ASSERT_TRUE(panel->sees(2));
    show({"1", "22", "333"});
    ASSERT_TRUE(panel->sees(3));
    EXPECT_THAT(tileCoverages(3), ElementsAre(3, 2, 1));
}

TEST_F(StatusItemDrawingTest, HostThatTellsItemsApartByPathGetsThemFromOneConnection)
{
    picture = FakePicture({"1", "22"});
    startOn("panel-2-systray");
    ASSERT_TRUE(panel->sees(2));
    const auto connection = [](const std::string& address) { return address.substr(0, address.find('/')); };
    EXPECT_EQ(connection(panel->items()[0]), connection(panel->items()[1]));
    EXPECT_NE(panel->items()[0], panel->items()[1]);
}

TEST_F(StatusItemDrawingTest, ItemOfASharedConnectionStepsAsideWithItsReadingAndComesBack)
{
    picture = FakePicture({"1", "22"});
    startOn("panel-2-systray");
    ASSERT_TRUE(panel->sees(2));
    const std::string last = panel->items()[1];
    static_cast<void>(panel->heard());
    show({"22"});
    EXPECT_THAT(panel->heard(), UnorderedElementsAre(Heard{last, "NewStatus"}));
    EXPECT_EQ(panel->textProperty(last, "Status"), "Passive");
    EXPECT_EQ(panel->textProperty(panel->items()[0], "Status"), "Active");
    EXPECT_EQ(panel->pixmaps(panel->items()[0]).front().bytes[0], 2);
    show({"333", "22"});
    EXPECT_THAT(panel->heard(), Contains(Heard{last, "NewStatus"}));
    EXPECT_EQ(panel->textProperty(last, "Status"), "Active");
    EXPECT_THAT(tileCoverages(2), ElementsAre(2, 3));
    EXPECT_TRUE(panel->sees(2)) << "registered once";
}

TEST_F(StatusItemDrawingTest, ReadingThatDisappearsLeavesTheBus)
{
    picture = FakePicture({"1", "22"});
    startOn("kded5");
    ASSERT_TRUE(panel->sees(2));
    show({"1"});
    EXPECT_TRUE(runUntil([&] { return !panel->isThere(panel->items()[1]); }));
    EXPECT_TRUE(panel->isThere(panel->items()[0]));
}

TEST_F(StatusItemDrawingTest, OnlyTheTileWhoseReadingChangedIsSaid)
{
    picture = FakePicture({"1", "22"});
    startOn("kded5");
    ASSERT_TRUE(panel->sees(2));
    static_cast<void>(panel->heard());
    show({"1", "4444"});
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{panel->items()[1], "NewIcon"}));
}

TEST_F(StatusItemDrawingTest, GnomeGetsTheGlyphWithTheReadingsBesideIt)
{
    picture = FakePicture({"12.3 W", "", "65 W"});
    startOn("gnome-shell");
    const std::string& name = onlyItem();
    EXPECT_EQ(panel->textProperty(name, "XAyatanaLabel"), "12.3 W \u00b7 65 W");
    EXPECT_EQ(panel->pixmaps(name).front().bytes[0], FakePicture::kGlyph);
}

TEST_F(StatusItemDrawingTest, GlyphIsOfTheSizeThatGnomeShowsUnscaled)
{
    startOn("gnome-shell");
    const std::vector<test::Pixmap> glyphs = panel->pixmaps(onlyItem());
    ASSERT_EQ(glyphs.size(), 2U);
    EXPECT_EQ(glyphs[0].width, 16);
    EXPECT_EQ(glyphs[1].width, 32);
}

TEST_F(StatusItemDrawingTest, OnlyGnomeFindsALabel)
{
    startOn("gnome-shell");
    EXPECT_THAT(panel->propertyNames(onlyItem()), Contains("XAyatanaLabel"));
}

TEST_F(StatusItemDrawingTest, NobodyElseFindsALabelWhichMateShowsInsteadOfTheIcon)
{
    startOn("mate-panel");
    const std::vector<std::string> names = panel->propertyNames(onlyItem());
    EXPECT_THAT(names, Contains("IconPixmap"));
    EXPECT_THAT(names, Not(Contains("XAyatanaLabel")));
    EXPECT_THAT(names, Not(Contains("XAyatanaLabelGuide")));
}

TEST_F(StatusItemDrawingTest, ChangedReadingIsSaidAsALabelOnGnome)
{
    startOn("gnome-shell");
    const std::string name = onlyItem();
    static_cast<void>(panel->heard());
    spokenLabel = "Mac using 14 watts";
    show({"14.0"});
    EXPECT_THAT(panel->heard(),
        UnorderedElementsAre(Heard{name, "XAyatanaNewLabel"}, Heard{name, "PropertiesChanged"}));
}

} // namespace
} // namespace amperly
