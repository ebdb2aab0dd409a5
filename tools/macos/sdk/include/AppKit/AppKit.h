// The part of AppKit that Amperly calls, declared by hand.
#pragma once

#include "../Foundation/Foundation.h"

#pragma clang assume_nonnull begin

@class CADisplayLink, NSEvent, NSImage, NSMenu, NSMenuItem, NSNotificationCenter, NSScreen, NSStatusBar,
    NSStatusBarButton, NSView, NSWindow;

@interface NSResponder : NSObject
@end

typedef NSString* NSColorSpaceName;
extern "C" const NSColorSpaceName NSDeviceRGBColorSpace;

@interface NSImageRep : NSObject
@property NSSize size;
@property NSInteger pixelsWide;
@property NSInteger pixelsHigh;
@end

@interface NSBitmapImageRep : NSImageRep
- (nullable instancetype)initWithBitmapDataPlanes:(unsigned char* _Nullable* _Nullable)planes
                                       pixelsWide:(NSInteger)width
                                       pixelsHigh:(NSInteger)height
                                    bitsPerSample:(NSInteger)bitsPerSample
                                  samplesPerPixel:(NSInteger)samplesPerPixel
                                         hasAlpha:(BOOL)hasAlpha
                                         isPlanar:(BOOL)isPlanar
                                   colorSpaceName:(NSColorSpaceName)colorSpaceName
                                      bytesPerRow:(NSInteger)bytesPerRow
                                     bitsPerPixel:(NSInteger)bitsPerPixel;
@property (readonly) unsigned char* _Nullable bitmapData;
@property (readonly) NSInteger bytesPerRow;
@end

typedef CGFloat NSFontWeight;
extern "C" const NSFontWeight NSFontWeightRegular;
extern "C" const NSFontWeight NSFontWeightMedium;

typedef NSString* NSFontDescriptorSystemDesign;
extern "C" const NSFontDescriptorSystemDesign NSFontDescriptorSystemDesignRounded AMPERLY_SINCE_MACOS(10.15);

@interface NSFontDescriptor : NSObject
- (nullable NSFontDescriptor*)fontDescriptorWithDesign:(NSFontDescriptorSystemDesign)design
    AMPERLY_SINCE_MACOS(10.15);
@end

@interface NSFont : NSObject
+ (NSFont*)systemFontOfSize:(CGFloat)size;
+ (nullable NSFont*)fontWithDescriptor:(NSFontDescriptor*)descriptor size:(CGFloat)size;
@property (readonly, strong) NSFontDescriptor* fontDescriptor;
@property (nullable, readonly, copy) NSString* familyName;
+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
@end
extern "C" const NSAttributedStringKey NSFontAttributeName;

@interface NSGraphicsContext : NSObject
+ (nullable NSGraphicsContext*)graphicsContextWithBitmapImageRep:(NSBitmapImageRep*)bitmap;
@property (class, nullable, strong) NSGraphicsContext* currentContext;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@end

AMPERLY_SINCE_MACOS(11.0)
@interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

@interface NSImage : NSObject
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description AMPERLY_SINCE_MACOS(11.0);
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration
    AMPERLY_SINCE_MACOS(11.0);
- (void)drawInRect:(NSRect)rect;
- (instancetype)initWithSize:(NSSize)size NS_DESIGNATED_INITIALIZER;
- (void)addRepresentation:(NSImageRep*)representation;
@property NSSize size;
- (void)setTemplate:(BOOL)isTemplate; // `image.template` is no expression in C++
- (BOOL)isTemplate;
@end

typedef NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions) {
    NSViewWidthSizable = 2,
    NSViewHeightSizable = 16,
};

@interface NSView : NSResponder
- (instancetype)initWithFrame:(NSRect)frame NS_DESIGNATED_INITIALIZER;
@property NSRect frame;
@property NSRect bounds;
@property NSAutoresizingMaskOptions autoresizingMask;
@property (nullable, readonly, assign) NSWindow* window;
- (void)addSubview:(NSView*)view;
- (CADisplayLink*)displayLinkWithTarget:(id)target selector:(SEL)selector AMPERLY_SINCE_MACOS(14.0);
@property (nullable, copy) NSString* toolTip;
- (void)setAccessibilityLabel:(nullable NSString*)label;
@end

typedef NS_OPTIONS(unsigned long long, NSEventMask) {
    NSEventMaskLeftMouseDown = 1ULL << 1,
    NSEventMaskLeftMouseUp = 1ULL << 2,
    NSEventMaskRightMouseDown = 1ULL << 3,
    NSEventMaskRightMouseUp = 1ULL << 4,
};

@interface NSControl : NSView
@property (nullable, weak) id target;
@property (nullable) SEL action;
- (NSInteger)sendActionOn:(NSEventMask)mask;
- (void)performClick:(nullable id)sender;
@end

typedef NS_ENUM(NSUInteger, NSCellImagePosition) {
    NSNoImage = 0,
    NSImageOnly = 1,
    NSImageLeft = 2,
};

@interface NSButton : NSControl
@property (copy) NSString* title;
@property (nullable, strong) NSImage* image;
@property NSCellImagePosition imagePosition;
@end

@interface NSStatusBarButton : NSButton
@end

static const CGFloat NSVariableStatusItemLength = -1.0;
static const CGFloat NSSquareStatusItemLength = -2.0;
typedef NSString* NSStatusItemAutosaveName;

@interface NSStatusItem : NSObject
@property (nullable, readonly, strong) NSStatusBarButton* button;
@property (nullable, strong) NSMenu* menu;
@property (null_resettable, copy) NSStatusItemAutosaveName autosaveName;
@end

@interface NSStatusBar : NSObject
@property (class, readonly, strong) NSStatusBar* systemStatusBar;
@property (readonly) CGFloat thickness;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuWillOpen:(NSMenu*)menu;
- (void)menuDidClose:(NSMenu*)menu;
@end

@interface NSMenu : NSObject
- (instancetype)initWithTitle:(NSString*)title NS_DESIGNATED_INITIALIZER;
- (void)addItem:(NSMenuItem*)item;
- (nullable NSMenuItem*)itemAtIndex:(NSInteger)index;
@property (nullable, weak) id<NSMenuDelegate> delegate;
@property BOOL autoenablesItems;
@end

@interface NSMenuItem : NSObject
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)title
                       action:(nullable SEL)action
                keyEquivalent:(NSString*)key NS_DESIGNATED_INITIALIZER;
@property (nullable, weak) id target;
@property (nullable) SEL action;
@property (copy) NSString* title;
@property NSInteger tag;
@property (getter=isEnabled) BOOL enabled;
@property (getter=isHidden) BOOL hidden;
@end

@interface NSViewController : NSResponder
- (instancetype)initWithNibName:(nullable NSString*)name
                         bundle:(nullable NSBundle*)bundle NS_DESIGNATED_INITIALIZER;
@property (strong) NSView* view;
@end

typedef NS_ENUM(NSInteger, NSPopoverBehavior) {
    NSPopoverBehaviorApplicationDefined = 0,
    NSPopoverBehaviorTransient = 1,
    NSPopoverBehaviorSemitransient = 2,
};
typedef NS_ENUM(NSUInteger, NSRectEdge) {
    NSRectEdgeMinX = 0,
    NSRectEdgeMinY = 1,
    NSRectEdgeMaxX = 2,
    NSRectEdgeMaxY = 3,
};

@protocol NSPopoverDelegate <NSObject>
@optional
- (void)popoverWillClose:(NSNotification*)notification;
- (void)popoverDidClose:(NSNotification*)notification;
@end

@interface NSPopover : NSResponder
- (instancetype)init NS_DESIGNATED_INITIALIZER;
@property (nullable, weak) id<NSPopoverDelegate> delegate;
@property (nullable, strong) NSViewController* contentViewController;
@property NSSize contentSize;
@property NSPopoverBehavior behavior;
@property BOOL animates;
@property (readonly, getter=isShown) BOOL shown;
- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)edge;
- (void)close;
@end

typedef NS_OPTIONS(NSUInteger, NSWindowOcclusionState) {
    NSWindowOcclusionStateVisible = 1UL << 1,
};

@interface NSWindow : NSResponder
@property (readonly) NSRect frame;
@property (nullable, readonly, strong) NSScreen* screen;
@property (readonly) NSWindowOcclusionState occlusionState;
- (void)makeKeyWindow;
- (BOOL)makeFirstResponder:(nullable NSResponder*)responder;
@end

typedef NS_ENUM(NSUInteger, NSEventType) {
    NSEventTypeLeftMouseDown = 1,
    NSEventTypeLeftMouseUp = 2,
    NSEventTypeRightMouseDown = 3,
    NSEventTypeRightMouseUp = 4,
};

@interface NSEvent : NSObject
@property (readonly) NSEventType type;
@property (readonly) NSTimeInterval timestamp;
@property (class, readonly) NSPoint mouseLocation;
@property (class, readonly) NSUInteger pressedMouseButtons;
@end

@interface NSScreen : NSObject
@property (class, nullable, readonly, strong) NSScreen* mainScreen;
@property (readonly) NSRect visibleFrame;
@property (readonly) NSInteger maximumFramesPerSecond AMPERLY_SINCE_MACOS(12.0);
@end

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
    NSApplicationActivationPolicyProhibited = 2,
};

@class NSApplication;
@protocol NSApplicationDelegate <NSObject>
@optional
- (BOOL)applicationShouldHandleReopen:(NSApplication*)application hasVisibleWindows:(BOOL)hasVisibleWindows;
@end

@interface NSApplication : NSResponder
@property (class, readonly, strong) __kindof NSApplication* sharedApplication;
@property (nullable, weak) id<NSApplicationDelegate> delegate;
@property (nullable, readonly, strong) NSEvent* currentEvent;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activateIgnoringOtherApps:(BOOL)ignoringOthers;
- (void)terminate:(nullable id)sender;
@end
extern "C" __kindof NSApplication* _Null_unspecified NSApp;

extern "C" const NSNotificationName
    NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification AMPERLY_SINCE_MACOS(10.10);
@interface NSWorkspace : NSObject
@property (class, readonly, strong) NSWorkspace* sharedWorkspace;
@property (readonly, strong) NSNotificationCenter* notificationCenter;
- (BOOL)openURL:(NSURL*)url;
@property (readonly) BOOL accessibilityDisplayShouldReduceMotion;
@property (readonly) BOOL accessibilityDisplayShouldIncreaseContrast;
@end

#pragma clang assume_nonnull end
