// The tubes that ship beside the same tubes painted slowly. With AMPERLY_GLASS_PICTURES naming a
// folder, both are written there for people to look at.
#include "tests/flow/glass/curves.h"
#include "tests/flow/glass/picture_difference.h"
#include "tests/flow/glass/reference_glass.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QString>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

class GlassPictureTest : public testing::TestWithParam<double> {
protected:
    static constexpr double kMostMean = 1.2;
    static constexpr double kMostMeanOnGlass = 4.0; // any layer left out is more
    static constexpr int kMostPermille = 25;

    static void expectLikeReference(const std::vector<Flow>& flows, double scale, const char* name)
    {
        std::vector<LayeredFlow> slow;
        for (const Flow& flow : flows)
            slow.push_back({flow.curve, flow.color, flow.width, flow.travelled});
        const QImage expected = paintReference(slow, 308, 200, scale);
        const GlassPicture picture = drawn(flows, scale);
        ASSERT_EQ(expected.width(), picture.width);
        ASSERT_EQ(expected.height(), picture.height);
        const PictureDifference difference = differenceOf(expected, picture.pixels);
        EXPECT_LE(difference.mean, kMostMean) << name << " at " << scale;
        EXPECT_LE(difference.meanOnGlass, kMostMeanOnGlass) << name << " at " << scale;
        EXPECT_LE(difference.permille, kMostPermille) << name << " at " << scale;
        write(expected, picture, QStringLiteral("%1_%2").arg(QString::fromUtf8(name)).arg(scale));
        RecordProperty("mean", std::to_string(difference.mean));
        RecordProperty("permille", difference.permille);
    }

private:
    /// What ships on the left, the slow one on the right, on white and on dark.
    static void write(const QImage& expected, const GlassPicture& picture, const QString& name)
    {
        const QString folder = qEnvironmentVariable("AMPERLY_GLASS_PICTURES");
        if (folder.isEmpty())
            return;
        const QImage ours(reinterpret_cast<const uchar*>(picture.pixels.data()), picture.width,
            picture.height, picture.width * 4, QImage::Format_ARGB32_Premultiplied);
        QImage both(2 * picture.width, 2 * picture.height, QImage::Format_RGB32);
        QPainter painter(&both);
        painter.fillRect(0, 0, both.width(), picture.height, QColor(246, 246, 246));
        painter.fillRect(0, picture.height, both.width(), picture.height, QColor(30, 30, 34));
        for (const int y : {0, picture.height}) {
            painter.drawImage(0, y, ours);
            painter.drawImage(picture.width, y, expected);
        }
        painter.end();
        both.save(folder + QStringLiteral("/") + name + QStringLiteral(".png"));
    }
};

TEST_P(GlassPictureTest, ADiagramOfThreeTubes)
{
    expectLikeReference(diagramFlows(16.0, 20.0), GetParam(), "full");
    expectLikeReference(diagramFlows(9.0, 47.0), GetParam(), "narrow");
    expectLikeReference(diagramFlows(23.0, 70.0), GetParam(), "wide");
}

TEST_P(GlassPictureTest, OneTubeOfTheDiagram)
{
    const std::array<Bezier, 3> curves = diagramCurves(308.0, 200.0);
    expectLikeReference({{curves[0], FlowColor::charging, 9.0, 10.0}}, GetParam(), "one_9");
    expectLikeReference({{curves[1], FlowColor::draining, 12.5, 33.0}}, GetParam(), "one_12");
    expectLikeReference({{curves[2], FlowColor::charger, 23.0, 61.0}}, GetParam(), "one_23");
}

TEST_P(GlassPictureTest, TubesThatLieOverEachOther)
{
    const std::vector<Flow> crossing{{line({30.0, 40.0}, {280.0, 160.0}), FlowColor::charger, 16.0, 20.0},
        {{{280.0, 30.0}, {100.0, 30.0}, {200.0, 170.0}, {30.0, 170.0}}, FlowColor::charging, 23.0, 5.0},
        {line({150.0, 180.0}, {156.0, 20.0}), FlowColor::draining, 11.0, 44.0}};
    expectLikeReference(crossing, GetParam(), "crossing");
}

TEST_P(GlassPictureTest, StraightTubesOfAnyDirection)
{
    expectLikeReference(
        {{line({40.0, 100.0}, {270.0, 100.0}), FlowColor::charger, 19.0, 77.0}}, GetParam(), "level");
    expectLikeReference(
        {{line({150.3, 190.0}, {150.3, 10.0}), FlowColor::charging, 16.0, 15.0}}, GetParam(), "standing");
    expectLikeReference(
        {{line({60.0, 20.0}, {220.0, 180.0}), FlowColor::draining, 13.0, 52.0}}, GetParam(), "slanting");
}

TEST_P(GlassPictureTest, OddCurves)
{
    expectLikeReference(
        {{{{60.0, 160.0}, {60.0, -20.0}, {240.0, -20.0}, {240.0, 160.0}}, FlowColor::draining, 14.0, 8.0}},
        GetParam(), "arch");
    expectLikeReference(
        {{line({140.0, 100.0}, {165.0, 92.0}), FlowColor::charger, 16.0, 12.0}}, GetParam(), "stub");
    expectLikeReference(
        {{line({-60.0, 10.0}, {330.0, 60.0}), FlowColor::charging, 21.0, 30.0}}, GetParam(), "beyond");
}

TEST_P(GlassPictureTest, CurvesOfWhichTheCanvasShowsLittle)
{
    for (const double away : {2e4, 1e6})
        expectLikeReference(
            {{line({-away, 60.0}, {away, 140.0}), FlowColor::charging, 21.0, 30.0}}, GetParam(), "far");
}

INSTANTIATE_TEST_SUITE_P(AtEveryScale, GlassPictureTest, testing::Values(1.0, 1.25, 1.5, 2.0));

} // namespace
} // namespace amperly::glass
