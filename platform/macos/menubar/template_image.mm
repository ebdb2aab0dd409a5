#include "platform/macos/menubar/template_image.h"

#include <cmath>

namespace amperly {
namespace {

constexpr NSInteger kBytesPerPixel = 4;
constexpr NSInteger kAlpha = 3; // behind red, green and blue, which stay 0

/// A bitmap of `size` points in which one pixel of the mask is one of the screen's.
NSBitmapImageRep* representation(const StatusPicture& picture, NSSize size, int scale)
{
    CoverageMask mask;
    picture.draw(mask, scale);

    NSBitmapImageRep* const bitmap =
        [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                pixelsWide:static_cast<NSInteger>(size.width) * scale
                                                pixelsHigh:static_cast<NSInteger>(size.height) * scale
                                             bitsPerSample:8
                                           samplesPerPixel:kBytesPerPixel
                                                  hasAlpha:YES
                                                  isPlanar:NO
                                            colorSpaceName:NSDeviceRGBColorSpace
                                               bytesPerRow:0
                                              bitsPerPixel:0];
    if (bitmap == nil)
        return nil;
    const int rows = std::min(mask.height, static_cast<int>(bitmap.pixelsHigh));
    const int columns = std::min(mask.width, static_cast<int>(bitmap.pixelsWide));
    for (int y = 0; y < rows; ++y) {
        unsigned char* const row = bitmap.bitmapData + y * bitmap.bytesPerRow;
        for (int x = 0; x < columns; ++x)
            row[x * kBytesPerPixel + kAlpha] = mask.at(x, y);
    }
    bitmap.size = size;
    return bitmap;
}

} // namespace

NSImage* templateImage(const StatusPicture& picture)
{
    const NSSize size = NSMakeSize(std::ceil(picture.widthPoints()), std::ceil(picture.heightPoints()));
    NSImage* const image = [[NSImage alloc] initWithSize:size];
    for (const int scale : {1, 2}) {
        if (NSBitmapImageRep* const bitmap = representation(picture, size, scale))
            [image addRepresentation:bitmap];
    }
    [image setTemplate:YES]; // image.template would be a keyword of C++
    return image;
}

} // namespace amperly
