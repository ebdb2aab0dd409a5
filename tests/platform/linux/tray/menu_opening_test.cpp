#include "platform/linux/tray/menu_opening.h"

#include "tests/support/run_until.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace amperly {
namespace {

using namespace std::chrono_literals;

class MenuOpeningTest : public testing::Test {
protected:
    MenuOpeningTest()
    {
        menu.willOpen = [this] { ++openings; };
        menu.didClose = [this] { ++closings; };
    }

    void asksAt(std::chrono::milliseconds time) { opening.aboutToShow(this, MenuOpening::TimePoint{time}); }

    Menu menu;
    MenuOpening opening{menu};
    int openings = 0;
    int closings = 0;
};

TEST_F(MenuOpeningTest, OneOpeningIsAnnouncedOnce)
{
    asksAt(10s);
    opening.opened(this);
    EXPECT_EQ(openings, 1);
    EXPECT_EQ(closings, 0);
    opening.closed();
    EXPECT_EQ(closings, 1);
}

TEST_F(MenuOpeningTest, QuestionsThatFollowAtOnceAreAboutTheSameOpening)
{
    asksAt(10s);
    asksAt(10s + 999ms);
    EXPECT_EQ(openings, 1);
    EXPECT_EQ(closings, 0);
}

TEST_F(MenuOpeningTest, LaterQuestionIsTheNextOpeningOfAMenuThatClosedWithoutAWord)
{
    asksAt(10s);
    opening.opened(this);
    asksAt(11s);
    EXPECT_EQ(openings, 2);
    EXPECT_EQ(closings, 1);
}

TEST_F(MenuOpeningTest, QuestionRightAfterClosingIsANewOpening)
{
    asksAt(10s);
    opening.closed();
    asksAt(10s + 1ms);
    EXPECT_EQ(openings, 2);
}

TEST_F(MenuOpeningTest, HostThatOnlySaysOpenedIsHeard)
{
    opening.opened(this);
    EXPECT_EQ(openings, 1);
    EXPECT_TRUE(opening.isOpen());
}

TEST_F(MenuOpeningTest, ClosingWhatIsNotOpenIsNotAnnounced)
{
    opening.closed();
    EXPECT_EQ(closings, 0);
}

TEST_F(MenuOpeningTest, QuestionThatNothingFollowsDoesNotCountForLong)
{
    asksAt(10s);
    EXPECT_TRUE(opening.isUnconfirmed());
    opening.opened(this);
    EXPECT_FALSE(opening.isUnconfirmed());
}

TEST_F(MenuOpeningTest, MenuOfWhichNothingIsHeardCountsAsClosedInTheEnd)
{
    MenuOpening forgetful(menu, 1ms);
    forgetful.aboutToShow(this, MenuOpening::TimePoint{10s});
    EXPECT_TRUE(forgetful.isOpen());
    EXPECT_TRUE(runUntil([&] { return closings == 1; }));
    EXPECT_FALSE(forgetful.isOpen());
    EXPECT_EQ(openings, 1);
}

TEST_F(MenuOpeningTest, MenuThatAHostSaysItShowsStaysOpenUntilItSaysOtherwise)
{
    MenuOpening forgetful(menu, 1ms);
    forgetful.aboutToShow(this, MenuOpening::TimePoint{10s});
    forgetful.opened(this);
    bool later = false;
    QTimer::singleShot(5ms, [&later] { later = true; });
    ASSERT_TRUE(runUntil([&] { return later; }));
    EXPECT_TRUE(forgetful.isOpen());
}

TEST_F(MenuOpeningTest, ChoiceClosesTheMenuAndActsFromTheEventLoop)
{
    int acted = 0;
    MenuEntry entry;
    entry.activate = [&] { ++acted; };
    asksAt(10s);
    opening.choose(entry);
    EXPECT_EQ(closings, 1);
    EXPECT_EQ(acted, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(acted, 1);
    opening.closed(); // as hosts say, too, after a choice
    EXPECT_EQ(closings, 1);
}

TEST_F(MenuOpeningTest, DisabledEntryDoesNotAct)
{
    int acted = 0;
    MenuEntry entry;
    entry.enabled = false;
    entry.activate = [&] { ++acted; };
    opening.choose(entry);
    QCoreApplication::processEvents();
    EXPECT_EQ(acted, 0);
}

} // namespace
} // namespace amperly
