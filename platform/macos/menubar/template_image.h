// The status picture as the menu bar takes it: black where there is ink, clear elsewhere, and
// marked as a template, so that the bar chooses the ink for light, dark and highlighted states.
#pragma once

#include "platform/status_picture.h"

#import <AppKit/AppKit.h>

namespace amperly {

/// Draws `picture` for screens of 1 and of 2 pixels per point. The image is a whole number of
/// points wide; the picture stands at its left.
[[nodiscard]] NSImage* templateImage(const StatusPicture& picture);

} // namespace amperly
