// Whole pictures of the panel, compared with those that somebody has looked at and found good. They
// lie in the folder golden beside this file; with AMPERLY_UPDATE_GOLDEN=1 in the environment the
// test writes them anew instead, to be looked at again.
#include "tests/flow/panel_fixture.h"

#include <cstdlib>

namespace amperly {
namespace {

// Other versions of the font library hint and smooth a little differently.
constexpr int kMostDifferent = 128; ///< of 255, in any pixel
constexpr double kMostDifferentOnAverage = 1.0; ///< of 255, over all pixels

class PanelGoldenTest : public PanelTest {
protected:
    /// The panel on this reading, with the flows settled and a breath half drawn.
    void compare(const std::string& name, const std::optional<PowerSample>& sample, double scale)
    {
        openWith(sample);
        clock.play(3.7);
        const QImage drawn = picture(scale);
        const QString path = QString::fromStdString(AMPERLY_TEST_SOURCE_DIR "/golden/" + name + ".png");
        if (const char* update = std::getenv("AMPERLY_UPDATE_GOLDEN"); update && *update == '1') {
            ASSERT_TRUE(drawn.save(path));
            return;
        }
        const QImage golden = QImage(path).convertToFormat(QImage::Format_RGB32);
        ASSERT_FALSE(golden.isNull()) << name << " is missing";
        ASSERT_EQ(drawn.size(), golden.size()) << name;
        double sum = 0.0;
        int most = 0;
        for (int y = 0; y < drawn.height(); ++y) {
            for (int x = 0; x < drawn.width(); ++x) {
                const QRgb one = drawn.pixel(x, y);
                const QRgb other = golden.pixel(x, y);
                const int difference = std::max({std::abs(qRed(one) - qRed(other)),
                    std::abs(qGreen(one) - qGreen(other)), std::abs(qBlue(one) - qBlue(other))});
                most = std::max(most, difference);
                sum += difference;
            }
        }
        EXPECT_LE(most, kMostDifferent) << name;
        EXPECT_LE(sum / (drawn.width() * drawn.height()), kMostDifferentOnAverage) << name;
    }
};

TEST_F(PanelGoldenTest, ChargingOnLight)
{
    compare("panel-charging-light-1x", kCharging, 1.0);
    compare("panel-charging-light-1.25x", kCharging, 1.25);
}

TEST_F(PanelGoldenTest, OnBatteryOnDark)
{
    QApplication::setPalette(darkPalette());
    compare("panel-on-battery-dark-2x", kOnBattery, 2.0);
}

TEST_F(PanelGoldenTest, UnknownFiguresOnDark)
{
    QApplication::setPalette(darkPalette());
    compare("panel-unknown-dark-1x",
        PowerSample{.externalConnected = true,
            .systemLoadKnown = false,
            .adapterInKnown = false,
            .batteryKnown = false},
        1.0);
}

TEST_F(PanelGoldenTest, TwoLinesInThePill)
{
    compare("panel-running-on-battery-light-1.5x",
        PowerSample{.systemLoad = 12.7,
            .adapterIn = 0.2,
            .battery = -12.5,
            .adapterRating = 5,
            .batteryPercent = 31,
            .externalConnected = true},
        1.5);
}

TEST_F(PanelGoldenTest, NoData)
{
    compare("panel-no-data-light-1x", std::nullopt, 1.0);
}

TEST_F(PanelGoldenTest, Mirrored)
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    compare("panel-mirrored-light-1x", kCharging, 1.0);
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

} // namespace
} // namespace amperly
