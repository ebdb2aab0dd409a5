// What the fake AppKit's classes hold, and what is on the screen.
#pragma once

#import <AppKit/AppKit.h>

#include "tests/platform/macos/fakes/objects.h"

namespace amperly::fake_mac {

/// Whatever the fake classes hold.
struct Fields {
    NSRect frame{};
    NSUInteger autoresizingMask = 0;
    NSView* superview = nil;
    NSWindow* window = nil; ///< of the one view at its root
    id target = nil;
    SEL action = nullptr;
    NSEventMask mask = 0;
    NSStatusBarButton* button = nil;
    NSMenu* menu = nil;
    NSString* title = nil;
    NSString* key = nil;
    NSInteger tag = 0;
    BOOL enabled = YES;
    BOOL hidden = NO;
    BOOL separator = NO;
    id delegate = nil;
    BOOL autoenablesItems = YES;
    std::vector<NSMenuItem*> items;
    NSView* view = nil;
    NSViewController* contentViewController = nil;
    NSPopoverBehavior behavior = NSPopoverBehaviorApplicationDefined;
    BOOL shown = NO;
    BOOL wasShown = NO;
    NSEventType type{};
    double timestamp = 0.0;
};

inline Fields& of(NSObject* object)
{
    return fields<Fields>(object);
}

extern NSStatusItem* theItem;
extern NSEvent* currentEvent;

/// Opens a menu and, where menus wait, lets the user have it until it closes.
void track(NSMenu* menu);

/// Hands over what the user will do with the next menu.
void setMenuUse(const MenuUse& use);

/// A window of which `root` is the outermost view.
void putIntoWindow(NSView* root, NSRect frame);

/// Where the status item stands, in the screen's points.
[[nodiscard]] NSRect itemFrame();

/// What a status item is clicked at, in its window.
[[nodiscard]] NSStatusBarButton* makeBarButton();

/// Forgets what is open.
void resetMenus();
void resetPopovers();

} // namespace amperly::fake_mac

// A property that is only remembered.
#define REMEMBERED(Type, name, setter)                                                                       \
    -(Type)name                                                                                              \
    {                                                                                                        \
        return of(self).name;                                                                                \
    }                                                                                                        \
    -(void)setter : (Type)value                                                                              \
    {                                                                                                        \
        of(self).name = value;                                                                               \
    }
