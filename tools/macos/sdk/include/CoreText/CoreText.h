// The part of CoreText that Amperly calls, declared by hand.
#pragma once

#include "../CoreFoundation/CoreFoundation.h"
#include "../CoreGraphics/CoreGraphics.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef const struct __CTLine* CTLineRef;
enum CTLineBoundsOptions : unsigned long { kCTLineBoundsUseGlyphPathBounds = 1 << 3 };

CTLineRef CTLineCreateWithAttributedString(CFAttributedStringRef text) CF_RETURNS_RETAINED;
double CTLineGetTypographicBounds(CTLineRef line, CGFloat* ascent, CGFloat* descent, CGFloat* leading);
CGRect CTLineGetBoundsWithOptions(CTLineRef line, CTLineBoundsOptions options);
void CTLineDraw(CTLineRef line, CGContextRef context);

#ifdef __cplusplus
}
#endif
