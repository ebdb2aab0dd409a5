#include "settings/status_preview.h"

#include "tests/settings/user.h"
#include "tests/support/pinned_drawing.h"

#include <cmath>
#include <gtest/gtest.h>

namespace amperly {
namespace {

class StatusPreviewTest : public testing::Test {
protected:
    StatusPreviewTest()
    {
        image.add({.symbol = "laptopcomputer", .text = "14.2", .wholeText = {}});
        image.add({.symbol = "battery.75percent", .text = "+15.9", .wholeText = {}});
        preview.show(image, QStringLiteral("Mac using 14.2 W"));
        preview.resize(preview.sizeHint());
    }

    static constexpr QRgb kPanel = qRgb(20, 20, 115); // 0.08, 0.08, 0.45

    PinnedDrawing drawing;
    StatusImage image{{.arrangement = StatusImage::Arrangement::Stacked}};
    StatusPreview preview;
};

TEST_F(StatusPreviewTest, ThePictureHasTwelvePointsAtItsSidesAndFourAboveAndBelow)
{
    EXPECT_EQ(preview.sizeHint().width(), std::ceil(image.widthPoints()) + 24);
    EXPECT_EQ(preview.sizeHint().height(), std::ceil(image.heightPoints()) + 8);
}

TEST_F(StatusPreviewTest, ItsGroundIsDarkBlueWithRoundCorners)
{
    const QImage picture = pictureOf(preview, 2.0);
    EXPECT_EQ(picture.pixel(picture.width() / 2, 1), kPanel);
    EXPECT_EQ(picture.pixel(1, picture.height() / 2), kPanel);
    EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(picture.pixel(0, 12)), 255) << "the corner is six points";
    EXPECT_LT(qAlpha(picture.pixel(2, 2)), 255);
}

TEST_F(StatusPreviewTest, AtEveryScaleItsPixelsAreThoseOfTheStatusItemInWhite)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        const QImage picture = pictureOf(preview, scale);
        CoverageMask mask;
        image.draw(mask, scale);
        // Where the picture lies: somewhere around the middle, on whole pixels.
        const int left = static_cast<int>(std::lround((picture.width() - mask.width) * 0.5));
        const int top = static_cast<int>(std::lround((picture.height() - mask.height) * 0.5));
        int least = 1 << 30;
        for (const int dx : {-1, 0, 1}) {
            for (const int dy : {-1, 0, 1}) {
                int worst = 0;
                for (int y = 0; y < mask.height; ++y) {
                    for (int x = 0; x < mask.width; ++x) {
                        const int red = qRed(picture.pixel(left + dx + x, top + dy + y));
                        const int expected = 20 + (255 - 20) * mask.at(x, y) / 255;
                        worst = std::max(worst, std::abs(red - expected));
                    }
                }
                least = std::min(least, worst);
            }
        }
        EXPECT_LE(least, 2) << "at " << scale;
    }
}

TEST_F(StatusPreviewTest, TheSamePictureAgainIsNoNews)
{
    const QSize before = preview.sizeHint();
    preview.show(image, QStringLiteral("Mac using 14.3 W"));
    EXPECT_EQ(preview.accessibleName(), QStringLiteral("Mac using 14.3 W"));
    EXPECT_EQ(preview.sizeHint(), before);
    EXPECT_EQ(preview.image(), image);
}

} // namespace
} // namespace amperly
