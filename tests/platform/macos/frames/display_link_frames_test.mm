#include "platform/macos/frames/display_link_frames.h"

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

    DisplayLinkFrames frames{
        [](QWidget&) { return [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 340, 380)]; }};
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

TEST_F(DisplayLinkFramesTest, ToSparePowerThereAreHalfAsMany)
{
    auto run = start();
    EXPECT_EQ(stage.frameRate, DisplayLinkFrames::kUsualRate);
    stage.system.savesPower = true;
    run = start();
    EXPECT_EQ(stage.frameRate, DisplayLinkFrames::kGentleRate);
}

} // namespace
} // namespace amperly
