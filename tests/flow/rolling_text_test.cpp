#include "flow/rolling_text.h"

#include "render/look/text_style.h"

#include <QFontMetricsF>
#include <QPainter>
#include <gtest/gtest.h>

namespace amperly {
namespace {

class RollingTextTest : public testing::Test {
protected:
    RollingTextTest() { startWith(QStringLiteral("12.3 W")); }

    void startWith(const QString& words)
    {
        text.setText(words);
        text.settle();
    }

    [[nodiscard]] QImage picture(RollingText& painted, double scale = 1.0)
    {
        QImage image(QSize(160, 60) * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::white);
        QPainter painter(&image);
        painted.paint(painter, {10, 10}, Qt::black);
        return image;
    }

    RollingText text{sizedFont(30, QFont::DemiBold)};
};

TEST_F(RollingTextTest, AtFirstTheTextStandsStill)
{
    EXPECT_FALSE(text.isRolling());
    EXPECT_FALSE(text.advance(5.0));
    EXPECT_EQ(text.progress(), 1.0);
}

TEST_F(RollingTextTest, ANewTextRollsInWithinFourTenthsOfASecond)
{
    text.setText(QStringLiteral("12.4 W"));
    EXPECT_EQ(text.progress(), 0.0);
    text.advance(5.0);
    EXPECT_EQ(text.progress(), 0.0);
    EXPECT_TRUE(text.advance(5.2));
    EXPECT_NEAR(text.progress(), 0.5, 1e-6);
    EXPECT_TRUE(text.isRolling());
    EXPECT_TRUE(text.advance(5.4));
    EXPECT_EQ(text.progress(), 1.0);
    EXPECT_FALSE(text.isRolling());
    EXPECT_FALSE(text.advance(5.5));
}

TEST_F(RollingTextTest, TheSameTextAgainDoesNotRoll)
{
    text.setText(QStringLiteral("12.3 W"));
    EXPECT_FALSE(text.isRolling());
}

TEST_F(RollingTextTest, OnlyDigitsThatChangeRoll)
{
    text.setText(QStringLiteral("12.4 W"));
    ASSERT_EQ(text.cells().size(), 6U);
    for (std::size_t index = 0; index < text.cells().size(); ++index) {
        const RollingCell& cell = text.cells()[index];
        EXPECT_EQ(cell.from == cell.to, index != 3) << index;
        EXPECT_EQ(cell.fromX, cell.toX) << index;
    }
}

TEST_F(RollingTextTest, DigitsOfTheSameWorthMeetWhenTheFigureGrowsShorter)
{
    text.setText(QStringLiteral("9.3 W"));
    ASSERT_EQ(text.cells().size(), 6U);
    EXPECT_EQ(text.cells()[0].from, QStringLiteral("1"));
    EXPECT_EQ(text.cells()[0].to, QString());
    EXPECT_EQ(text.cells()[1].from, QStringLiteral("2"));
    EXPECT_EQ(text.cells()[1].to, QStringLiteral("9"));
    EXPECT_EQ(text.cells()[3].from, text.cells()[3].to);
    EXPECT_LT(text.cells()[3].toX, text.cells()[3].fromX);
}

TEST_F(RollingTextTest, ADigitThatIsNewComesFromNowhere)
{
    text.setText(QStringLiteral("112.3 W"));
    EXPECT_EQ(text.cells().front().from, QString());
    EXPECT_EQ(text.cells().front().to, QStringLiteral("1"));
}

TEST_F(RollingTextTest, TheAnchorKeepsStillWhenTheTextGrows)
{
    RollingText centred(sizedFont(12, QFont::Normal), 0.5);
    centred.setText(QStringLiteral("9.3 W"));
    centred.settle();
    const double narrow = centred.width();
    centred.setText(QStringLiteral("19.3 W"));
    // The W stands so far left of its new place as half of the digit that is added.
    const RollingCell& last = centred.cells().back();
    EXPECT_NEAR(last.toX - last.fromX, (centred.width() - narrow) / 2.0, 1e-9);
}

TEST_F(RollingTextTest, AllDigitsAreEquallyWide)
{
    const double width = text.width();
    for (const char* const other : {"11.1 W", "88.8 W", "74.0 W"}) {
        text.setText(QLatin1String(other));
        EXPECT_EQ(text.width(), width) << other;
    }
}

TEST_F(RollingTextTest, DigitsOfOtherScriptsAreEquallyWideToo)
{
    startWith(QStringLiteral("\u0661\u0662\u066b\u0663 W"));
    const double width = text.width();
    startWith(QStringLiteral("\u0668\u0660\u066b\u0669 W"));
    EXPECT_EQ(text.width(), width);
}

TEST_F(RollingTextTest, HalfwayBothDigitsShowAndAtTheEndOnlyTheNewOne)
{
    RollingText still{sizedFont(30, QFont::DemiBold)};
    still.setText(QStringLiteral("12.9 W"));
    still.settle();
    const QImage before = picture(text);
    const QImage after = picture(still);

    text.setText(QStringLiteral("12.9 W"));
    text.advance(1.0);
    EXPECT_EQ(picture(text), before);
    text.advance(1.2);
    EXPECT_NE(picture(text), before);
    EXPECT_NE(picture(text), after);
    text.advance(1.4);
    EXPECT_EQ(picture(text), after);
}

TEST_F(RollingTextTest, ATextThatComesDuringARollWaitsForItsEnd)
{
    RollingText undisturbed{sizedFont(30, QFont::DemiBold)};
    undisturbed.setText(QStringLiteral("12.3 W"));
    undisturbed.settle();
    for (RollingText* const one : {&text, &undisturbed}) {
        one->setText(QStringLiteral("12.9 W"));
        one->advance(5.0);
        one->advance(5.2);
    }
    text.setText(QStringLiteral("14.0 W"));
    text.setText(QStringLiteral("113.1 W"));
    EXPECT_EQ(text.text(), QStringLiteral("113.1 W"));
    EXPECT_EQ(text.width(), undisturbed.width());
    for (const double now : {5.2, 5.3, 5.4}) {
        text.advance(now);
        undisturbed.advance(now);
        EXPECT_EQ(picture(text), picture(undisturbed)) << now;
    }
    EXPECT_TRUE(text.isRolling());
    text.advance(5.6);
    EXPECT_NEAR(text.progress(), 0.5, 1e-6);
    EXPECT_GT(text.width(), undisturbed.width());
    text.advance(5.9);
    EXPECT_FALSE(text.isRolling());
    EXPECT_EQ(text.text(), QStringLiteral("113.1 W"));
}

TEST_F(RollingTextTest, GoingBackDuringARollWaitsForItsEndToo)
{
    text.setText(QStringLiteral("12.4 W"));
    text.advance(5.0);
    text.advance(5.2);
    text.setText(QStringLiteral("12.3 W"));
    text.setText(QStringLiteral("12.4 W"));
    text.advance(5.4);
    EXPECT_FALSE(text.isRolling());
    EXPECT_EQ(text.text(), QStringLiteral("12.4 W"));
}

TEST_F(RollingTextTest, ARollOfWhichNothingHasBeenSeenGivesWay)
{
    const QImage before = picture(text);
    text.setText(QStringLiteral("99.9 W"));
    text.setText(QStringLiteral("12.4 W"));
    text.advance(5.0);
    EXPECT_EQ(picture(text), before);
    EXPECT_EQ(text.cells()[0].to, QStringLiteral("1"));
    text.setText(QStringLiteral("12.3 W"));
    EXPECT_FALSE(text.isRolling());
}

TEST_F(RollingTextTest, SettlingShowsTheNewTextAtOnce)
{
    text.setText(QStringLiteral("88.9 W"));
    text.advance(1.0);
    text.advance(1.2);
    text.setText(QStringLiteral("9.9 W"));
    text.settle();
    RollingText still{sizedFont(30, QFont::DemiBold)};
    still.setText(QStringLiteral("9.9 W"));
    still.settle();
    EXPECT_EQ(picture(text), picture(still));
    EXPECT_EQ(text.cells().size(), 5U);
}

TEST_F(RollingTextTest, CharactersAreDrawnAnewForAnotherScale)
{
    static_cast<void>(picture(text, 1.0));
    const QImage twice = picture(text, 2.0);
    RollingText fresh{sizedFont(30, QFont::DemiBold)};
    fresh.setText(QStringLiteral("12.3 W"));
    fresh.settle();
    EXPECT_EQ(picture(fresh, 2.0), twice);
}

TEST_F(RollingTextTest, PaintingLeavesThePainterAsItWasLent)
{
    QImage image(50, 50, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setOpacity(0.5);
    painter.translate(3.0, 4.0);
    const QTransform lent = painter.worldTransform();
    text.setText(QStringLiteral("1"));
    text.advance(0.0);
    text.advance(0.2);
    text.paint(painter, {}, Qt::black);
    EXPECT_EQ(painter.worldTransform(), lent);
    EXPECT_EQ(painter.opacity(), 0.5);
}

} // namespace
} // namespace amperly
