#include "settings/toggle_switch.h"

#include "settings/form_look.h"
#include "tests/settings/user.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

class ToggleSwitchTest : public testing::Test {
protected:
    ToggleSwitchTest() { control.resize(control.sizeHint()); }

    /// The colour in the middle of one half of the switch.
    QRgb half(Qt::Edge side)
    {
        const QImage picture = pictureOf(control, 2.0);
        const int quarter = picture.width() / 4;
        return picture.pixel(
            side == Qt::LeftEdge ? quarter : picture.width() - quarter, picture.height() / 2);
    }

    ToggleSwitch control;
    FormColors colors = FormColors::of(control.palette());
};

TEST_F(ToggleSwitchTest, AClickAnywhereOnItAndSpaceAndReturnToggleIt)
{
    click(control, {4, 4});
    EXPECT_TRUE(control.isChecked());
    press(control, Qt::Key_Space);
    EXPECT_FALSE(control.isChecked());
    press(control, Qt::Key_Return);
    EXPECT_TRUE(control.isChecked());
    press(control, Qt::Key_Enter);
    EXPECT_FALSE(control.isChecked());
}

TEST_F(ToggleSwitchTest, OffTheKnobIsAtTheBeginningAndOnAtTheEnd)
{
    EXPECT_EQ(half(Qt::LeftEdge), colors.offKnob.rgb());
    EXPECT_EQ(half(Qt::RightEdge), colors.off.rgb());
    control.setChecked(true);
    EXPECT_EQ(half(Qt::LeftEdge), colors.accent.rgb());
    EXPECT_EQ(half(Qt::RightEdge), colors.knob.rgb());
}

TEST_F(ToggleSwitchTest, MirroredItIsOnAtTheLeft)
{
    control.setLayoutDirection(Qt::RightToLeft);
    control.setChecked(true);
    EXPECT_EQ(half(Qt::LeftEdge), colors.knob.rgb());
    EXPECT_EQ(half(Qt::RightEdge), colors.accent.rgb());
}

TEST_F(ToggleSwitchTest, DisabledItIsFainterAndDoesNothing)
{
    control.setChecked(true);
    const QImage enabled = pictureOf(control);
    control.setEnabled(false);
    const QImage disabled = pictureOf(control);
    EXPECT_LT(
        qAlpha(disabled.pixel(disabled.rect().center())), qAlpha(enabled.pixel(enabled.rect().center())));
    click(control);
    EXPECT_TRUE(control.isChecked());
}

} // namespace
} // namespace amperly
