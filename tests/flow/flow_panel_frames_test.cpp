// When the panel asks for frames and paints: as long as something in it moves, and no longer.
#include "tests/flow/panel_fixture.h"

#include <QEvent>

namespace amperly {
namespace {

/// How often any widget was painted.
class PaintCount : public QObject {
public:
    PaintCount() { qApp->installEventFilter(this); }

    [[nodiscard]] int value() const { return m_value; }

    bool eventFilter(QObject*, QEvent* event) override
    {
        m_value += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int m_value = 0;
};

class FlowPanelFramesTest : public PanelTest {
protected:
    /// At once, where a window system would choose its time.
    void paintWhatAsksForIt() const
    {
        QEvent request(QEvent::UpdateRequest);
        QApplication::sendEvent(panel.get(), &request);
    }
};

TEST_F(FlowPanelFramesTest, TheyComeWhileItShowsAReading)
{
    open();
    EXPECT_FALSE(clock.isRunning());
    read(kCharging);
    EXPECT_TRUE(clock.isRunning());
    read(std::nullopt);
    EXPECT_FALSE(clock.isRunning());
}

TEST_F(FlowPanelFramesTest, HiddenItAsksForNoFrames)
{
    openWith(kCharging);
    EXPECT_TRUE(clock.isRunning());
    panel->hide();
    EXPECT_FALSE(clock.isRunning());
    panel->show();
    EXPECT_TRUE(clock.isRunning());
    panel.reset();
    EXPECT_FALSE(clock.isRunning());
}

TEST_F(FlowPanelFramesTest, WhoWantsNoMotionSeesTheReadingAtOnceAndNoFrames)
{
    display.setReducesMotion(true);
    openWith(kCharging);
    EXPECT_FALSE(clock.isRunning());
    EXPECT_EQ(panel->diagram()->appearance(), 1.0);
    EXPECT_EQ(panel->diagram()->animator().chargerToMac(), 14.2);

    const QImage before = picture();
    read(kOnBattery);
    EXPECT_FALSE(panel->header()->headline().figure().isRolling());
    EXPECT_EQ(panel->diagram()->animator().batteryToMac(), 8.6);
    EXPECT_NE(picture(), before);
}

TEST_F(FlowPanelFramesTest, AnOpenPanelComesToRestAndMovesAgainAsTheUserWishes)
{
    openWith(kCharging);
    const auto tell = [this] {
        QEvent change(QEvent::PaletteChange);
        QApplication::sendEvent(panel.get(), &change);
    };
    display.setReducesMotion(true);
    tell();
    EXPECT_FALSE(clock.isRunning());
    EXPECT_EQ(panel->diagram()->appearance(), 1.0);
    display.setReducesMotion(false);
    tell();
    EXPECT_TRUE(clock.isRunning());
}

TEST_F(FlowPanelFramesTest, WithoutMotionAReadingThatIsTheSameAgainPaintsNothing)
{
    display.setReducesMotion(true);
    openWith(kCharging);
    paintWhatAsksForIt();
    const PaintCount count;
    read(kOnBattery);
    paintWhatAsksForIt();
    const int once = count.value();
    EXPECT_GT(once, 0);
    read(kOnBattery);
    paintWhatAsksForIt();
    EXPECT_EQ(count.value(), once);
}

} // namespace
} // namespace amperly
