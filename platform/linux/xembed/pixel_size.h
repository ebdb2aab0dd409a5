// A size in the pixels of the X server, which knows no scale.
#pragma once

namespace amperly {

struct PixelSize {
    int width = 0;
    int height = 0;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

} // namespace amperly
