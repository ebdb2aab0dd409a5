#include "platform/macos/drawing/alpha_bitmap.h"

#include <algorithm>
#include <cstring>

namespace amperly {
namespace {

constexpr NSInteger kBytesPerPixel = 4;
constexpr NSInteger kAlpha = 3; // behind red, green and blue

} // namespace

NSBitmapImageRep* clearBitmap(int width, int height)
{
    NSBitmapImageRep* const bitmap = [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                                             pixelsWide:width
                                                                             pixelsHigh:height
                                                                          bitsPerSample:8
                                                                        samplesPerPixel:kBytesPerPixel
                                                                               hasAlpha:YES
                                                                               isPlanar:NO
                                                                         colorSpaceName:NSDeviceRGBColorSpace
                                                                            bytesPerRow:0
                                                                           bitsPerPixel:0];
    // Nobody promises what is in the memory that the system has taken for it.
    if (unsigned char* const bytes = bitmap.bitmapData)
        std::memset(bytes, 0, static_cast<std::size_t>(bitmap.bytesPerRow * bitmap.pixelsHigh));
    return bitmap;
}

void inkBitmap(NSBitmapImageRep* bitmap, const CoverageMask& mask)
{
    unsigned char* row = bitmap.bitmapData;
    if (row == nullptr)
        return;
    const int rows = std::min(mask.height, static_cast<int>(bitmap.pixelsHigh));
    const int columns = std::min(mask.width, static_cast<int>(bitmap.pixelsWide));
    for (int y = 0; y < rows; ++y, row += bitmap.bytesPerRow) {
        for (int x = 0; x < columns; ++x)
            row[x * kBytesPerPixel + kAlpha] = mask.at(x, y);
    }
}

void takeInk(NSBitmapImageRep* bitmap, CoverageMask& mask)
{
    const unsigned char* row = bitmap.bitmapData;
    if (row == nullptr)
        return;
    auto pixel = mask.coverage.begin();
    for (int y = 0; y < mask.height; ++y, row += bitmap.bytesPerRow) {
        for (int x = 0; x < mask.width; ++x)
            *pixel++ = row[x * kBytesPerPixel + kAlpha];
    }
}

} // namespace amperly
