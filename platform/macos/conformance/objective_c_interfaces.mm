// Every constant of the Objective-C frameworks that this program uses, and the types of what it
// asks their objects, stated once more; see c_interfaces.cpp.

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#import <QuartzCore/QuartzCore.h>
#import <ServiceManagement/ServiceManagement.h>

#include <cstddef>
#include <type_traits>

namespace {

template <typename Declared, typename Expected>
constexpr bool is = std::is_same_v<Declared, Expected>;

// AppKit
static_assert(is<decltype(NSVariableStatusItemLength), const CGFloat>);
static_assert(NSImageOnly == 1);
static_assert(NSEventTypeRightMouseUp == 4);
static_assert(NSEventMaskLeftMouseUp == 1ULL << 2 && NSEventMaskRightMouseUp == 1ULL << 4);
static_assert(NSPopoverBehaviorTransient == 1);
static_assert(NSRectEdgeMinY == 1);
static_assert(NSViewWidthSizable == 2 && NSViewHeightSizable == 16);
static_assert(NSApplicationActivationPolicyAccessory == 1);
static_assert(NSWindowOcclusionStateVisible == 1UL << 1);
static_assert(is<NSFontWeight, CGFloat>);
static_assert(is<decltype(NSFontWeightRegular), const NSFontWeight>);
static_assert(is<decltype(NSFontWeightMedium), const NSFontWeight>);
static_assert(is<decltype(&NSPointInRect), BOOL (*)(NSPoint, NSRect)>);

// Foundation
static_assert(NSUTF8StringEncoding == 4 && NSUTF32LittleEndianStringEncoding == 0x9c000100);
static_assert(NSNumberFormatterDecimalStyle == 1 && NSNumberFormatterRoundHalfEven == 4);
static_assert(is<NSInteger, long> && is<NSUInteger, unsigned long> && is<NSTimeInterval, double>);
static_assert(is<NSRect, CGRect> && is<NSSize, CGSize> && is<NSPoint, CGPoint>);
static_assert(is<decltype(&NSLog), void (*)(NSString*, ...)>);

// QuartzCore
static_assert(is<decltype(&CAFrameRateRangeMake), CAFrameRateRange (*)(float, float, float)>);
static_assert(sizeof(CAFrameRateRange) == 3 * sizeof(float));
static_assert(is<decltype(CAFrameRateRange::minimum), float> && offsetof(CAFrameRateRange, minimum) == 0);
static_assert(is<decltype(CAFrameRateRange::maximum), float> && offsetof(CAFrameRateRange, maximum) == 4);
static_assert(is<decltype(CAFrameRateRange::preferred), float> && offsetof(CAFrameRateRange, preferred) == 8);

// ServiceManagement
static_assert(SMAppServiceStatusNotRegistered == 0 && SMAppServiceStatusEnabled == 1);
static_assert(SMAppServiceStatusRequiresApproval == 2 && SMAppServiceStatusNotFound == 3);

// What objects answer; never called.
[[maybe_unused]] void typesOfAnswers(NSStatusItem* item, NSBitmapImageRep* bitmap, NSPopover* popover,
    NSEvent* event, NSScreen* screen, NSTimer* timer, NSNumber* number, NSMenuItem* entry, NSWindow* window)
{
    static_assert(is<decltype(item.button), NSStatusBarButton*>);
    static_assert(is<decltype(item.menu), NSMenu*>);
    static_assert(is<decltype(bitmap.bitmapData), unsigned char*>);
    static_assert(is<decltype(bitmap.bytesPerRow), NSInteger>);
    static_assert(is<decltype(bitmap.pixelsWide), NSInteger>);
    static_assert(is<decltype(popover.contentSize), NSSize>);
    static_assert(is<decltype(popover.shown), BOOL>);
    static_assert(is<decltype(event.type), NSEventType>);
    static_assert(is<decltype(event.timestamp), NSTimeInterval>);
    static_assert(is<decltype(NSEvent.mouseLocation), NSPoint>);
    static_assert(is<decltype(NSEvent.pressedMouseButtons), NSUInteger>);
    static_assert(is<decltype(screen.visibleFrame), NSRect>);
    static_assert(is<decltype(screen.maximumFramesPerSecond), NSInteger>);
    static_assert(is<decltype(NSStatusBar.systemStatusBar.thickness), CGFloat>);
    static_assert(is<decltype(window.frame), NSRect>);
    static_assert(is<decltype(window.occlusionState), NSWindowOcclusionState>);
    static_assert(is<decltype(timer.tolerance), NSTimeInterval>);
    static_assert(is<decltype(number.longLongValue), long long>);
    static_assert(is<decltype(entry.tag), NSInteger>);
    static_assert(is<decltype(SMAppService.mainAppService.status), SMAppServiceStatus>);
}

} // namespace
