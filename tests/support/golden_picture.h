// Whole pictures, compared with those that somebody has looked at and found good. They lie in the
// folder golden beside a test; with AMPERLY_UPDATE_GOLDEN=1 in the environment the test writes them
// anew instead, to be looked at again.
#pragma once

#include <QImage>
#include <QString>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace amperly {

/// The good picture called `name`, to compare `drawn` with. Nothing where it was written anew, nor
/// where there is none of this size, which fails the test.
[[nodiscard]] inline std::optional<QImage> goldenPicture(const std::string& name, const QImage& drawn)
{
    const QString path = QString::fromStdString(AMPERLY_TEST_SOURCE_DIR "/golden/" + name + ".png");
    if (const char* update = std::getenv("AMPERLY_UPDATE_GOLDEN"); update && *update == '1') {
        EXPECT_TRUE(drawn.save(path, "PNG", 0)) << name; // packed as tightly as can be
        return std::nullopt;
    }
    QImage golden = QImage(path).convertToFormat(drawn.format());
    EXPECT_FALSE(golden.isNull()) << name << " is missing";
    EXPECT_EQ(drawn.size(), golden.size()) << name;
    if (golden.size() != drawn.size())
        return std::nullopt;
    return golden;
}

/// How far two pictures of one size are apart, of 255, in the channel that differs most.
struct PictureSteps {
    int most = 0; ///< in any pixel
    double mean = 0.0; ///< over all pixels
};

[[nodiscard]] inline PictureSteps stepsBetween(const QImage& one, const QImage& other, const QRect& area)
{
    PictureSteps steps;
    double sum = 0.0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QRgb first = one.pixel(x, y);
            const QRgb second = other.pixel(x, y);
            const int step = std::max({std::abs(qRed(first) - qRed(second)),
                std::abs(qGreen(first) - qGreen(second)), std::abs(qBlue(first) - qBlue(second))});
            steps.most = std::max(steps.most, step);
            sum += step;
        }
    }
    steps.mean = sum / (area.width() * area.height());
    return steps;
}

} // namespace amperly
