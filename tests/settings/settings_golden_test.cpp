// Whole pictures of the form.
#include "tests/settings/settings_form.h"
#include "tests/support/golden_picture.h"
#include "tools/desktop_palettes.h"

#include <QFontDatabase>
#include <QScrollArea>
#include <QStyleFactory>

#include <string>

namespace amperly {
namespace {

// Other versions of the font library smooth letters differently, which stays small over a block of
// pixels; a control that is gone, moved or of another colour does not.
constexpr int kBlock = 16; ///< points on a side
constexpr double kMostDifferent = 24.0; ///< of 255, on average over a block

class SettingsGoldenTest : public SettingsFormTest {
protected:
    SettingsGoldenTest()
    {
        QFontDatabase::addApplicationFont(QStringLiteral(AMPERLY_PINNED_FONT));
        QApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        live.setSample(PowerSample{.systemLoad = 14.2,
            .adapterIn = 30.1,
            .battery = 15.9,
            .batteryPercent = 64,
            .externalConnected = true});
        loginItem.setStatus(LoginItemStatus::Enabled);
    }
    ~SettingsGoldenTest() override { QApplication::setPalette(QPalette()); }

    /// The whole form, or as much of its upper end as a window of some height shows.
    void compare(
        const QPalette& palette, double scale, const std::string& name, std::optional<int> height = {})
    {
        QApplication::setPalette(palette);
        open();
        view->resize(420, height.value_or(view->findChild<QScrollArea*>()->widget()->heightForWidth(420)));
        QApplication::processEvents();
        QImage drawn((QSizeF(view->size()) * scale).toSize(), QImage::Format_RGB32);
        drawn.setDevicePixelRatio(scale);
        drawn.fill(palette.color(QPalette::Window));
        view->render(&drawn, {}, {}, QWidget::DrawChildren);

        const std::optional<QImage> golden = goldenPicture(name, drawn);
        if (!golden)
            return;
        const int block = static_cast<int>(kBlock * scale);
        for (int top = 0; top < drawn.height(); top += block) {
            for (int left = 0; left < drawn.width(); left += block) {
                const QRect area = QRect(left, top, block, block).intersected(drawn.rect());
                EXPECT_LE(stepsBetween(drawn, *golden, area).mean, kMostDifferent)
                    << name << " at " << left << ',' << top;
            }
        }
    }
};

TEST_F(SettingsGoldenTest, Light)
{
    compare(lightPalette(), 1.0, "form-light-1x");
}

TEST_F(SettingsGoldenTest, Dark)
{
    compare(darkPalette(), 2.0, "form-dark-2x", 380);
}

TEST_F(SettingsGoldenTest, Mirrored)
{
    const MirroredWindows mirrored;
    compare(lightPalette(), 1.25, "form-mirrored-1.25x");
}

TEST_F(SettingsGoldenTest, RareStatesInHighContrast)
{
    loginItem.setStatus(LoginItemStatus::RequiresApproval);
    preferences.set(Pref::decimals, std::int64_t{2});
    preferences.set(Pref::macIcon, std::string("desktopcomputer"));
    preferences.set(Pref::stacked, false);
    compare(highContrastPalette(), 1.5, "form-high-contrast-1.5x");
}

} // namespace
} // namespace amperly
