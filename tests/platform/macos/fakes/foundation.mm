// The fake Foundation.

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wunused-parameter"

#include "render/code_points.h"
#include "tests/platform/macos/fakes/core_foundation_objects.h"
#include "tests/platform/macos/fakes/objects.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <utility>

// The runtime's own functions, as libobjc has them.
extern "C" {
using Method = id (*)(id, SEL);
id class_createInstance(Class, size_t);
const char* class_getName(Class);
Class class_getSuperclass(Class);
const char* sel_getName(SEL);
SEL sel_registerName(const char*);
signed char class_respondsToSelector(Class, SEL);
Method class_getMethodImplementation(Class, SEL);
void* copyBlock(const void*) __asm__("_Block_copy");
}

using namespace amperly::fake_mac;

// The runtime keeps its table of classes for good.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libobjc.so";
}

namespace {

Class classOf(id object)
{
    return *reinterpret_cast<Class*>(reinterpret_cast<void*>(object));
}

/// Everything ever made, so that the leak checker finds it reachable.
std::vector<const void*>& everything()
{
    static auto& all = *new std::vector<const void*>; // outlives the leak checker's look at it
    return all;
}

template <typename Block>
Block kept(Block block)
{
    const void* const copy = copyBlock(reinterpret_cast<const void*>(block));
    everything().push_back(copy);
    return reinterpret_cast<Block>(const_cast<void*>(copy));
}

struct NotificationObserver {
    id observer;
    SEL selector;
    std::string name;
};

struct KeyObserver {
    NSObject* observer;
    std::string key;
    void* context;
};

struct Timer {
    NSTimer* timer;
    double interval;
    double next;
};

std::vector<NotificationObserver> notificationObservers;
std::vector<KeyObserver> keyObservers;
std::vector<Timer> timers;
std::vector<void (^)(void)> queued;
std::map<std::string, id> storedObjects;
std::map<std::string, id> registeredObjects;
std::set<CFTypeRef> numbers;
bool onMainThread = true;

void countObservers()
{
    stage().observers = static_cast<int>(notificationObservers.size() + keyObservers.size());
}

void post(NSNotificationName name)
{
    const std::vector<NotificationObserver> observers = notificationObservers;
    for (const NotificationObserver& each : observers) {
        if (each.name == textOf(name))
            send(each.observer, each.selector, [NSNotification new]);
    }
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

id boxed(const Stored& value)
{
    if (const auto* text = std::get_if<std::string>(&value))
        return makeString(*text);
    if (const auto* number = std::get_if<long long>(&value))
        return [NSNumber numberWithLongLong:*number];
    if (const auto* real = std::get_if<double>(&value))
        return [NSNumber numberWithDouble:*real];
    if (const auto* flag = std::get_if<bool>(&value))
        return [NSNumber numberWithBool:*flag ? YES : NO];
    return nil;
}

using NumberFields = Stored;
using DictionaryFields = std::map<std::string, id>;

struct SetFields {
    std::vector<id> objects;
    unsigned long changes = 0;
};

struct TimerFields {
    double interval = 0.0;
    double tolerance = 0.0;
    void (^block)(NSTimer*) = nullptr;
};

std::string encoded(const char32_t* characters, std::size_t count)
{
    std::string text;
    for (const char32_t character : std::u32string_view(characters, count)) {
        const auto append = [&](char32_t bits, int shift) {
            text += static_cast<char>(bits | ((character >> shift) & 0x3fU));
        };
        if (character < 0x80) {
            text += static_cast<char>(character);
            continue;
        }
        if (character < 0x800) {
            text += static_cast<char>(0xc0U | (character >> 6));
        } else {
            if (character < 0x10000) {
                text += static_cast<char>(0xe0U | (character >> 12));
            } else {
                text += static_cast<char>(0xf0U | (character >> 18));
                append(0x80, 12);
            }
            append(0x80, 6);
        }
        append(0x80, 0);
    }
    return text;
}

class OtherThread {
public:
    OtherThread() { onMainThread = false; }
    ~OtherThread() { onMainThread = true; }
    OtherThread(const OtherThread&) = delete;
    OtherThread& operator=(const OtherThread&) = delete;
};

} // namespace

@implementation NSObject

+ (void)initialize
{
}

+ (instancetype)alloc
{
    const id object = class_createInstance(self, 0);
    SEL const construct = sel_registerName(".cxx_construct");
    for (Class each = self; each != nil; each = class_getSuperclass(each)) {
        if (class_respondsToSelector(each, construct))
            class_getMethodImplementation(each, construct)(object, construct);
    }
    everything().push_back((__bridge const void*)object);
    return object;
}

+ (instancetype)new
{
    return [[self alloc] init];
}

+ (Class)class
{
    return self;
}

- (instancetype)init
{
    return self;
}

- (void)dealloc
{
}

- (id)retain
{
    return self;
}

- (void)release
{
}

- (id)autorelease
{
    return self;
}

- (id)copyWithZone:(void*)zone
{
    return self;
}

- (BOOL)isEqual:(id)object
{
    return object == self ? YES : NO;
}

- (NSUInteger)hash
{
    return reinterpret_cast<NSUInteger>(self);
}

- (BOOL)respondsToSelector:(SEL)selector
{
    return class_respondsToSelector(classOf(self), selector);
}

- (BOOL)isKindOfClass:(Class)classOfKind
{
    for (Class each = classOf(self); each != nil; each = class_getSuperclass(each)) {
        if (each == classOfKind)
            return YES;
    }
    return NO;
}

@end

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

// A string made at run time; its characters live in _fakeState.
@interface FakeString : NSString
@end

@implementation NSString

- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding
{
    if (encoding == NSUTF32LittleEndianStringEncoding)
        return makeString(encoded(static_cast<const char32_t*>(bytes), length / sizeof(char32_t)));
    if (encoding != NSUTF8StringEncoding)
        fault("a string of another encoding than the fake has");
    return makeString(std::string(static_cast<const char*>(bytes), length));
}

- (NSUInteger)length
{
    return std::strlen(self.UTF8String);
}

- (const char*)UTF8String
{
    return "";
}

- (BOOL)isEqualToString:(NSString*)string
{
    return textOf(self) == textOf(string) ? YES : NO;
}

- (BOOL)hasPrefix:(NSString*)string
{
    return textOf(self).starts_with(textOf(string)) ? YES : NO;
}

@end

@implementation FakeString

- (const char*)UTF8String
{
    return static_cast<const std::string*>(_fakeState)->c_str();
}

@end

@implementation NSConstantString

- (const char*)UTF8String
{
    return static_cast<const char*>(_fakeState);
}

@end

@implementation NSNumber

+ (NSNumber*)numberWithStored:(Stored)value
{
    NSNumber* const number = [NSNumber new];
    fields<NumberFields>(number) = value;
    numbers.insert(number);
    return number;
}

+ (NSNumber*)numberWithBool:(BOOL)value
{
    return [self numberWithStored:Stored(value == YES)];
}

+ (NSNumber*)numberWithDouble:(double)value
{
    return [self numberWithStored:Stored(value)];
}

+ (NSNumber*)numberWithInt:(int)value
{
    return [self numberWithStored:Stored(static_cast<long long>(value))];
}

+ (NSNumber*)numberWithLongLong:(long long)value
{
    return [self numberWithStored:Stored(value)];
}

- (double)doubleValue
{
    if (const auto* real = std::get_if<double>(&fields<NumberFields>(self)))
        return *real;
    if (const auto* number = std::get_if<long long>(&fields<NumberFields>(self)))
        return static_cast<double>(*number);
    return std::get<bool>(fields<NumberFields>(self)) ? 1.0 : 0.0;
}

- (long long)longLongValue
{
    if (const auto* number = std::get_if<long long>(&fields<NumberFields>(self)))
        return *number;
    return static_cast<long long>(self.doubleValue);
}

- (BOOL)boolValue
{
    return self.doubleValue != 0.0 ? YES : NO;
}

@end

@implementation NSDictionary

+ (instancetype)dictionaryWithObject:(id)object forKey:(id)key
{
    NSDictionary* const dictionary = [NSDictionary new];
    fields<DictionaryFields>(dictionary)[textOf(key)] = object;
    return dictionary;
}

@end

@implementation NSMutableDictionary

- (void)setObject:(id)object forKey:(id)key
{
    fields<DictionaryFields>(self)[textOf(key)] = object;
}

@end

@implementation NSMutableSet

- (BOOL)containsObject:(id)object
{
    return std::any_of(fields<SetFields>(self).objects.begin(), fields<SetFields>(self).objects.end(),
               [&](id each) { return textOf(each) == textOf(object); })
        ? YES
        : NO;
}

- (void)addObject:(id)object
{
    fields<SetFields>(self).objects.push_back(object);
}

- (void)removeAllObjects
{
    fields<SetFields>(self).objects.clear();
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained*)buffer
                                    count:(NSUInteger)length
{
    if (state->state != 0)
        return 0;
    state->state = 1;
    state->itemsPtr = fields<SetFields>(self).objects.data();
    state->mutationsPtr = &fields<SetFields>(self).changes;
    return fields<SetFields>(self).objects.size();
}

@end

@implementation NSURL

+ (instancetype)URLWithString:(NSString*)string
{
    if (textOf(string).find(' ') != std::string::npos)
        return nil;
    NSURL* const url = [NSURL new];
    url->_fakeState = new std::string(textOf(string));
    return url;
}

@end

@implementation NSError

- (NSString*)localizedDescription
{
    return makeString(*static_cast<const std::string*>(_fakeState));
}

@end

@implementation NSBundle

+ (NSBundle*)mainBundle
{
    static NSBundle* const bundle = [NSBundle new];
    return bundle;
}

- (NSString*)bundlePath
{
    return makeString(stage().system.bundlePath);
}

- (id)objectForInfoDictionaryKey:(NSString*)key
{
    if (textOf(key) != "CFBundleShortVersionString")
        return nil;
    const auto& version = stage().system.bundleVersion;
    if (const auto* text = std::get_if<std::string>(&version))
        return makeString(*text);
    if (const auto* number = std::get_if<int>(&version))
        return [NSNumber numberWithInt:*number];
    return nil;
}

@end

@implementation NSProcessInfo

+ (NSProcessInfo*)processInfo
{
    static NSProcessInfo* const info = [NSProcessInfo new];
    return info;
}

- (BOOL)isLowPowerModeEnabled
{
    return stage().system.savesPower ? YES : NO;
}

- (NSTimeInterval)systemUptime
{
    return stage().system.uptime;
}

@end

@implementation NSThread

+ (BOOL)isMainThread
{
    return onMainThread ? YES : NO;
}

@end

@implementation NSOperationQueue

+ (NSOperationQueue*)mainQueue
{
    static NSOperationQueue* const queue = [NSOperationQueue new];
    return queue;
}

- (void)addOperationWithBlock:(void (^)(void))block
{
    queued.push_back(kept(block));
}

@end

@implementation NSTimer

+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer*))block
{
    if (!repeats)
        fault("a timer that fires once");
    NSTimer* const timer = [NSTimer new];
    fields<TimerFields>(timer).interval = interval;
    fields<TimerFields>(timer).block = kept(block);
    return timer;
}

- (NSTimeInterval)tolerance
{
    return fields<TimerFields>(self).tolerance;
}

- (void)setTolerance:(NSTimeInterval)tolerance
{
    fields<TimerFields>(self).tolerance = tolerance;
    stage().timerTolerance = tolerance;
}

- (void)invalidate
{
    std::erase_if(timers, [self](const Timer& each) { return each.timer == self; });
    stage().timers = static_cast<int>(timers.size());
}

@end

const NSRunLoopMode NSRunLoopCommonModes = @"kCFRunLoopCommonModes";

@implementation NSRunLoop

+ (NSRunLoop*)mainRunLoop
{
    static NSRunLoop* const loop = [NSRunLoop new];
    return loop;
}

- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode
{
    if (textOf(mode) != textOf(NSRunLoopCommonModes))
        fault("a timer that stands still while a menu is open");
    const double interval = fields<TimerFields>(timer).interval;
    timers.push_back({timer, interval, stage().system.uptime + interval});
    stage().timers = static_cast<int>(timers.size());
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
    notificationObservers.push_back({observer, selector, textOf(name)});
    countObservers();
}

- (void)removeObserver:(id)observer
{
    std::erase_if(notificationObservers,
        [observer](const NotificationObserver& each) { return each.observer == observer; });
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
    post(NSUserDefaultsDidChangeNotification);
}

- (void)removeObjectForKey:(NSString*)key
{
    [self setObject:nil forKey:key];
}

- (void)registerDefaults:(NSDictionary*)defaults
{
    for (const auto& [key, object] : fields<DictionaryFields>(defaults))
        registeredObjects[key] = object;
    post(NSUserDefaultsDidChangeNotification);
}

@end

void NSLog(NSString* format, ...)
{
    if (textOf(format) != "%@")
        fault("a log line that is taken for a format");
    va_list arguments;
    va_start(arguments, format);
    stage().application.log += textOf(va_arg(arguments, NSString*)) + '\n';
    va_end(arguments);
}

namespace amperly::fake_mac {

void fault(const std::string& what)
{
    stage().faults.push_back(what);
}

bool responds(id target, SEL selector)
{
    return class_respondsToSelector(classOf(target), selector);
}

void send(id target, SEL selector, id argument)
{
    if (target == nil || selector == nullptr)
        return;
    if (!responds(target, selector)) {
        fault(std::string(class_getName(classOf(target))) + " does not know " + sel_getName(selector));
        return;
    }
    using MethodOfOne = id (*)(id, SEL, id);
    reinterpret_cast<MethodOfOne>(reinterpret_cast<void*>(
        class_getMethodImplementation(classOf(target), selector)))(target, selector, argument);
}

NSString* makeString(const std::string& text)
{
    FakeString* const string = [FakeString new];
    string->_fakeState = new std::string(text);
    return string;
}

std::string textOf(NSString* string)
{
    const char* const characters = string.UTF8String;
    return characters == nullptr ? std::string() : std::string(characters);
}

id objectIn(NSDictionary* dictionary, NSString* key)
{
    const DictionaryFields& objects = fields<DictionaryFields>(dictionary);
    const auto place = objects.find(textOf(key));
    return place == objects.end() ? nil : place->second;
}

std::u32string charactersOf(NSString* string)
{
    std::u32string characters;
    for (std::string_view rest = string.UTF8String; !rest.empty();)
        characters.push_back(takeCodePoint(rest));
    return characters;
}

void resetFoundation()
{
    notificationObservers.clear();
    keyObservers.clear();
    timers.clear();
    queued.clear();
    storedObjects.clear();
    registeredObjects.clear();
    bridgedNumber = [](CFTypeRef object) -> std::optional<BridgedNumber> {
        if (!numbers.contains(object))
            return std::nullopt;
        const Stored& value = fields<NumberFields>((__bridge NSNumber*)object);
        return BridgedNumber{.isBoolean = std::holds_alternative<bool>(value),
            .isFloat = std::holds_alternative<double>(value)};
    };
}

void advance(double seconds)
{
    const double end = stage().system.uptime + seconds;
    for (;;) {
        const auto soonest = std::min_element(timers.begin(), timers.end(),
            [](const Timer& one, const Timer& other) { return one.next < other.next; });
        if (soonest == timers.end() || soonest->next > end)
            break;
        stage().system.uptime = soonest->next;
        soonest->next += soonest->interval;
        NSTimer* const timer = soonest->timer;
        fields<TimerFields>(timer).block(timer);
    }
    stage().system.uptime = end;
}

void runMainQueue()
{
    const std::vector<void (^)(void)> blocks = std::exchange(queued, {});
    for (const auto block : blocks)
        block();
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
    post(NSUserDefaultsDidChangeNotification);
}

void changeQuietly(const std::string& key, const Stored& value)
{
    storedObjects[key] = boxed(value);
    post(NSUserDefaultsDidChangeNotification);
}

void storeSomethingElse(const std::string& key)
{
    store(key, [NSObject new]);
}

Stored storedValue(const std::string& key)
{
    const auto place = storedObjects.find(key);
    if (place == storedObjects.end())
        return {};
    if ([place->second isKindOfClass:[NSString class]])
        return textOf(place->second);
    return fields<NumberFields>(place->second);
}

} // namespace amperly::fake_mac
