#import "platform/macos/preferences/change_observer.h"

#include <utility>

namespace {

/// Its address tells this class's observations from a superclass's.
char kContext = 0;

} // namespace

@implementation AMPChangeObserver

- (instancetype)initWithDefaults:(NSUserDefaults*)defaults handler:(std::function<void()>)handler
{
    self = [super init];
    if (self != nil) {
        _defaults = defaults;
        _keys = [NSMutableSet new];
        _handler = std::move(handler);
        [NSNotificationCenter.defaultCenter addObserver:self
                                               selector:@selector(defaultsDidChange:)
                                                   name:NSUserDefaultsDidChangeNotification
                                                 object:nil];
    }
    return self;
}

- (void)followKey:(NSString*)key
{
    if ([_keys containsObject:key])
        return;
    [_keys addObject:key];
    [_defaults addObserver:self forKeyPath:key options:0 context:&kContext];
}

- (void)stop
{
    [NSNotificationCenter.defaultCenter removeObserver:self];
    for (NSString* key in _keys)
        [_defaults removeObserver:self forKeyPath:key context:&kContext];
    [_keys removeAllObjects];
    _handler = nullptr;
}

- (void)defaultsDidChange:(NSNotification*)notification
{
    [self announce];
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context
{
    if (context == &kContext)
        [self announce];
    else
        [super observeValueForKeyPath:keyPath ofObject:object change:change context:context];
}

- (void)announce
{
    if (!NSThread.isMainThread) {
        __weak AMPChangeObserver* weakSelf = self;
        [NSOperationQueue.mainQueue addOperationWithBlock:^{ [weakSelf announce]; }];
        return;
    }
    if (_handler)
        _handler();
}

@end
