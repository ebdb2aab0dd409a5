#include "settings/form_row.h"

#include "settings/form_label.h"
#include "settings/segmented_control.h"
#include "settings/toggle_switch.h"
#include "tests/settings/user.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(FormRowTest, TheTitleIsTheControlsSpokenName)
{
    auto* const control = new ToggleSwitch;
    const FormRow row(QStringLiteral("Larger &text"), control);
    EXPECT_EQ(control->accessibleName(), QStringLiteral("Larger text"));
    EXPECT_EQ(row.findChild<QLabel*>()->buddy(), control);
}

TEST(FormRowTest, ASwitchIsToggledByAClickAnywhereInItsRow)
{
    auto* const control = new ToggleSwitch;
    FormRow row(QStringLiteral("Larger &text"), control);
    row.resize(380, 34);
    click(row, {190, 10});
    EXPECT_TRUE(control->isChecked());
}

TEST(FormRowTest, AClickBesideAnotherControlDoesNothing)
{
    auto* const control = new SegmentedControl({QStringLiteral("None"), QStringLiteral("One")});
    FormRow row(QStringLiteral("Decimals"), control);
    row.resize(380, 34);
    click(row, {190, 10});
    EXPECT_EQ(control->choice(), std::nullopt);
}

TEST(FormRowTest, TitleAndControlKeepTheSameDistanceFromTheEndsStraightAndMirrored)
{
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        auto* const control = new ToggleSwitch;
        FormRow row(QStringLiteral("Larger &text"), control);
        row.setLayoutDirection(direction);
        row.resize(380, 34);
        row.show();
        const QRect title = row.findChild<QLabel*>()->geometry();
        const QRect visible = control->geometry().adjusted(
            kForm.focusRoom, kForm.focusRoom, -kForm.focusRoom, -kForm.focusRoom);
        const bool straight = direction == Qt::LeftToRight;
        EXPECT_EQ(straight ? title.left() : row.rect().right() - title.right(), kForm.inset);
        EXPECT_EQ(straight ? row.rect().right() - visible.right() : visible.left(), kForm.inset);
    }
}

} // namespace
} // namespace amperly
