// The part of CoreGraphics that Amperly calls, declared by hand.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "../CoreFoundation/CoreFoundation.h"

typedef double CGFloat;

typedef struct CGPoint {
    CGFloat x;
    CGFloat y;
} CGPoint;

typedef struct CGSize {
    CGFloat width;
    CGFloat height;
} CGSize;

typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;

typedef struct CGContext* CGContextRef;
typedef struct CGColorSpace* CGColorSpaceRef;
enum CGImageAlphaInfo : uint32_t { kCGImageAlphaOnly = 7 };
enum CGBitmapInfo : uint32_t { kCGBitmapAlphaInfoMask = 0x1f };

#ifdef __cplusplus
extern "C" {
#endif

CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
    size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo) CF_RETURNS_RETAINED;
void CGContextSetShouldSmoothFonts(CGContextRef context, bool smooths);
void CGContextTranslateCTM(CGContextRef context, CGFloat x, CGFloat y);
void CGContextScaleCTM(CGContextRef context, CGFloat x, CGFloat y);
void CGContextSetTextPosition(CGContextRef context, CGFloat x, CGFloat y);

#ifdef __cplusplus
}
#endif
