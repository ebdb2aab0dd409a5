#include "settings/form_button.h"

#include "tests/settings/user.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(FormButtonTest, ClickSpaceAndReturnPressIt)
{
    FormButton button(QStringLiteral("&Open Settings…"));
    button.resize(button.sizeHint());
    int presses = 0;
    QObject::connect(&button, &FormButton::clicked, [&presses] { ++presses; });
    click(button);
    press(button, Qt::Key_Space);
    press(button, Qt::Key_Return);
    press(button, Qt::Key_Enter);
    EXPECT_EQ(presses, 4);
}

TEST(FormButtonTest, ItsSpokenNameIsItsTextWithoutTheMark)
{
    const FormButton button(QStringLiteral("&Open Settings…"));
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Open Settings…"));
    EXPECT_FALSE(button.shortcut().isEmpty());
}

TEST(FormButtonTest, PressedItIsDarkerAndDisabledFainter)
{
    FormButton button(QStringLiteral("Reset"));
    button.resize(button.sizeHint());
    const QPoint corner(8, 8);
    const QColor resting = pictureOf(button).pixelColor(corner);
    button.setDown(true);
    EXPECT_LT(pictureOf(button).pixelColor(corner).lightness(), resting.lightness());
    button.setDown(false);
    button.setEnabled(false);
    EXPECT_LT(pictureOf(button).pixelColor(corner).alpha(), resting.alpha());
}

} // namespace
} // namespace amperly
