// Hears of every change in the user's defaults, whoever makes it.
//
// Changes within this process are announced by a notification, on the thread that made them.
// Changes by other processes are announced to observers of the single key only, on a thread of
// the system's choice.
#pragma once

#import <Foundation/Foundation.h>

#include <functional>

@interface AMPChangeObserver : NSObject {
    NSUserDefaults* _defaults;
    NSMutableSet<NSString*>* _keys;
    std::function<void()> _handler; // used on the main thread only
}

/// Calls `handler` on the main thread, possibly more than once for one change.
- (instancetype)initWithDefaults:(NSUserDefaults*)defaults handler:(std::function<void()>)handler;

/// Follows one key. It must not contain a dot, which would make it a path.
- (void)followKey:(NSString*)key;

/// Ends all of it: the handler is not called any more.
- (void)stop;

@end
