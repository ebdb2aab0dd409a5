// The fake AppKit's menu bar, and the clicks that it gets.

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wunused-parameter"

#define weak assign // objects live until the program ends, so that nothing has to be weak

#include "tests/platform/macos/fakes/app_kit.h"

using namespace amperly::fake_mac;

@implementation NSStatusItem
- (NSMenu*)menu
{
    return of(self).menu;
}

- (NSStatusBarButton*)button
{
    if (!stage().system.givesButton)
        return nil;
    if (of(self).button == nil)
        of(self).button = makeBarButton();
    return of(self).button;
}

- (void)setMenu:(NSMenu*)menu
{
    of(self).menu = menu;
    stage().item.hasMenu = menu != nil;
}

- (NSString*)autosaveName
{
    return makeString(stage().item.autosaveName);
}

- (void)setAutosaveName:(NSString*)name
{
    stage().item.autosaveName = textOf(name);
}

@end

@implementation NSStatusBar

- (CGFloat)thickness
{
    return stage().system.barThickness;
}

+ (NSStatusBar*)systemStatusBar
{
    static NSStatusBar* const bar = [NSStatusBar new];
    return bar;
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length
{
    if (length != NSVariableStatusItemLength)
        fault("a status item that is not as long as its picture");
    ++stage().item.count;
    theItem = [NSStatusItem new];
    return theItem;
}

- (void)removeStatusItem:(NSStatusItem*)item
{
    if (item != theItem)
        fault("removing a status item that is not there");
    forgetPlace(stage().item.autosaveName);
    --stage().item.count;
    theItem = nil;
}

@end

@implementation NSEvent

+ (NSPoint)mouseLocation
{
    const NSRect place = itemFrame();
    return stage().system.pointerOnItem ? NSPoint{place.origin.x + 5.0, place.origin.y + 5.0}
                                        : NSPoint{100.0, 100.0};
}

+ (NSUInteger)pressedMouseButtons
{
    return stage().system.pressedButtons;
}

- (NSEventType)type
{
    return of(self).type;
}

- (NSTimeInterval)timestamp
{
    return of(self).timestamp;
}
@end

namespace amperly::fake_mac {

NSStatusItem* theItem;
NSEvent* currentEvent;

NSRect itemFrame()
{
    return NSMakeRect(1000, 878, 40, 22);
}

NSStatusBarButton* makeBarButton()
{
    NSStatusBarButton* const button =
        [[NSStatusBarButton alloc] initWithFrame:NSMakeRect(0, 0, itemFrame().size.width, 22)];
    putIntoWindow(button, itemFrame());
    return button;
}

void click(int mouseButton, const MenuUse& use, double heldSeconds)
{
    setMenuUse(use);
    stage().system.pointerOnItem = true;
    pressElsewhere(mouseButton); // the item lies outside of a popover
    stage().system.pointerOnItem = false;
    if (theItem.menu != nil) {
        track(theItem.menu); // and the click never reaches the button
        return;
    }
    advance(heldSeconds);
    currentEvent = [NSEvent new];
    of(currentEvent).type = mouseButton == kRight ? NSEventTypeRightMouseUp : NSEventTypeLeftMouseUp;
    of(currentEvent).timestamp = stage().system.uptime;
    NSStatusBarButton* const button = theItem.button;
    if (button != nil && (of(button).mask & (1ULL << of(currentEvent).type)) != 0)
        send(button.target, button.action, button);
}

void pressByAccessibility()
{
    advance(3.0); // whatever the mouse did last was before
    [theItem.button performClick:nil];
}

} // namespace amperly::fake_mac
