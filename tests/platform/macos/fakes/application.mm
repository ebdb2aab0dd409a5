// The fake AppKit's application, screen and workspace, and the fake ServiceManagement.

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wunused-parameter"

#define weak assign // objects live until the program ends, so that nothing has to be weak

#include "tests/platform/macos/fakes/app_kit.h"

#import <ServiceManagement/ServiceManagement.h>

using namespace amperly::fake_mac;

@implementation NSScreen

+ (NSScreen*)mainScreen
{
    static NSScreen* const screen = [NSScreen new];
    return stage().system.visibleScreenHeight ? screen : nil;
}

- (NSInteger)maximumFramesPerSecond
{
    return stage().system.framesPerSecond;
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

extern const NSNotificationName NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
    = @"NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification";

@implementation NSWorkspace

- (NSNotificationCenter*)notificationCenter
{
    static NSNotificationCenter* const center = [NSNotificationCenter new];
    return center;
}

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
    currentEvent = nil;
    resetMenus();
    resetPopovers();
    NSApp = [NSApplication new];
    resetFoundation();
}

void changeDisplaySettings(bool reducesMotion, bool increasesContrast)
{
    stage().system.reducesMotion = reducesMotion;
    stage().system.increasesContrast = increasesContrast;
    post(NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification,
        NSWorkspace.sharedWorkspace.notificationCenter);
}

bool reopenApplication()
{
    return [NSApp.delegate applicationShouldHandleReopen:NSApp hasVisibleWindows:NO] == YES;
}

} // namespace amperly::fake_mac
