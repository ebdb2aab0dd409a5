#include "settings/form_label.h"

#include "settings/form_look.h"
#include "tests/settings/user.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

/// The columns of a picture from the first to the last with ink.
std::pair<int, int> inkedColumns(const QImage& picture)
{
    std::pair<int, int> columns{picture.width(), -1};
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            if (qAlpha(picture.pixel(x, y)) > 0)
                columns = {std::min(columns.first, x), x};
        }
    }
    return columns;
}

/// The colour that covers its pixel best.
QColor inkOf(const QImage& picture)
{
    QRgb strongest = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(picture.pixel(x, y)) > qAlpha(strongest))
                strongest = picture.pixel(x, y);
        }
    }
    return QColor(strongest);
}

QImage labelled(const QString& text, Qt::LayoutDirection direction)
{
    FormLabel label(text, TextStyle::Body);
    label.setLayoutDirection(direction);
    label.resize(200, 30);
    return pictureOf(label);
}

TEST(FormLabelTest, StandsAtTheSideWhereTheFormBegins)
{
    for (const QString& text : {QStringLiteral("Decimals"), QString::fromUtf8("\u05d0\u05d1\u05d2")}) {
        EXPECT_LT(inkedColumns(labelled(text, Qt::LeftToRight)).first, 10) << qPrintable(text);
        EXPECT_LT(inkedColumns(labelled(text, Qt::LeftToRight)).second, 150) << qPrintable(text);
        EXPECT_GT(inkedColumns(labelled(text, Qt::RightToLeft)).second, 190) << qPrintable(text);
    }
}

TEST(FormLabelTest, TheSecondRankIsQuieter)
{
    // Black squares, so that some pixels are covered whole.
    const QString text = QString::fromUtf8("\u2588\u2588");
    FormLabel first(text, TextStyle::Body);
    FormLabel second(text, TextStyle::Body, FormLabel::Rank::Second);
    for (FormLabel* each : {&first, &second})
        each->resize(100, 30);
    const FormColors colors = FormColors::of(first.palette());
    EXPECT_EQ(inkOf(pictureOf(first)), colors.text);
    EXPECT_EQ(inkOf(pictureOf(second)), colors.secondary);
    EXPECT_NE(colors.text, colors.secondary);
}

TEST(FormLabelTest, TextIsNoMarkup)
{
    FormLabel label(QStringLiteral("<b>bold</b>"), TextStyle::Body);
    const FormLabel plain(QStringLiteral("bold"), TextStyle::Body);
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_GT(label.sizeHint().width(), plain.sizeHint().width());
}

} // namespace
} // namespace amperly
