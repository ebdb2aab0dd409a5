#include "platform/macos/frames/display_link_frames.h"

#include "tests/platform/macos/fakes/app_kit.h"
#include "tests/platform/macos/fakes/fake_desktop_test.h"

#include <QWidget>

namespace amperly {
namespace {

class DisplayLinkFramesTest : public FakeDesktopTest {
protected:
    [[nodiscard]] std::unique_ptr<FrameClock::Run> start()
    {
        return frames.start(widget, [this](double seconds) { times.push_back(seconds); });
    }

    [[nodiscard]] std::unique_ptr<FrameClock::Run> startTimer()
    {
        return frameTimers.start(widget, [this](double seconds) { times.push_back(seconds); });
    }

    static NSView* viewInWindow(QWidget&)
    {
        const NSRect frame = NSMakeRect(0, 0, 340, 380);
        NSView* const view = [[NSView alloc] initWithFrame:frame];
        fake_mac::putIntoWindow(view, frame);
        return view;
    }

    DisplayLinkFrames frames{viewInWindow};
    DisplayLinkFrames frameTimers{viewInWindow, DisplayLinkFrames::Source::Timer};
    QWidget widget;
    std::vector<double> times;
};

TEST_F(DisplayLinkFramesTest, EveryPictureOfTheDisplayIsAFrameWithItsTime)
{
    const auto run = start();
    fake_mac::showFrame(100.0);
    fake_mac::showFrame(100.0 + 1.0 / 60.0);
    EXPECT_THAT(times, testing::ElementsAre(100.0, 100.0 + 1.0 / 60.0));
}

TEST_F(DisplayLinkFramesTest, TheRunsEndIsTheLinksEnd)
{
    auto run = start();
    EXPECT_EQ(stage.displayLinks, 1);
    run.reset();
    EXPECT_EQ(stage.displayLinks, 0);
    fake_mac::showFrame(100.0);
    EXPECT_THAT(times, testing::IsEmpty());
}

TEST_F(DisplayLinkFramesTest, AFrameMayEndItsRun)
{
    std::unique_ptr<FrameClock::Run> run;
    run = frames.start(widget, [&, witness = std::string(100, 'w')](double seconds) {
        run.reset();
        EXPECT_EQ(witness.size(), 100U);
        times.push_back(seconds);
    });
    fake_mac::showFrame(100.0);
    fake_mac::showFrame(101.0);
    EXPECT_EQ(times.size(), 1U);
}

TEST_F(DisplayLinkFramesTest, ThereIsAFrameForEveryPictureButToSparePower)
{
    auto run = start();
    EXPECT_EQ(stage.frameRate, 0.0F); // none is preferred
    stage.system.savesPower = true;
    run = start();
    EXPECT_EQ(stage.frameRate, DisplayLinkFrames::kGentleRate);
}

TEST_F(DisplayLinkFramesTest, BeforeThereWereLinksATimerGoesAtTheScreensRate)
{
    const auto run = startTimer();
    EXPECT_EQ(stage.displayLinks, 0);
    EXPECT_EQ(stage.timers, 1);
    EXPECT_NEAR(stage.timerTolerance, 0.1 / 120.0, 1e-9);
    fake_mac::advance(0.0251);
    ASSERT_EQ(times.size(), 3U);
    EXPECT_NEAR(times[1] - times[0], 1.0 / 120.0, 1e-9);
}

TEST_F(DisplayLinkFramesTest, AScreenThatDoesNotSayHasTheUsualRate)
{
    stage.system.framesPerSecond = 0;
    const auto run = startTimer();
    fake_mac::advance(0.0501);
    EXPECT_EQ(times.size(), 3U);
}

TEST_F(DisplayLinkFramesTest, ATimersFramesAreFewerToSparePower)
{
    stage.system.savesPower = true;
    const auto run = startTimer();
    fake_mac::advance(0.1001);
    EXPECT_EQ(times.size(), 3U);
}

TEST_F(DisplayLinkFramesTest, ATimerMakesNoFramesThatNobodySees)
{
    const auto run = startTimer();
    stage.system.windowsAreSeen = false;
    fake_mac::advance(1.0);
    EXPECT_THAT(times, testing::IsEmpty());
}

TEST_F(DisplayLinkFramesTest, ATimersFrameMayEndItsRun)
{
    std::unique_ptr<FrameClock::Run> run;
    run = frameTimers.start(widget, [&, witness = std::string(100, 'w')](double seconds) {
        run.reset();
        EXPECT_EQ(witness.size(), 100U);
        times.push_back(seconds);
    });
    fake_mac::advance(1.0);
    EXPECT_EQ(times.size(), 1U);
    EXPECT_EQ(stage.timers, 0);
}

} // namespace
} // namespace amperly
