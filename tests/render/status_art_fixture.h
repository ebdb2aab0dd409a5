// What a test needs that draws status images: the pinned font, art in force, and a vocabulary.
#pragma once

#include "render/status_image.h"
#include "tests/support/pinned_drawing.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

namespace amperly {

class StatusArtTest : public testing::Test, protected PinnedDrawing {
protected:
    using Arrangement = StatusImage::Arrangement;

    static constexpr std::string_view kLaptop = "laptopcomputer";
    static constexpr std::string_view kPlug = "powerplug.fill";
    static constexpr std::string_view kBattery = "battery.75percent";

    static constexpr StatusImage::Setting kLine{.arrangement = Arrangement::Line};
    static constexpr StatusImage::Setting kStacked{.arrangement = Arrangement::Stacked};

    static ReadingPiece piece(std::string_view symbol, std::string text, std::string wholeText = {})
    {
        return {.symbol = symbol, .text = std::move(text), .wholeText = std::move(wholeText)};
    }

    static StatusImage image(const StatusImage::Setting& setting, std::initializer_list<ReadingPiece> pieces)
    {
        StatusImage made(setting);
        for (const ReadingPiece& each : pieces)
            made.add(each);
        return made;
    }

    static CoverageMask drawn(const StatusImage& image, double scale)
    {
        CoverageMask mask;
        image.draw(mask, scale);
        return mask;
    }

    /// The smallest box that holds all ink of a mask that is more than a trace of smoothing.
    /// Without ink it is empty.
    struct InkBox {
        int left = 0;
        int right = 0; ///< one past the last column
        int top = 0;
        int bottom = 0; ///< one past the last row
        [[nodiscard]] int width() const { return right - left; }
        [[nodiscard]] int height() const { return bottom - top; }
    };

    static InkBox inkBox(const CoverageMask& mask)
    {
        InkBox box{.left = mask.width, .right = 0, .top = mask.height, .bottom = 0};
        for (int y = 0; y < mask.height; ++y) {
            for (int x = 0; x < mask.width; ++x) {
                if (mask.at(x, y) < 32)
                    continue;
                box.left = std::min(box.left, x);
                box.right = std::max(box.right, x + 1);
                box.top = std::min(box.top, y);
                box.bottom = std::max(box.bottom, y + 1);
            }
        }
        return box.right == 0 ? InkBox{} : box;
    }

    /// All ink of a mask, in pixels' worth.
    static double ink(const CoverageMask& mask)
    {
        double sum = 0.0;
        for (const auto coverage : mask.coverage)
            sum += coverage / 255.0;
        return sum;
    }
};

} // namespace amperly
