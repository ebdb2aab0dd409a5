// Whole pictures of the panel.
#include "tests/flow/panel_fixture.h"
#include "tests/support/golden_picture.h"

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
        const std::optional<QImage> golden = goldenPicture(name, drawn);
        if (!golden)
            return;
        const PictureSteps steps = stepsBetween(drawn, *golden, drawn.rect());
        EXPECT_LE(steps.most, kMostDifferent) << name;
        EXPECT_LE(steps.mean, kMostDifferentOnAverage) << name;
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
