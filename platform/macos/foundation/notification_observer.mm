#include "platform/macos/foundation/notification_observer.h"

#include <utility>

@interface AMPNotificationTarget : NSObject {
@public
    std::function<void()> _handler; // used on the main thread only
}
@end

@implementation AMPNotificationTarget

- (void)hear:(NSNotification*)notification
{
    [self announce];
}

- (void)announce
{
    if (!NSThread.isMainThread) {
        __weak AMPNotificationTarget* weakSelf = self;
        [NSOperationQueue.mainQueue addOperationWithBlock:^{ [weakSelf announce]; }];
        return;
    }
    if (_handler)
        _handler();
}

@end

namespace amperly {

NotificationObserver::NotificationObserver(
    NSNotificationCenter* center, NSNotificationName name, std::function<void()> handler)
    : m_center(center), m_target([AMPNotificationTarget new])
{
    m_target->_handler = std::move(handler);
    [m_center addObserver:m_target selector:@selector(hear:) name:name object:nil];
}

NotificationObserver::~NotificationObserver()
{
    [m_center removeObserver:m_target];
    m_target->_handler = nullptr;
}

} // namespace amperly
