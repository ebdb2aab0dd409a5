#include "flow/status_pill.h"

#include "flow/paint_color.h"
#include "render/glyph_set.h"
#include "render/look/text_style.h"
#include "tests/flow/drawn_text.h"
#include "tests/support/pinned_drawing.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>

namespace amperly {
namespace {

class StatusPillTest : public testing::TestWithParam<Color> {
protected:
    static constexpr double kScale = 4.0;

    StatusPillTest()
    {
        QApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
        widget = std::make_unique<StatusPill>();
        widget->setPill({"Charging", "bolt.fill", GetParam()});
        widget->resize(widget->sizeHint());
    }

    [[nodiscard]] QImage picture() const
    {
        QImage image((QSizeF(widget->size()) * kScale).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(kScale);
        image.fill(Qt::black);
        widget->render(&image, {}, {}, QWidget::DrawChildren);
        image.setDevicePixelRatio(1.0);
        return image;
    }

    /// How many pixels between two columns, in points, are of the pill's colour alone; and where the
    /// ink, which is more than half of it, begins and ends.
    struct Ink {
        int solid = 0;
        double left = 1e9;
        double right = -1.0;
    };
    [[nodiscard]] static Ink inkBetween(const QImage& picture, double from, double to)
    {
        Ink ink;
        const QColor full = paintColor(GetParam());
        for (int x = static_cast<int>(from * kScale); x < static_cast<int>(to * kScale); ++x) {
            for (int y = 0; y < picture.height(); ++y) {
                const QColor color = picture.pixelColor(x, y);
                ink.solid += color.rgb() == full.rgb() ? 1 : 0;
                if (2 * color.value() < full.value())
                    continue;
                ink.left = std::min(ink.left, x / kScale);
                ink.right = std::max(ink.right, (x + 1) / kScale);
            }
        }
        return ink;
    }

    [[nodiscard]] static double symbolWidth()
    {
        return glyphSize("bolt.fill", {.pointSize = 11.0, .weight = FontWeight::Medium}).width;
    }

    [[nodiscard]] static QFontMetricsF metrics()
    {
        return QFontMetricsF(textFont(TextStyle::Caption, QFont::Medium));
    }

    PinnedDrawing drawing;
    std::unique_ptr<StatusPill> widget;
};

TEST_P(StatusPillTest, IsFourPointsHigherThanItsLineAboveAndBelow)
{
    EXPECT_EQ(widget->height(), static_cast<int>(std::ceil(metrics().ascent() + metrics().descent() + 8.0)));
}

TEST_P(StatusPillTest, SymbolAndTextBeginAndEndNinePointsFromItsSides)
{
    const QImage shown = picture();
    const Ink ink = inkBetween(shown, 0.0, widget->width());
    // A glyph does not fill all of its box.
    EXPECT_GE(ink.left, 9.0);
    EXPECT_LE(ink.left, 9.0 + 0.25 * symbolWidth());
    EXPECT_LE(ink.right, widget->width() - 9.0 + 0.25);
    EXPECT_GE(ink.right, widget->width() - 9.0 - 2.0);
}

TEST_P(StatusPillTest, SymbolAndTextAreInItsColor)
{
    const QImage shown = picture();
    EXPECT_GT(inkBetween(shown, 9.0, 9.0 + symbolWidth()).solid, 50);
    EXPECT_GT(inkBetween(shown, 9.0 + symbolWidth() + 4.0, widget->width()).solid, 100);
}

TEST_P(StatusPillTest, ItsTextIsACaptionOfMediumWeight)
{
    const std::vector<DrawnText> texts = TextRecorder::textsOf(*widget);
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts[0].text, QStringLiteral("Charging"));
    EXPECT_EQ(texts[0].font.weight(), QFont::Medium);
    EXPECT_EQ(texts[0].font.pixelSize(), textFont(TextStyle::Caption).pixelSize());
    EXPECT_EQ(texts[0].color, paintColor(GetParam()));
}

TEST_P(StatusPillTest, TheCapsuleIsFilledWithLittleOfTheColor)
{
    const QImage shown = picture();
    const QColor full = paintColor(GetParam());
    for (const double x : {3.0, 5.0, widget->width() - 4.0}) {
        const QColor fill = shown.pixelColor(static_cast<int>(x * kScale), shown.height() / 2);
        EXPECT_NEAR(fill.red(), 0.15 * full.red(), 1.5);
        EXPECT_NEAR(fill.green(), 0.15 * full.green(), 1.5);
        EXPECT_NEAR(fill.blue(), 0.15 * full.blue(), 1.5);
    }
    for (const int x : {0, shown.width() - 1}) {
        EXPECT_EQ(shown.pixelColor(x, 0), QColor(Qt::black));
        EXPECT_EQ(shown.pixelColor(x, shown.height() - 1), QColor(Qt::black));
        EXPECT_NE(shown.pixelColor(x, shown.height() / 2), QColor(Qt::black));
    }
}

INSTANTIATE_TEST_SUITE_P(InEveryColor, StatusPillTest,
    testing::Values(FlowColor::charger, FlowColor::charging, FlowColor::draining));

} // namespace
} // namespace amperly
