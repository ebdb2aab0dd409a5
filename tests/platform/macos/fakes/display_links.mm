// The fake QuartzCore: display links that fire when the test shows a picture.

#include "tests/platform/macos/fakes/display_links.h"

#include <algorithm>

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-property-implementation"

using namespace amperly::fake_mac;

namespace {

struct LinkFields {
    id target = nil;
    SEL selector = nullptr;
    double timestamp = 0.0;
};

std::vector<CADisplayLink*> running;

} // namespace

CAFrameRateRange CAFrameRateRangeMake(float minimum, float maximum, float preferred)
{
    return {minimum, maximum, preferred};
}

@implementation CADisplayLink

- (double)timestamp
{
    return fields<LinkFields>(self).timestamp;
}

- (void)setPreferredFrameRateRange:(CAFrameRateRange)range
{
    if (range.minimum > range.preferred || range.preferred > range.maximum)
        fault("frame rates out of order, which raises");
    stage().frameRate = range.preferred;
}

- (void)addToRunLoop:(NSRunLoop*)loop forMode:(NSRunLoopMode)mode
{
    if (loop != NSRunLoop.mainRunLoop || textOf(mode) != textOf(NSRunLoopCommonModes))
        fault("a display link that stands still while a menu is open");
    running.push_back(self);
    stage().displayLinks = static_cast<int>(running.size());
}

- (void)invalidate
{
    std::erase(running, self);
    stage().displayLinks = static_cast<int>(running.size());
}

@end

namespace amperly::fake_mac {

CADisplayLink* makeDisplayLink(id target, SEL selector)
{
    CADisplayLink* const link = [CADisplayLink new];
    fields<LinkFields>(link) = {.target = target, .selector = selector};
    return link;
}

void showFrame(double timestamp)
{
    const std::vector<CADisplayLink*> links = running;
    for (CADisplayLink* const link : links) {
        LinkFields& held = fields<LinkFields>(link);
        held.timestamp = timestamp;
        send(held.target, held.selector, link);
    }
}

} // namespace amperly::fake_mac
