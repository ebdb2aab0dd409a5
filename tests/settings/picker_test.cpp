#include "settings/picker.h"

#include "tests/settings/user.h"

#include <QAbstractItemView>
#include <QWheelEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace amperly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PickerTest : public testing::Test {
protected:
    PickerTest()
    {
        for (const char* const option : {"Panel", "Menu", "Nothing at all"})
            picker.addOption(QString::fromLatin1(option));
        picker.setChoice(0);
        picker.onChosen([this](int index) { chosen.push_back(index); });
        picker.resize(picker.sizeHint());
    }

    Picker picker;
    std::vector<int> chosen;
};

TEST_F(PickerTest, WhatIsShownByTheProgramIsNotAnnounced)
{
    picker.setChoice(1);
    picker.setChoice(std::nullopt);
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(PickerTest, ArrowKeysChooseWhileTheListIsClosed)
{
    press(picker, Qt::Key_Down);
    press(picker, Qt::Key_Down);
    press(picker, Qt::Key_Down);
    EXPECT_THAT(chosen, ElementsAre(1, 2));
}

TEST_F(PickerTest, TheFirstLetterOfAnOptionChoosesIt)
{
    press(picker, Qt::Key_N, QStringLiteral("n"));
    EXPECT_THAT(chosen, ElementsAre(2));
}

TEST_F(PickerTest, WithNothingChosenItIsEmptyAndAnyOptionIsNews)
{
    picker.setChoice(std::nullopt);
    EXPECT_EQ(picker.choice(), std::nullopt);
    EXPECT_EQ(picker.currentText(), QString());
    press(picker, Qt::Key_Down);
    EXPECT_THAT(chosen, ElementsAre(0));
}

TEST_F(PickerTest, ItIsWideEnoughForItsWidestOptionWhicheverIsChosen)
{
    const int width = picker.sizeHint().width();
    EXPECT_GT(width, picker.fontMetrics().horizontalAdvance(QStringLiteral("Nothing at all")));
    picker.setChoice(1);
    EXPECT_EQ(picker.sizeHint().width(), width);
}

TEST_F(PickerTest, TheWheelPassesOverIt)
{
    QWheelEvent wheel(
        {5, 5}, {5, 5}, {0, -120}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&picker, &wheel);
    EXPECT_FALSE(wheel.isAccepted());
    EXPECT_EQ(picker.choice(), 0);
}

TEST_F(PickerTest, ReturnOpensTheList)
{
    picker.show();
    press(picker, Qt::Key_Return);
    EXPECT_TRUE(picker.view()->isVisible());
    picker.hidePopup();
}

TEST_F(PickerTest, MirroredItsArrowsAreAtTheLeft)
{
    const QImage straight = pictureOf(picker);
    picker.setLayoutDirection(Qt::RightToLeft);
    const QImage mirrored = pictureOf(picker);
    // The ink of the arrows, from the edge inwards, which rounding moves by a shade at most.
    for (int column = 10; column < 20; ++column) {
        for (int y = 0; y < straight.height(); ++y) {
            const QColor at = straight.pixelColor(straight.width() - 1 - column, y);
            EXPECT_NEAR(at.lightness(), mirrored.pixelColor(column, y).lightness(), 24) << column << ',' << y;
        }
    }
}

} // namespace
} // namespace amperly
