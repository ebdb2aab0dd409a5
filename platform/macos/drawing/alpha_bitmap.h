// A coverage mask as a bitmap of the system's: black, with the coverage as its opacity.
#pragma once

#include "platform/coverage_mask.h"

#import <AppKit/AppKit.h>

namespace amperly {

/// A clear bitmap of so many pixels; nil without memory for it.
[[nodiscard]] NSBitmapImageRep* clearBitmap(int width, int height);

/// Puts `mask` into the upper left corner of `bitmap`, as far as there is room.
void inkBitmap(NSBitmapImageRep* bitmap, const CoverageMask& mask);

/// Takes the opacity of `bitmap`'s upper left corner into `mask`, which keeps its size and is no
/// larger than the bitmap.
void takeInk(NSBitmapImageRep* bitmap, CoverageMask& mask);

} // namespace amperly
