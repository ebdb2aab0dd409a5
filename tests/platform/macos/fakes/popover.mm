// The fake AppKit's popovers.

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wunused-parameter"

#define weak assign // objects live until the program ends, so that nothing has to be weak

#include "tests/platform/macos/fakes/app_kit.h"

#include <utility>

using namespace amperly::fake_mac;

namespace {

NSPopover* shownPopover;
NSPopover* closingPopover;

} // namespace

@implementation NSViewController
REMEMBERED(NSView*, view, setView)

- (instancetype)initWithNibName:(NSString*)name bundle:(NSBundle*)bundle
{
    return self;
}

@end

@implementation NSPopover
REMEMBERED(id<NSPopoverDelegate>, delegate, setDelegate)
REMEMBERED(NSPopoverBehavior, behavior, setBehavior)

- (instancetype)init
{
    return self;
}

- (NSViewController*)contentViewController
{
    return of(self).contentViewController;
}

- (void)setContentViewController:(NSViewController*)controller
{
    of(self).contentViewController = controller;
    stage().popover.hasContent = controller != nil;
}

- (NSSize)contentSize
{
    return NSMakeSize(stage().popover.width, stage().popover.height);
}

- (void)setContentSize:(NSSize)size
{
    stage().popover.width = size.width;
    stage().popover.height = size.height;
}

- (BOOL)animates
{
    return stage().popover.animates ? YES : NO;
}

- (void)setAnimates:(BOOL)animates
{
    stage().popover.animates = animates == YES;
}

- (BOOL)isShown
{
    return of(self).shown;
}

- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)edge
{
    if (view == nil || rect.size.width <= 0)
        fault("a popover without a place, which raises");
    NSView* const content = of(self).contentViewController.view;
    if (content == nil || of(content).subviews != 1)
        fault("a popover without content");
    of(self).shown = YES;
    shownPopover = self;
    ++stage().popover.showings;
    stage().popover.isShown = true;
    stage().popover.opensBelow = edge == NSRectEdgeMinY;
}

- (void)close
{
    if (!of(self).shown)
        return;
    if ([of(self).delegate respondsToSelector:@selector(popoverWillClose:)])
        [of(self).delegate popoverWillClose:[NSNotification new]];
    of(self).shown = NO;
    shownPopover = nil;
    closingPopover = self;
    stage().popover.isShown = false;
    if (stage().system.popoverClosesAtOnce)
        finishPopoverAnimation();
}

@end

namespace amperly::fake_mac {

void resetPopovers()
{
    shownPopover = nil;
    closingPopover = nil;
}

void pressElsewhere()
{
    if (shownPopover != nil && shownPopover.behavior == NSPopoverBehaviorTransient)
        [shownPopover close];
}

void finishPopoverAnimation()
{
    NSPopover* const popover = std::exchange(closingPopover, nil);
    if (popover != nil && [of(popover).delegate respondsToSelector:@selector(popoverDidClose:)])
        [of(popover).delegate popoverDidClose:[NSNotification new]];
}

} // namespace amperly::fake_mac
