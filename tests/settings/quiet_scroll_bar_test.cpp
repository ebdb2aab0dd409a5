#include "settings/quiet_scroll_bar.h"

#include "tests/settings/user.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

class QuietScrollBarTest : public testing::Test {
protected:
    QuietScrollBarTest()
    {
        bar.setRange(0, 300);
        bar.setPageStep(100);
        bar.resize(bar.sizeHint().width(), 200);
    }

    /// Ink in the middle column, the first and the last row of it.
    [[nodiscard]] std::pair<int, int> handle()
    {
        const QImage picture = pictureOf(bar);
        std::pair<int, int> rows{picture.height(), -1};
        for (int y = 0; y < picture.height(); ++y) {
            if (qAlpha(picture.pixel(picture.width() / 2, y)) > 0)
                rows = {std::min(rows.first, y), y};
        }
        return rows;
    }

    QuietScrollBar bar;
};

TEST_F(QuietScrollBarTest, IsNoMoreThanItsHandle)
{
    const auto [first, last] = handle();
    EXPECT_LT(last - first, 120);
    const QImage picture = pictureOf(bar);
    EXPECT_EQ(qAlpha(picture.pixel(bar.width() / 2, 190)), 0) << "no groove under it";
    EXPECT_EQ(qAlpha(picture.pixel(1, first + 10)), 0) << "nor beside it";
}

TEST_F(QuietScrollBarTest, TheHandleFollowsTheValueToBothEnds)
{
    EXPECT_LT(handle().first, 25);
    bar.setValue(bar.maximum());
    EXPECT_GT(handle().second, 175);
}

TEST_F(QuietScrollBarTest, TheHandleGetsStrongerWhileItIsHeld)
{
    const auto [first, last] = handle();
    const int middle = (first + last) / 2;
    const QColor resting = pictureOf(bar).pixelColor(bar.width() / 2, middle);
    bar.setSliderDown(true);
    const QColor held = pictureOf(bar).pixelColor(bar.width() / 2, middle);
    EXPECT_LT(held.lightness(), resting.lightness());
}

} // namespace
} // namespace amperly
