#include "platform/macos/menubar/template_image.h"

#include "platform/macos/drawing/alpha_bitmap.h"

#include <cmath>

namespace amperly {
namespace {

/// A bitmap of `size` points in which one pixel of the mask is one of the screen's.
NSBitmapImageRep* representation(const StatusPicture& picture, NSSize size, int scale)
{
    NSBitmapImageRep* const bitmap
        = clearBitmap(static_cast<int>(size.width) * scale, static_cast<int>(size.height) * scale);
    CoverageMask mask;
    picture.draw(mask, scale);
    inkBitmap(bitmap, mask);
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
