#include "flow/motion.h"
#include "tests/flow/diagram_fixture.h"
#include "tests/support/allocation_count.h"

namespace amperly {
namespace {

using FlowDiagramTest = DiagramTest;

TEST_F(FlowDiagramTest, BeforeItsFirstFrameNothingIsSeen)
{
    make(kCharging);
    const QImage picture = shown();
    for (int y = 0; y < picture.height(); y += 7) {
        for (int x = 0; x < picture.width(); x += 7)
            ASSERT_EQ(picture.pixelColor(x, y), ground());
    }
}

TEST_F(FlowDiagramTest, GrowsInFromTheFirstFrameOnAndComesToRest)
{
    make(kCharging);
    diagram->advance(now);
    EXPECT_EQ(diagram->appearance(), 0.0);
    play(0.1);
    EXPECT_GT(diagram->appearance(), 0.1);
    EXPECT_LT(diagram->appearance(), 0.9);
    play(0.24);
    EXPECT_GT(diagram->appearance(), 1.0);
    play(1.0);
    EXPECT_EQ(diagram->appearance(), 1.0);
}

TEST_F(FlowDiagramTest, ItGrowsAsASpringDoes)
{
    make(kCharging);
    diagram->advance(now);
    constexpr Spring kSpring{.response = 0.45, .damping = 0.75};
    for (int frame = 0; frame < 50; ++frame) {
        diagram->advance(now + 0.01 * frame);
        EXPECT_NEAR(diagram->appearance(), kSpring.at(0.01 * frame), 1e-6) << frame;
    }
}

TEST_F(FlowDiagramTest, NodesAreWhereTheLayoutHasThem)
{
    make(kCharging);
    EXPECT_EQ(diagram->nodeRect(FlowDiagram::Node::Charger), QRect(16, 18, 84, 74));
    EXPECT_EQ(diagram->nodeRect(FlowDiagram::Node::Computer), QRect(240, 18, 84, 74));
    EXPECT_EQ(diagram->nodeRect(FlowDiagram::Node::Battery), QRect(128, 140, 84, 74));
}

TEST_F(FlowDiagramTest, AFlowIsDrawnBetweenItsNodes)
{
    make(kCharging);
    play(3.0);
    const QColor tube = colorAt(154.0, 41.0);
    EXPECT_GT(tube.green(), tube.red());
    EXPECT_GT(tube.green(), tube.blue());
    EXPECT_NE(tube, ground());
}

TEST_F(FlowDiagramTest, AFlowThatHasDecayedIsNotDrawn)
{
    make(kCharging);
    play(3.0);
    EXPECT_NE(colorAt(154.0, 41.0), ground());
    diagram->setSample(kOnBattery);
    play(4.0);
    EXPECT_LE(diagram->animator().chargerToMac(), kLeastDrawnWatts);
    EXPECT_EQ(colorAt(154.0, 41.0), ground());
}

TEST_F(FlowDiagramTest, NewSamplesDoNotRestartTheAnimation)
{
    make(kCharging);
    play(2.0);
    const double travelled = diagram->animator().travelled()[0];
    diagram->setSample(kOnBattery);
    EXPECT_EQ(diagram->appearance(), 1.0);
    EXPECT_EQ(diagram->animator().travelled()[0], travelled);
}

TEST_F(FlowDiagramTest, AnActiveNodeBreathesAndAnInactiveOneDoesNot)
{
    make(kOnBattery);
    const FlowNode& computer = diagram->node(FlowDiagram::Node::Computer);
    EXPECT_NEAR(computer.glowOpacity(0.0), 0.1, 1e-9);
    EXPECT_NEAR(computer.glowOpacity(1.4), 0.24, 1e-9);
    EXPECT_NEAR(computer.glowOpacity(2.8), 0.38, 1e-9);
    EXPECT_NEAR(computer.glowOpacity(5.6), 0.1, 1e-9);
    const FlowNode& charger = diagram->node(FlowDiagram::Node::Charger);
    EXPECT_EQ(charger.glowOpacity(0.0), 0.05);
    EXPECT_EQ(charger.glowOpacity(2.8), 0.05);
}

TEST_F(FlowDiagramTest, TheGlowSwellsAroundTheNode)
{
    make(kOnBattery);
    play(2.0);
    const QImage faint = shown();
    play(0.8);
    const QImage bright = shown();
    const QPoint beside(240 - 4, 18 + 20); // left of the computer
    const auto saturation = [&](const QImage& picture) { return picture.pixelColor(beside).hsvSaturation(); };
    EXPECT_GT(saturation(bright), saturation(faint));
}

TEST_F(FlowDiagramTest, AnInactiveNodeIsDrawnAtLittleMoreThanHalfItsOpacity)
{
    make(kOnBattery);
    diagram->settle();
    // The dash that stands for its value is the darkest thing in it.
    const QRect charger = diagram->nodeRect(FlowDiagram::Node::Charger);
    const QImage picture = shown();
    int darkest = 255;
    for (int y = charger.top(); y < charger.bottom(); ++y) {
        for (int x = charger.left(); x < charger.right(); ++x)
            darkest = std::min(darkest, qGray(picture.pixel(x, y)));
    }
    EXPECT_NEAR(darkest, qGray(ground().rgb()) * (1.0 - 0.55), 4.0);
}

TEST_F(FlowDiagramTest, TheComputerHasTheDesktopsOwnColor)
{
    make(kOnBattery);
    EXPECT_NEAR(diagram->node(FlowDiagram::Node::Computer).content().tint.blue, 0xc6 / 255.0, 0.01);
    QPalette pink = lightPalette();
    pink.setColor(QPalette::Highlight, QColor(0xd0, 0x20, 0x80));
    diagram->setPalette(pink);
    EXPECT_NEAR(diagram->node(FlowDiagram::Node::Computer).content().tint.red, 0xd0 / 255.0, 0.01);
}

TEST_F(FlowDiagramTest, SettledItShowsTheSampleWithoutAnyFrame)
{
    make(kCharging);
    diagram->settle();
    EXPECT_NE(colorAt(154.0, 41.0), ground());
    const QImage once = shown();
    diagram->settle();
    EXPECT_EQ(shown(), once);
}

TEST_F(FlowDiagramTest, EveryNodeBeginsOnAWholePixelAtEveryScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        make({.systemLoad = 5.0, .batteryKnown = false});
        diagram->settle();
        const QImage picture = shown(scale);
        // The computer's right border: one column is the line, the next is glow alone.
        const int right = static_cast<int>(std::lround((16 + 308) * scale));
        const int middle = static_cast<int>((14 + 41) * scale);
        const auto distance = [&](int x) {
            const QColor one = picture.pixelColor(x, middle);
            const QColor other = picture.pixelColor(x + 1, middle);
            return std::abs(one.red() - other.red());
        };
        EXPECT_GT(distance(right - 1), 4 * distance(right + 1)) << scale;
    }
}

TEST_F(FlowDiagramTest, PicturesAreDrawnAnewForAScreenOfAnotherScale)
{
    make(kCharging);
    diagram->settle();
    static_cast<void>(shown(1.0));
    const QImage moved = shown(2.0);
    make(kCharging);
    diagram->settle();
    EXPECT_EQ(shown(2.0), moved);
}

TEST_F(FlowDiagramTest, AValueThatBeginsToRollStaysOnItsPixels)
{
    // One node has power and one has not, and none begins on a whole pixel.
    PowerSample sample{.systemLoad = 14.2, .adapterIn = 0.3, .battery = -14.2, .externalConnected = true};
    QWidget window;
    window.resize(400, 300);
    for (int offset = 0; offset < 4; ++offset) {
        make(sample);
        diagram->setParent(&window);
        diagram->move(offset, offset);
        play(3.0);
        const QImage before = pictureOf(window, 1.25);
        PowerSample other = sample;
        other.systemLoad = 15.3;
        other.adapterIn = 0.4;
        diagram->setSample(other);
        diagram->advance(now);
        EXPECT_EQ(pictureOf(window, 1.25), before) << offset;
        diagram.reset();
    }
}

TEST_F(FlowDiagramTest, AFramesStepTakesNothingFromTheHeapButTheWishToBePainted)
{
    make(kCharging);
    play(2.0);
    const AllocationCount count;
    diagram->advance(now += 1.0 / 60.0);
    EXPECT_LE(count.value(), 1);
}

} // namespace
} // namespace amperly
