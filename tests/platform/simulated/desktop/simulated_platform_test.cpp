#include "platform/simulated/desktop/simulated_platform.h"

#include "platform/memory_preference_store.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QWidget>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace amperly {
namespace {

using testing::ElementsAre;

class SimulatedPlatformTest : public testing::Test {
protected:
    MemoryPreferenceStore preferences;
    SimulatedPlatform simulated{preferences};
    Platform platform = simulated.platform();
};

TEST_F(SimulatedPlatformTest, TheProgramBorrowsTheParts)
{
    EXPECT_EQ(&platform.power, &simulated.power);
    EXPECT_EQ(&platform.preferences, &preferences);
    EXPECT_EQ(&platform.timers, &simulated.timers);
    EXPECT_EQ(&platform.statusItem, &simulated.statusItem);
    EXPECT_EQ(&platform.popover, &simulated.popover);
    EXPECT_EQ(&platform.loginItem, &simulated.loginItem);
    EXPECT_EQ(&platform.desktop, &simulated.desktop);
    EXPECT_EQ(&platform.frames, &simulated.frames);
    EXPECT_EQ(&platform.display, &simulated.display);
}

TEST_F(SimulatedPlatformTest, ReadingsAreThoseThatWereGivenLast)
{
    std::vector<double> loads;
    const auto timer = platform.timers.start(
        2.0, 0.5, [&] { loads.push_back(platform.power.read().value_or(PowerSample{}).systemLoad); });
    simulated.advance(2.0);
    simulated.power.give(PowerSample{.systemLoad = 12.0});
    simulated.advance(2.0);
    EXPECT_THAT(loads, ElementsAre(0.0, 12.0));
    EXPECT_EQ(simulated.power.readings(), 2);
    simulated.power.give(std::nullopt);
    EXPECT_EQ(platform.power.read(), std::nullopt);
}

class RecordingPopoverHostTest : public testing::Test {
protected:
    RecordingPopoverHostTest()
    {
        host.onDidClose([this] {
            ++closings;
            shownWhenClosed = host.isShown();
        });
    }

    QPointer<QWidget> show(std::optional<ScreenPoint> anchor = std::nullopt)
    {
        auto content = std::make_unique<QWidget>();
        const QPointer<QWidget> watched(content.get());
        host.show(std::move(content), anchor);
        return watched;
    }
    static void letTheEventLoopRun() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    RecordingPopoverHost host;
    int closings = 0;
    bool shownWhenClosed = true;
};

TEST_F(RecordingPopoverHostTest, ShowsItsContentAsAWindow)
{
    const QPointer<QWidget> content = show(ScreenPoint{5, 6});
    EXPECT_TRUE(host.isShown());
    EXPECT_EQ(host.content(), content);
    EXPECT_TRUE(content->isVisible());
    EXPECT_EQ(host.anchor(), (ScreenPoint{5, 6}));
    EXPECT_EQ(closings, 0);
}

TEST_F(RecordingPopoverHostTest, ClosingIsToldOnceAndNothingIsShownThen)
{
    const QPointer<QWidget> content = show();
    host.dismiss();
    host.close();
    EXPECT_EQ(closings, 1);
    EXPECT_FALSE(shownWhenClosed);
    EXPECT_EQ(host.content(), nullptr);
    letTheEventLoopRun();
    EXPECT_TRUE(content.isNull());
}

TEST_F(RecordingPopoverHostTest, ShowingClosesWhatWasShown)
{
    const QPointer<QWidget> first = show();
    const QPointer<QWidget> second = show();
    EXPECT_EQ(closings, 1);
    EXPECT_EQ(host.content(), second);
    EXPECT_EQ(host.showings(), 2);
    letTheEventLoopRun();
    EXPECT_TRUE(first.isNull());
    EXPECT_FALSE(second.isNull());
}

TEST_F(RecordingPopoverHostTest, ContentMayCloseThePopoverFromWithinItsOwnEvents)
{
    struct SelfClosing : QWidget {
        explicit SelfClosing(RecordingPopoverHost& popover) : host(popover) { }
        bool event(QEvent* event) override
        {
            if (event->type() != QEvent::User)
                return QWidget::event(event);
            host.close();
            stillThere = isEnabled(); // touches this object after the closing
            return true;
        }
        RecordingPopoverHost& host;
        bool stillThere = false;
    };
    auto content = std::make_unique<SelfClosing>(host);
    SelfClosing* const closing = content.get();
    host.show(std::move(content), std::nullopt);
    QEvent press(QEvent::User);
    QCoreApplication::sendEvent(closing, &press);
    EXPECT_TRUE(closing->stillThere);
    EXPECT_FALSE(host.isShown());
}

TEST_F(RecordingPopoverHostTest, EndOfTheHostTakesItsContentAlong)
{
    auto other = std::make_unique<RecordingPopoverHost>();
    auto first = std::make_unique<QWidget>();
    auto second = std::make_unique<QWidget>();
    const QPointer<QWidget> leaving(first.get());
    const QPointer<QWidget> shown(second.get());
    other->show(std::move(first), std::nullopt);
    other->show(std::move(second), std::nullopt);
    other.reset();
    EXPECT_TRUE(leaving.isNull());
    EXPECT_TRUE(shown.isNull());
}

} // namespace
} // namespace amperly
