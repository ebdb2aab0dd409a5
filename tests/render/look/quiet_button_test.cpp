#include "render/look/quiet_button.h"

#include "tests/support/run_until.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QKeyEvent>
#include <gtest/gtest.h>

namespace amperly {
namespace {

void press(QWidget& widget, Qt::Key key)
{
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &up);
}

TEST(QuietButtonTest, SpaceAndReturnClickIt)
{
    QuietButton button(QStringLiteral("Quit"), QuietButton::Tone::Plain);
    int clicks = 0;
    QObject::connect(&button, &QAbstractButton::clicked, [&] { ++clicks; });
    press(button, Qt::Key_Space);
    press(button, Qt::Key_Return);
    press(button, Qt::Key_Enter);
    press(button, Qt::Key_A);
    EXPECT_EQ(clicks, 3);
}

TEST(QuietButtonTest, ScreenReadersHearItsText)
{
    const QuietButton button(QStringLiteral("Settings"), QuietButton::Tone::Plain);
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Settings"));
}

TEST(QuietButtonTest, ScreenReadersHearALinkFromAButtonAndCanPressBoth)
{
    for (const QuietButton::Tone tone : {QuietButton::Tone::Link, QuietButton::Tone::Plain}) {
        QuietButton button(QStringLiteral("Donate"), tone);
        int clicks = 0;
        QObject::connect(&button, &QAbstractButton::clicked, [&] { ++clicks; });
        QAccessibleInterface& spoken = *QAccessible::queryAccessibleInterface(&button);
        EXPECT_EQ(spoken.role(), tone == QuietButton::Tone::Link ? QAccessible::Link : QAccessible::Button);
        EXPECT_EQ(spoken.text(QAccessible::Name), QStringLiteral("Donate"));
        spoken.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_TRUE(runUntil([&] { return clicks == 1; })); // a button is seen to go down first
    }
}

TEST(QuietButtonTest, TextHasRoomOnEverySide)
{
    const QuietButton button(QStringLiteral("Settings"), QuietButton::Tone::Link);
    const QSize words = button.fontMetrics().size(0, QStringLiteral("Settings"));
    EXPECT_GT(button.sizeHint().width(), words.width() + 4);
    EXPECT_GT(button.sizeHint().height(), words.height() + 4);
}

} // namespace
} // namespace amperly
