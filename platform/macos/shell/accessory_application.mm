#include "platform/macos/shell/accessory_application.h"

#include <cstdlib>
#include <utility>

@interface AMPApplicationDelegate : NSObject <NSApplicationDelegate> {
@public
    std::function<void()> _reopened;
}
@end

@implementation AMPApplicationDelegate

- (BOOL)applicationShouldHandleReopen:(NSApplication*)application hasVisibleWindows:(BOOL)hasVisibleWindows
{
    if (_reopened)
        _reopened();
    return NO;
}

@end

namespace amperly {

AccessoryApplication::AccessoryApplication() : m_delegate([AMPApplicationDelegate new])
{
    // Otherwise the toolkit makes a regular application of this one at its start.
    setenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1", 1);
    NSApplication* const application = NSApplication.sharedApplication;
    [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
    application.delegate = m_delegate;
}

AccessoryApplication::~AccessoryApplication()
{
    m_delegate->_reopened = nullptr;
    if (NSApp.delegate == m_delegate)
        NSApp.delegate = nil;
}

void AccessoryApplication::onReopen(std::function<void()> handler)
{
    m_delegate->_reopened = std::move(handler);
}

} // namespace amperly
