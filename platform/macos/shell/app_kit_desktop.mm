#include "platform/macos/shell/app_kit_desktop.h"

#include "platform/macos/foundation/strings.h"
#include "platform/macos/shell/accessory_application.h"

#import <AppKit/AppKit.h>

#include <utility>

namespace amperly {

void AppKitDesktop::openAddress(std::string_view address)
{
    if (NSURL* const url = [NSURL URLWithString:nsString(address)])
        [NSWorkspace.sharedWorkspace openURL:url];
}

void AppKitDesktop::log(std::string_view line)
{
    NSLog(@"%@", nsString(line));
}

void AppKitDesktop::onReopen(std::function<void()> handler)
{
    m_application.onReopen(std::move(handler));
}

void AppKitDesktop::activate()
{
    [NSApp activateIgnoringOtherApps:YES];
}

void AppKitDesktop::quit()
{
    // The toolkit answers by leaving its event loop, so that everything is put down in order.
    [NSApp terminate:nil];
}

std::optional<int> AppKitDesktop::visibleScreenHeight() const
{
    NSScreen* const screen = NSScreen.mainScreen;
    if (screen == nil)
        return std::nullopt;
    return static_cast<int>(screen.visibleFrame.size.height);
}

bool AppKitDesktop::isInstalled() const
{
    return [NSBundle.mainBundle.bundlePath hasPrefix:@"/Applications/"];
}

std::optional<std::string> AppKitDesktop::shortVersion() const
{
    const id version = [NSBundle.mainBundle objectForInfoDictionaryKey:@"CFBundleShortVersionString"];
    if (![version isKindOfClass:[NSString class]])
        return std::nullopt;
    return stdString(version);
}

} // namespace amperly
