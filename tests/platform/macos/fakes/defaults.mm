// The fake Foundation's notifications, key observations and user defaults.

#include "tests/platform/macos/fakes/process.h"
#include "tests/platform/macos/fakes/values.h"

#include <algorithm>

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wunused-parameter"

extern "C" const char* sel_getName(SEL); // the runtime's

using namespace amperly::fake_mac;

namespace {

struct NotificationObserver {
    NSNotificationCenter* center;
    id observer;
    SEL selector;
    std::string name;
};

struct KeyObserver {
    NSObject* observer;
    std::string key;
    void* context;
};

std::vector<NotificationObserver> notificationObservers;
std::vector<KeyObserver> keyObservers;
DictionaryFields storedObjects;
DictionaryFields registeredObjects;

void countObservers()
{
    stage().observers = static_cast<int>(notificationObservers.size() + keyObservers.size());
}

void postChange()
{
    post(NSUserDefaultsDidChangeNotification, NSNotificationCenter.defaultCenter);
}

void announceKey(const std::string& key)
{
    const std::vector<KeyObserver> observers = keyObservers;
    for (const KeyObserver& each : observers) {
        if (each.key == key)
            [each.observer observeValueForKeyPath:makeString(key)
                                         ofObject:NSUserDefaults.standardUserDefaults
                                           change:nil
                                          context:each.context];
    }
}

void store(const std::string& key, id object)
{
    if (object == nil)
        storedObjects.erase(key);
    else
        storedObjects[key] = object;
    announceKey(key);
}

} // namespace

@implementation NSObject (KeyValueObserving)

- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void*)context
{
    if (textOf(keyPath).find('.') != std::string::npos)
        fault("a key with a dot is a path");
    keyObservers.push_back({observer, textOf(keyPath), context});
    countObservers();
}

- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(void*)context
{
    const auto place = std::find_if(keyObservers.begin(), keyObservers.end(), [&](const KeyObserver& each) {
        return each.observer == observer && each.key == textOf(keyPath) && each.context == context;
    });
    if (place == keyObservers.end())
        fault("removing an observer of " + textOf(keyPath) + " that is none, which raises");
    else
        keyObservers.erase(place);
    countObservers();
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context
{
    fault("an observation that nobody takes, which raises");
}

@end

@implementation NSNotification
@end

@implementation NSNotificationCenter

+ (NSNotificationCenter*)defaultCenter
{
    static NSNotificationCenter* const center = [NSNotificationCenter new];
    return center;
}

- (void)addObserver:(id)observer selector:(SEL)selector name:(NSNotificationName)name object:(id)object
{
    if (!responds(observer, selector))
        fault(std::string("an observer without ") + sel_getName(selector));
    notificationObservers.push_back({self, observer, selector, textOf(name)});
    countObservers();
}

- (void)removeObserver:(id)observer
{
    std::erase_if(notificationObservers,
        [&](const NotificationObserver& each) { return each.center == self && each.observer == observer; });
    countObservers();
}

@end

const NSNotificationName NSUserDefaultsDidChangeNotification = @"NSUserDefaultsDidChangeNotification";

@implementation NSUserDefaults

+ (NSUserDefaults*)standardUserDefaults
{
    static NSUserDefaults* const defaults = [NSUserDefaults new];
    return defaults;
}

- (id)objectForKey:(NSString*)key
{
    for (const auto* const objects : {&storedObjects, &registeredObjects}) {
        if (const auto place = objects->find(textOf(key)); place != objects->end())
            return place->second;
    }
    return nil;
}

- (void)setObject:(id)value forKey:(NSString*)key
{
    store(textOf(key), value);
    postChange();
}

- (void)removeObjectForKey:(NSString*)key
{
    [self setObject:nil forKey:key];
}

- (void)registerDefaults:(NSDictionary*)defaults
{
    for (const auto& [key, object] : fields<DictionaryFields>(defaults))
        registeredObjects[key] = object;
    postChange();
}

@end

namespace amperly::fake_mac {

void post(NSNotificationName name, NSNotificationCenter* center)
{
    const std::vector<NotificationObserver> observers = notificationObservers;
    for (const NotificationObserver& each : observers) {
        if (each.center == center && each.name == textOf(name))
            send(each.observer, each.selector, [NSNotification new]);
    }
}

void resetFoundation()
{
    notificationObservers.clear();
    keyObservers.clear();
    storedObjects.clear();
    registeredObjects.clear();
    resetProcess();
    bridgeNumbers();
}

void writeFromElsewhere(const std::string& key, const Stored& value)
{
    const OtherThread thread;
    store(key, boxed(value));
}

void writeFromOtherThread(const std::string& key, const Stored& value)
{
    const OtherThread thread;
    store(key, boxed(value));
    postChange();
}

void changeQuietly(const std::string& key, const Stored& value)
{
    storedObjects[key] = boxed(value);
    postChange();
}

void forgetPlace(const std::string& autosaveName)
{
    store("NSStatusItem Preferred Position " + autosaveName, nil);
}

void storeSomethingElse(const std::string& key)
{
    store(key, [NSObject new]);
}

Stored storedValue(const std::string& key)
{
    const auto place = storedObjects.find(key);
    return place == storedObjects.end() ? Stored() : unboxed(place->second);
}

} // namespace amperly::fake_mac
