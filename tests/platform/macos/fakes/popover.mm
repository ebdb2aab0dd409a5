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
std::vector<NSPopover*> closingPopovers;

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
    if (controller == nil && of(self).contentViewController != nil)
        of(of(self).contentViewController.view).window = nil;
    of(self).contentViewController = controller;
    stage().popover.hasContent
        = shownPopover != nil ? of(shownPopover).contentViewController != nil : controller != nil;
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
    else if (view.window == nil)
        fault("a popover beside what is in no window, which raises");
    NSView* const content = of(self).contentViewController.view;
    if (content == nil)
        fault("a popover without content, which raises");
    else
        putIntoWindow(content, content.frame);
    of(self).shown = YES;
    if (shownPopover != nil)
        fault("two popovers at a time");
    if (of(self).wasShown)
        fault("a popover that is used again, perhaps while it closes");
    of(self).wasShown = YES;
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
    closingPopovers.push_back(self);
    stage().popover.isShown = false;
    if (stage().system.popoverClosesAtOnce)
        finishPopoverAnimation();
}

@end

namespace amperly::fake_mac {

void resetPopovers()
{
    shownPopover = nil;
    closingPopovers.clear();
}

void pressElsewhere(int mouseButton)
{
    if (shownPopover != nil && shownPopover.behavior == NSPopoverBehaviorTransient) {
        stage().system.pressedButtons = 1UL << mouseButton;
        [shownPopover close];
        stage().system.pressedButtons = 0;
    }
}

void closePopover()
{
    [shownPopover close];
}

void finishPopoverAnimation()
{
    const std::vector<NSPopover*> popovers = std::exchange(closingPopovers, {});
    for (NSPopover* const popover : popovers) {
        if ([of(popover).delegate respondsToSelector:@selector(popoverDidClose:)])
            [of(popover).delegate popoverDidClose:[NSNotification new]];
    }
}

} // namespace amperly::fake_mac
