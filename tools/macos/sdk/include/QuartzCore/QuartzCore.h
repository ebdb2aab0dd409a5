// The part of QuartzCore that Amperly calls, declared by hand.
#pragma once

#include "../Foundation/Foundation.h"

#pragma clang assume_nonnull begin

typedef struct CAFrameRateRange {
    float minimum;
    float maximum;
    float preferred;
} CAFrameRateRange AMPERLY_SINCE_MACOS(12.0);
extern "C" CAFrameRateRange CAFrameRateRangeMake(float minimum, float maximum, float preferred)
    AMPERLY_SINCE_MACOS(12.0);

AMPERLY_SINCE_MACOS(14.0)
@interface CADisplayLink : NSObject
@property (readonly) double timestamp;
@property CAFrameRateRange preferredFrameRateRange;
- (void)addToRunLoop:(NSRunLoop*)loop forMode:(NSRunLoopMode)mode;
- (void)invalidate;
@end

#pragma clang assume_nonnull end
