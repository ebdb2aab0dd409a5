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
        of(self).button = [[NSStatusBarButton alloc] initWithFrame:NSMakeRect(0, 0, 40, 22)];
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
    --stage().item.count;
    theItem = nil;
}

@end

@implementation NSEvent
- (NSEventType)type
{
    return of(self).type;
}
@end

namespace amperly::fake_mac {

NSStatusItem* theItem;
NSEvent* currentEvent;

void click(int mouseButton, const MenuUse& use, double heldSeconds)
{
    setMenuUse(use);
    pressElsewhere(); // the item lies outside of a popover
    if (theItem.menu != nil) {
        track(theItem.menu); // and the click never reaches the button
        return;
    }
    advance(heldSeconds);
    currentEvent = [NSEvent new];
    of(currentEvent).type = mouseButton == kRight ? NSEventTypeRightMouseUp : NSEventTypeLeftMouseUp;
    NSStatusBarButton* const button = theItem.button;
    if (button != nil && (of(button).mask & (1ULL << of(currentEvent).type)) != 0)
        send(button.target, button.action, button);
    currentEvent = nil;
}

void pressByAccessibility()
{
    currentEvent = nil;
    [theItem.button performClick:nil];
}

} // namespace amperly::fake_mac
