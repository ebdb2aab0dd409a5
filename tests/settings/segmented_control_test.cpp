#include "settings/segmented_control.h"

#include "settings/form_look.h"
#include "tests/settings/user.h"

#include <QAbstractButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace amperly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SegmentedControlTest : public testing::Test {
protected:
    SegmentedControlTest()
    {
        control.onChosen([this](int index) { chosen.push_back(index); });
        control.resize(control.sizeHint());
        control.show();
    }

    QAbstractButton& segment(std::size_t index) { return *control.segments().at(index); }

    /// Which segments Tab comes to.
    std::vector<int> tabStops()
    {
        std::vector<int> stops;
        for (std::size_t each = 0; each < control.segments().size(); ++each) {
            if ((segment(each).focusPolicy() & Qt::TabFocus) != 0)
                stops.push_back(static_cast<int>(each));
        }
        return stops;
    }

    SegmentedControl control{{QStringLiteral("None"), QStringLiteral("One"), QStringLiteral("Two")}};
    std::vector<int> chosen;
};

TEST_F(SegmentedControlTest, AClickChoosesASegmentOnce)
{
    control.setChoice(0);
    click(segment(1));
    click(segment(1));
    EXPECT_EQ(control.choice(), 1);
    EXPECT_FALSE(segment(0).isChecked());
    EXPECT_TRUE(segment(1).isChecked());
    EXPECT_THAT(chosen, ElementsAre(1));
}

TEST_F(SegmentedControlTest, ArrowKeysChooseAndStopAtTheEnds)
{
    control.setChoice(0);
    press(segment(0), Qt::Key_Right);
    press(segment(1), Qt::Key_Down);
    press(segment(2), Qt::Key_Right);
    press(segment(2), Qt::Key_Left);
    press(segment(1), Qt::Key_Up);
    EXPECT_THAT(chosen, ElementsAre(1, 2, 1, 0));
}

TEST_F(SegmentedControlTest, MirroredTheFirstSegmentIsAtTheRightAndArrowKeysGoWhereTheyPoint)
{
    control.setLayoutDirection(Qt::RightToLeft);
    EXPECT_GT(segment(0).x(), segment(1).x());
    EXPECT_GT(segment(1).x(), segment(2).x());
    control.setChoice(0);
    press(segment(0), Qt::Key_Left);
    EXPECT_EQ(control.choice(), 1);
    press(segment(1), Qt::Key_Right);
    EXPECT_EQ(control.choice(), 0);
}

TEST_F(SegmentedControlTest, NothingMayBeChosen)
{
    control.setChoice(1);
    control.setChoice(std::nullopt);
    EXPECT_EQ(control.choice(), std::nullopt);
    for (const QAbstractButton* const each : control.segments())
        EXPECT_FALSE(each->isChecked());
    EXPECT_THAT(chosen, IsEmpty()) << "only the user's choices are announced";
}

TEST_F(SegmentedControlTest, WithNothingChosenAnArrowKeyChoosesTheFirst)
{
    press(segment(0), Qt::Key_Right);
    EXPECT_THAT(chosen, ElementsAre(0));
}

TEST_F(SegmentedControlTest, TabComesToItOnce)
{
    EXPECT_THAT(tabStops(), ElementsAre(0));
    control.setChoice(2);
    EXPECT_THAT(tabStops(), ElementsAre(2));
    EXPECT_EQ(control.focusProxy(), &segment(2));
}

TEST_F(SegmentedControlTest, TheFocusGoesOnToTheChosenSegment)
{
    control.setChoice(1);
    control.activateWindow();
    QApplication::processEvents();
    ASSERT_NE(control.focusPolicy(), Qt::NoFocus) << "a title's letter would not lead here";
    control.setFocus();
    EXPECT_TRUE(segment(1).hasFocus());
}

TEST_F(SegmentedControlTest, SegmentsShareTheRoomEvenlyAndFitTheirTexts)
{
    EXPECT_NEAR(segment(0).width(), segment(2).width(), 1);
    for (const QAbstractButton* const each : control.segments())
        EXPECT_GT(each->width(), each->fontMetrics().horizontalAdvance(each->text()));
}

TEST_F(SegmentedControlTest, ThePlateLiesUnderTheChosenSegment)
{
    const FormColors colors = FormColors::of(control.palette());
    const auto ground = [&](std::size_t index) {
        const QRect place = segment(index).geometry();
        return pictureOf(control).pixel(place.left() + 6, place.center().y());
    };
    control.hide(); // what nobody sees need not glide
    control.setChoice(1);
    EXPECT_EQ(ground(0), colors.trough.rgb());
    EXPECT_EQ(ground(1), colors.segment.rgb());
}

} // namespace
} // namespace amperly
