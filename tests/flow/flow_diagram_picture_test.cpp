// What the diagram looks like while it appears, and its tubes beside the same ones drawn alone.
#include "tests/flow/diagram_fixture.h"

#include "flow/node_look.h"

#include <QPainter>

#include <cmath>

namespace amperly {
namespace {

class FlowDiagramPictureTest : public DiagramTest {
protected:
    static QPalette blackPalette()
    {
        QPalette palette(Qt::black);
        palette.setColor(QPalette::WindowText, Qt::white);
        palette.setColor(QPalette::Highlight, QColor(0x40, 0xa0, 0xff));
        return palette;
    }

    FlowDiagramPictureTest() { QApplication::setPalette(blackPalette()); }

    /// The tubes alone as they should be at this moment.
    [[nodiscard]] QImage tubesAlone() const
    {
        const DiagramLayout layout = diagramLayout(308.0, 200.0);
        const FlowAnimator& animator = diagram->animator();
        const double full = fullScaleWatts(diagram->sample());
        QImage tubes(diagram->size(), QImage::Format_ARGB32_Premultiplied);
        glass::GlassCanvas canvas;
        canvas.begin(
            {reinterpret_cast<std::uint32_t*>(tubes.bits()), tubes.width(), tubes.height(), tubes.width()},
            1.0);
        const auto draw = [&](Bezier curve, const Color& color, double watts, double travelled) {
            for (FlowPoint* const point : {&curve.p0, &curve.p1, &curve.p2, &curve.p3})
                *point = {point->x + 16.0, point->y + 14.0};
            drawGlassFlow(canvas, curve, color, tubeWidth(watts, full), travelled);
        };
        draw(layout.chargerToMac, FlowColor::charger, animator.chargerToMac(), animator.travelled()[0]);
        draw(layout.chargerToBattery, FlowColor::charging, animator.chargerToBattery(),
            animator.travelled()[1]);
        draw(layout.batteryToMac, FlowColor::draining, animator.batteryToMac(), animator.travelled()[2]);
        canvas.finish();

        QImage picture(diagram->size(), QImage::Format_RGB32);
        picture.fill(ground());
        QPainter(&picture).drawImage(0, 0, tubes);
        return picture;
    }

    /// Whether no node and no glow of one is at a pixel.
    [[nodiscard]] bool isClear(int x, int y) const
    {
        constexpr int kReach = static_cast<int>(kNodeLook.glowReach) + 1;
        for (const auto node :
            {FlowDiagram::Node::Charger, FlowDiagram::Node::Computer, FlowDiagram::Node::Battery}) {
            if (diagram->nodeRect(node).adjusted(-kReach, -kReach, kReach, kReach).contains(x, y))
                return false;
        }
        return true;
    }
};

TEST_F(FlowDiagramPictureTest, EachTubeHasItsOwnColorWidthAndDistance)
{
    // Flows that are far from equal have moved their pulses by different distances; where two of them
    // end and one begins, all three are there.
    make({.systemLoad = 100.0, .adapterIn = 120.0, .battery = 20.0, .externalConnected = true});
    play(4.0);
    diagram->setSample({.systemLoad = 60.0, .battery = -60.0});
    play(0.5);
    const std::array<double, 3>& travelled = diagram->animator().travelled();
    ASSERT_GT(std::abs(travelled[0] - travelled[1]), 5.0);
    ASSERT_GT(std::abs(travelled[1] - travelled[2]), 2.0);
    const QImage picture = shown();
    const QImage expected = tubesAlone();
    std::array<int, 3> colored{}; // pixels that only one of the three flows can have lit so
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (!isClear(x, y))
                continue;
            const QColor color = picture.pixelColor(x, y);
            ASSERT_EQ(color, expected.pixelColor(x, y)) << x << ", " << y;
            constexpr int kLit = 60;
            if (color.value() < kLit)
                continue;
            const int most = color.value();
            colored[color.green() == most ? 0 : color.blue() == most ? 1 : 2] += 1;
        }
    }
    for (const int count : colored)
        EXPECT_GT(count, 200);
}

TEST_F(FlowDiagramPictureTest, AFlowOfExactlyTheLeastIsNotDrawn)
{
    PowerSample sample{.systemLoad = 0.05, .adapterIn = 30.0, .externalConnected = true};
    make(sample);
    diagram->settle();
    EXPECT_EQ(diagram->animator().chargerToMac(), 0.05);
    EXPECT_EQ(colorAt(154.0, 41.0), ground());
    sample.systemLoad = std::nextafter(0.05, 1.0);
    make(sample);
    diagram->settle();
    EXPECT_NE(colorAt(154.0, 41.0), ground());
}

TEST_F(FlowDiagramPictureTest, WhileItAppearsItGrowsFromItsCentre)
{
    make(kOnBattery);
    diagram->advance(now);
    diagram->advance(now += 0.06);
    const double part = diagram->appearance();
    ASSERT_GT(part, 0.1);
    ASSERT_LT(part, 0.4);
    const double size = 0.92 + 0.08 * part;
    constexpr double kScale = 4.0;
    const QImage picture = shown(kScale);
    const auto level = [&](double x, double y) {
        return picture.pixelColor(static_cast<int>(x * kScale), static_cast<int>(y * kScale)).value();
    };
    const auto brightest = [](double from, double to, const auto& levelAt) {
        double best = from;
        for (int pixel = 0; pixel < static_cast<int>((to - from) * kScale); ++pixel) {
            const double place = from + pixel / kScale;
            best = levelAt(place) > levelAt(best) ? place : best;
        }
        return best;
    };
    // The computer's node begins 70 points right of the diagram's centre and 96 above it, and ends 154
    // right of it. Its border is by far the brightest there.
    const double middle = 114.0 - 59.0 * size;
    EXPECT_NEAR(brightest(225, 250, [&](double x) { return level(x, middle); }), 170.0 + 70.5 * size, 0.5);
    EXPECT_NEAR(brightest(300, 335, [&](double x) { return level(x, middle); }), 170.0 + 153.5 * size, 0.5);
    EXPECT_NEAR(brightest(10, 29, [&](double y) { return level(282.0, y); }), 114.0 - 95.5 * size, 0.5);
}

TEST_F(FlowDiagramPictureTest, WhileItAppearsItFadesIn)
{
    make(kOnBattery);
    diagram->advance(now);
    diagram->advance(now += 0.1);
    const double part = diagram->appearance();
    ASSERT_GT(part, 0.3);
    ASSERT_LT(part, 0.7);
    // In the lower left of the computer's node, where nothing is but its sheet.
    const double size = 0.92 + 0.08 * part;
    const QColor faint
        = shown().pixelColor(static_cast<int>(170.0 + 76.0 * size), static_cast<int>(114.0 - 40.0 * size));
    diagram->settle();
    const QColor full = shown().pixelColor(246, 74);
    ASSERT_GT(full.blue(), 40);
    EXPECT_NEAR(faint.blue(), full.blue() * part, 2.0);
    EXPECT_NEAR(faint.green(), full.green() * part, 2.0);
}

} // namespace
} // namespace amperly
