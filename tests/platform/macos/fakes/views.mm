// The fake AppKit's windows, views and buttons.

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wunused-parameter"

#define weak assign // objects live until the program ends, so that nothing has to be weak

#include "tests/platform/macos/fakes/app_kit.h"
#include "tests/platform/macos/fakes/display_links.h"
#include "tests/platform/macos/fakes/images.h"

using namespace amperly::fake_mac;

@implementation NSResponder
@end

@implementation NSWindow

- (NSRect)frame
{
    return of(self).frame;
}

- (NSScreen*)screen
{
    return NSScreen.mainScreen;
}

- (NSWindowOcclusionState)occlusionState
{
    return stage().system.windowsAreSeen ? NSWindowOcclusionStateVisible : NSWindowOcclusionState{};
}

- (void)makeKeyWindow
{
    ++stage().popover.keyWindows;
}

- (BOOL)makeFirstResponder:(NSResponder*)responder
{
    if (responder == nil)
        fault("nobody as first responder");
    ++stage().popover.firstResponders;
    return YES;
}

@end

@implementation NSView
REMEMBERED(NSRect, frame, setFrame)
REMEMBERED(NSAutoresizingMaskOptions, autoresizingMask, setAutoresizingMask)

- (instancetype)initWithFrame:(NSRect)frame
{
    of(self).frame = frame;
    return self;
}

- (NSRect)bounds
{
    return NSMakeRect(0, 0, of(self).frame.size.width, of(self).frame.size.height);
}

- (void)setBounds:(NSRect)bounds
{
    fault("bounds are for reading here");
}

- (NSWindow*)window
{
    NSView* view = self;
    while (of(view).superview != nil)
        view = of(view).superview;
    return of(view).window;
}

- (void)addSubview:(NSView*)view
{
    if (view == nil)
        fault("nothing as a subview, which raises");
    else if (self.window == nil)
        fault("a view of the toolkit's that is taken in before there is a window");
    else
        of(view).superview = self;
}

- (CADisplayLink*)displayLinkWithTarget:(id)target selector:(SEL)selector
{
    if (self.window == nil)
        fault("a display link of a view that no display shows");
    return makeDisplayLink(target, selector);
}

- (NSString*)toolTip
{
    return nil;
}

- (void)setToolTip:(NSString*)toolTip
{
    stage().item.toolTip = toolTip == nil ? std::nullopt : std::optional(textOf(toolTip));
}

- (void)setAccessibilityLabel:(NSString*)label
{
    stage().item.spokenLabel = textOf(label);
}

@end

@implementation NSControl
REMEMBERED(id, target, setTarget)
REMEMBERED(SEL, action, setAction)

- (NSInteger)sendActionOn:(NSEventMask)mask
{
    const auto before = static_cast<NSInteger>(of(self).mask);
    of(self).mask = mask;
    return before;
}

- (void)performClick:(id)sender
{
    if (theItem != nil && theItem.menu != nil)
        track(theItem.menu);
    else
        send(of(self).target, of(self).action, self);
}

@end

@implementation NSButton

- (NSString*)title
{
    return makeString(stage().item.title);
}

- (void)setTitle:(NSString*)title
{
    stage().item.title = textOf(title);
}

- (NSImage*)image
{
    return nil;
}

- (void)setImage:(NSImage*)image
{
    StatusItemState& item = stage().item;
    ++item.images;
    item.isTemplate = image.isTemplate == YES;
    item.width = image.size.width;
    item.height = image.size.height;
    item.bitmaps.clear();
    for (NSBitmapImageRep* const each : fields<ImageFields>(image).representations) {
        Bitmap& bitmap = item.bitmaps.emplace_back();
        bitmap.width = static_cast<int>(each.pixelsWide);
        bitmap.height = static_cast<int>(each.pixelsHigh);
        for (NSInteger y = 0; y < each.pixelsHigh; ++y) {
            for (NSInteger x = 0; x < each.pixelsWide; ++x) {
                const unsigned char* const pixel = each.bitmapData + y * each.bytesPerRow + x * 4;
                bitmap.alpha.push_back(pixel[3]);
                bitmap.isBlack = bitmap.isBlack && pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0;
            }
        }
    }
}

- (NSCellImagePosition)imagePosition
{
    return NSNoImage;
}

- (void)setImagePosition:(NSCellImagePosition)position
{
    stage().item.onlyImage = position == NSImageOnly;
}

@end

@implementation NSStatusBarButton
@end

BOOL NSPointInRect(NSPoint point, NSRect rect)
{
    return point.x >= rect.origin.x && point.x < rect.origin.x + rect.size.width && point.y >= rect.origin.y
            && point.y < rect.origin.y + rect.size.height
        ? YES
        : NO;
}

namespace amperly::fake_mac {

void putIntoWindow(NSView* root, NSRect frame)
{
    of(root).window = [NSWindow new];
    of(of(root).window).frame = frame;
}

} // namespace amperly::fake_mac
