// The fake AppKit and ServiceManagement.

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wunused-parameter"

#define weak assign // objects live until the program ends, so that nothing has to be weak

#import <AppKit/AppKit.h>
#import <ServiceManagement/ServiceManagement.h>

#include "tests/platform/macos/fakes/display_links.h"
#include "tests/platform/macos/fakes/images.h"

#include <utility>

using namespace amperly::fake_mac;

namespace {

NSStatusItem* theItem;
NSPopover* shownPopover;
NSPopover* closingPopover;
NSMenu* openMenu;
NSEvent* currentEvent;
MenuUse menuUse;

/// Whatever the fake classes hold.
struct Fields {
    NSRect frame{};
    NSUInteger autoresizingMask = 0;
    int subviews = 0;
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
    NSEventType type{};
};

Fields& of(NSObject* object)
{
    if (object->_fakeState == nullptr)
        object->_fakeState = new Fields();
    return *static_cast<Fields*>(object->_fakeState);
}

void track(NSMenu* menu);

} // namespace

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

@implementation NSResponder
@end

@implementation NSWindow

- (NSWindowOcclusionState)occlusionState
{
    return NSWindowOcclusionStateVisible;
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
    static NSWindow* const window = [NSWindow new];
    return window;
}

- (void)addSubview:(NSView*)view
{
    if (view == nil)
        fault("nothing as a subview, which raises");
    ++of(self).subviews;
}

- (CADisplayLink*)displayLinkWithTarget:(id)target selector:(SEL)selector
{
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

@implementation NSMenuItem
REMEMBERED(NSString*, title, setTitle)
REMEMBERED(id, target, setTarget)
REMEMBERED(SEL, action, setAction)
REMEMBERED(NSInteger, tag, setTag)
- (BOOL)isHidden
{
    return of(self).hidden;
}

- (void)setHidden:(BOOL)hidden
{
    of(self).hidden = hidden;
}

+ (NSMenuItem*)separatorItem
{
    NSMenuItem* const item = [[NSMenuItem alloc] initWithTitle:@"" action:nullptr keyEquivalent:@""];
    of(item).separator = YES;
    return item;
}

- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key
{
    of(self).title = title;
    of(self).action = action;
    of(self).key = key;
    return self;
}

- (BOOL)isEnabled
{
    return of(self).enabled;
}

- (void)setEnabled:(BOOL)enabled
{
    of(self).enabled = enabled;
}

@end

@implementation NSMenu
REMEMBERED(id<NSMenuDelegate>, delegate, setDelegate)
REMEMBERED(BOOL, autoenablesItems, setAutoenablesItems)

- (instancetype)initWithTitle:(NSString*)title
{
    return self;
}

- (void)addItem:(NSMenuItem*)item
{
    of(self).items.push_back(item);
}

- (NSMenuItem*)itemAtIndex:(NSInteger)index
{
    return of(self).items.at(static_cast<size_t>(index));
}

@end

namespace {

void endTracking(NSMenu* menu, std::optional<int> choice)
{
    openMenu = nil;
    if ([of(menu).delegate respondsToSelector:@selector(menuDidClose:)])
        [of(menu).delegate menuDidClose:menu];
    if (!choice)
        return;
    NSMenuItem* const item = of(menu).items.at(static_cast<size_t>(*choice));
    if (item.isEnabled)
        send(item.target, item.action, item);
}

void track(NSMenu* menu)
{
    if (openMenu != nil)
        fault("a menu opened while one is open");
    openMenu = menu;
    ++stage().menuOpenings;
    if ([of(menu).delegate respondsToSelector:@selector(menuWillOpen:)])
        [of(menu).delegate menuWillOpen:menu];
    stage().menu.clear();
    for (NSMenuItem* const item : of(menu).items) {
        if (!item.isHidden)
            stage().menu.push_back({.title = textOf(item.title),
                .shortcut = textOf(of(item).key),
                .separator = of(item).separator == YES,
                .enabled = item.isEnabled && (!of(menu).autoenablesItems || item.target != nil)});
    }
    if (!stage().system.menuWaits)
        return;
    const MenuUse use = std::exchange(menuUse, {});
    endTracking(menu, use ? use() : std::nullopt);
}

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

@implementation NSEvent
- (NSEventType)type
{
    return of(self).type;
}
@end

@implementation NSScreen

+ (NSScreen*)mainScreen
{
    static NSScreen* const screen = [NSScreen new];
    return stage().system.visibleScreenHeight ? screen : nil;
}

- (NSRect)visibleFrame
{
    return NSMakeRect(0, 0, 1440, stage().system.visibleScreenHeight.value_or(0));
}

@end

__kindof NSApplication* NSApp;

@implementation NSApplication
REMEMBERED(id<NSApplicationDelegate>, delegate, setDelegate)

+ (NSApplication*)sharedApplication
{
    if (NSApp == nil)
        NSApp = [NSApplication new];
    return NSApp;
}

- (NSEvent*)currentEvent
{
    return currentEvent;
}

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy
{
    stage().application.policy = static_cast<int>(policy);
    return YES;
}

- (void)activateIgnoringOtherApps:(BOOL)ignoringOthers
{
    if (ignoringOthers)
        ++stage().application.activations;
}

- (void)terminate:(id)sender
{
    ++stage().application.terminations;
}

@end

@implementation NSWorkspace

- (BOOL)accessibilityDisplayShouldReduceMotion
{
    return stage().system.reducesMotion ? YES : NO;
}

- (BOOL)accessibilityDisplayShouldIncreaseContrast
{
    return stage().system.increasesContrast ? YES : NO;
}

+ (NSWorkspace*)sharedWorkspace
{
    static NSWorkspace* const workspace = [NSWorkspace new];
    return workspace;
}

- (BOOL)openURL:(NSURL*)url
{
    stage().application.opened.push_back(*static_cast<const std::string*>(url->_fakeState));
    return YES;
}

@end

@implementation SMAppService

+ (SMAppService*)mainAppService
{
    static SMAppService* const service = [SMAppService new];
    return service;
}

- (SMAppServiceStatus)status
{
    return static_cast<SMAppServiceStatus>(stage().system.loginStatus);
}

- (BOOL)become:(SMAppServiceStatus)status error:(NSError**)error
{
    if (stage().system.loginFailure) {
        *error = [NSError new];
        (*error)->_fakeState = new std::string(*stage().system.loginFailure);
        return NO;
    }
    stage().system.loginStatus = status;
    return YES;
}

- (BOOL)registerAndReturnError:(NSError**)error
{
    return [self become:SMAppServiceStatusEnabled error:error];
}

- (BOOL)unregisterAndReturnError:(NSError**)error
{
    return [self become:SMAppServiceStatusNotRegistered error:error];
}

+ (void)openSystemSettingsLoginItems
{
    ++stage().system.loginSettingsOpened;
}

@end

namespace amperly::fake_mac {

Stage& stage()
{
    static Stage theStage;
    return theStage;
}

void resetStage()
{
    stage() = Stage();
    theItem = nil;
    shownPopover = nil;
    closingPopover = nil;
    openMenu = nil;
    currentEvent = nil;
    menuUse = {};
    NSApp = [NSApplication new];
    resetFoundation();
}

void click(int mouseButton, const MenuUse& use, double heldSeconds)
{
    menuUse = use;
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

void closeMenu()
{
    if (openMenu != nil)
        endTracking(openMenu, std::nullopt);
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

bool reopenApplication()
{
    return [NSApp.delegate applicationShouldHandleReopen:NSApp hasVisibleWindows:NO] == YES;
}

} // namespace amperly::fake_mac
