// The part of Foundation that Amperly calls, declared by hand.
#pragma once

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

#include "../Availability.h"
#include "../CoreFoundation/CoreFoundation.h"
#include "../CoreGraphics/CoreGraphics.h"
#include "../TargetConditionals.h"

#if defined(__APPLE__)
typedef bool BOOL; // on Apple silicon
#else
typedef signed char BOOL; // what the runtime of the fakes has
#endif
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;

static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height)
{
    return CGRect{{x, y}, {width, height}};
}

static inline NSSize NSMakeSize(CGFloat width, CGFloat height)
{
    return CGSize{width, height};
}

extern "C" BOOL NSPointInRect(NSPoint point, NSRect rect);

#define NS_ENUM(type, name)                                                                                  \
    enum name : type name;                                                                                   \
    enum name : type
#define NS_OPTIONS(type, name)                                                                               \
    type name;                                                                                               \
    enum __attribute__((flag_enum)) : type
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_ROOT_CLASS __attribute__((objc_root_class))
#define NS_FORMAT_FUNCTION(format_, first) __attribute__((format(__NSString__, format_, first)))

#pragma clang assume_nonnull begin

@class NSArray<T>, NSDictionary<K, V>, NSError, NSNotification, NSString, NSURL;
typedef NSString* NSNotificationName;
typedef NSString* NSKeyValueChangeKey;
typedef NSString* NSRunLoopMode;

@protocol NSObject
- (BOOL)isEqual:(nullable id)object;
@property (readonly) NSUInteger hash;
- (BOOL)respondsToSelector:(SEL)selector;
- (BOOL)isKindOfClass:(Class)classOfKind;
@end

NS_ROOT_CLASS
@interface NSObject <NSObject> {
    Class isa;
#if !defined(__APPLE__)
@public
    void* _fakeState;
#endif
}
+ (instancetype)alloc;
+ (instancetype)new;
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (void)dealloc;
+ (Class)class;
@end

@protocol NSCopying
@end

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(struct NSFastEnumerationState*)state
                                  objects:(id _Nullable __unsafe_unretained* _Nonnull)buffer
                                    count:(NSUInteger)length;
@end
typedef struct NSFastEnumerationState {
    unsigned long state;
    id __unsafe_unretained _Nullable* _Nullable itemsPtr;
    unsigned long* _Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

typedef NSUInteger NSStringEncoding;
static const NSStringEncoding NSUTF8StringEncoding = 4;
static const NSStringEncoding NSUTF32LittleEndianStringEncoding = 0x9c000100;

@interface NSString : NSObject <NSCopying>
@property (readonly) NSUInteger length;
@property (nullable, readonly) const char* UTF8String;
- (nullable instancetype)initWithBytes:(const void*)bytes
                                length:(NSUInteger)length
                              encoding:(NSStringEncoding)encoding;
- (BOOL)isEqualToString:(NSString*)string;
- (BOOL)hasPrefix:(NSString*)string;
@end

#if !defined(__APPLE__)
// What `@autoreleasepool` stands for there.
@interface NSAutoreleasePool : NSObject
- (void)drain;
@end

// A literal, as the runtime of the fakes lays it out: class, bytes (in _fakeState), length.
@interface NSConstantString : NSString {
@public
    unsigned _length;
}
@end
#endif

@interface NSNumber : NSObject
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithDouble:(double)value;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithLongLong:(long long)value;
@property (readonly) BOOL boolValue;
@property (readonly) double doubleValue;
@property (readonly) long long longLongValue;
@end

@interface NSDictionary<__covariant K, __covariant V> : NSObject
+ (instancetype)dictionaryWithObject:(V)object forKey:(K<NSCopying>)key;
@end

@interface NSMutableDictionary<K, V> : NSDictionary <K, V>
- (void)setObject:(V)object forKey:(K<NSCopying>)key;
@end

typedef NSString* NSAttributedStringKey;
@interface NSAttributedString : NSObject
- (instancetype)initWithString:(NSString*)string
                    attributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attributes;
@end

extern "C" const NSNotificationName NSCurrentLocaleDidChangeNotification;
@interface NSLocale : NSObject
@property (class, readonly, copy) NSLocale* currentLocale;
@property (class, readonly, strong) NSLocale* autoupdatingCurrentLocale;
+ (instancetype)localeWithLocaleIdentifier:(NSString*)identifier;
@end

typedef NS_ENUM(NSUInteger, NSNumberFormatterStyle) {
    NSNumberFormatterNoStyle = 0,
    NSNumberFormatterDecimalStyle = 1,
};
typedef NS_ENUM(NSUInteger, NSNumberFormatterRoundingMode) {
    NSNumberFormatterRoundHalfEven = 4,
};

@interface NSNumberFormatter : NSObject
@property (null_resettable, copy) NSLocale* locale;
@property NSNumberFormatterStyle numberStyle;
@property NSNumberFormatterRoundingMode roundingMode;
@property NSUInteger minimumFractionDigits;
@property NSUInteger maximumFractionDigits;
@property (null_resettable, copy) NSString* decimalSeparator;
@property (null_resettable, copy) NSString* groupingSeparator;
- (nullable NSString*)stringFromNumber:(NSNumber*)number;
@end

@interface NSMutableSet<T> : NSObject <NSFastEnumeration>
- (BOOL)containsObject:(T)object;
- (void)addObject:(T)object;
- (void)removeAllObjects;
@end

@interface NSURL : NSObject
+ (nullable instancetype)URLWithString:(NSString*)string;
@end

@interface NSError : NSObject
@property (readonly, copy) NSString* localizedDescription;
@end

@interface NSBundle : NSObject
@property (class, readonly, strong) NSBundle* mainBundle;
@property (readonly, copy) NSString* bundlePath;
- (nullable id)objectForInfoDictionaryKey:(NSString*)key;
@end

@interface NSProcessInfo : NSObject
@property (class, readonly, strong) NSProcessInfo* processInfo;
@property (readonly) NSTimeInterval systemUptime;
@property (readonly, getter=isLowPowerModeEnabled) BOOL lowPowerModeEnabled AMPERLY_SINCE_MACOS(12.0);
@end

@interface NSThread : NSObject
@property (class, readonly) BOOL isMainThread;
@end

@interface NSOperationQueue : NSObject
@property (class, readonly, strong) NSOperationQueue* mainQueue;
- (void)addOperationWithBlock:(void (^)(void))block;
@end

@interface NSTimer : NSObject
+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer* timer))block;
@property NSTimeInterval tolerance;
- (void)invalidate;
@end

extern "C" const NSRunLoopMode NSRunLoopCommonModes;
@interface NSRunLoop : NSObject
@property (class, readonly, strong) NSRunLoop* mainRunLoop;
- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode;
@end

@interface NSNotification : NSObject
@end

@interface NSNotificationCenter : NSObject
@property (class, readonly, strong) NSNotificationCenter* defaultCenter;
- (void)addObserver:(id)observer
           selector:(SEL)selector
               name:(nullable NSNotificationName)name
             object:(nullable id)object;
- (void)removeObserver:(id)observer;
@end

extern "C" const NSNotificationName NSUserDefaultsDidChangeNotification;
@interface NSUserDefaults : NSObject
- (nullable instancetype)initWithSuiteName:(nullable NSString*)name;
- (void)removePersistentDomainForName:(NSString*)name;
@property (class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (nullable id)objectForKey:(NSString*)key;
- (void)setObject:(nullable id)value forKey:(NSString*)key;
- (void)removeObjectForKey:(NSString*)key;
- (void)registerDefaults:(NSDictionary<NSString*, id>*)defaults;
@end

typedef NS_OPTIONS(NSUInteger, NSKeyValueObservingOptions) {
    NSKeyValueObservingOptionNew = 1,
    NSKeyValueObservingOptionOld = 2,
};
@interface NSObject (KeyValueObserving)
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(nullable void*)context;
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(nullable void*)context;
- (void)observeValueForKeyPath:(nullable NSString*)keyPath
                      ofObject:(nullable id)object
                        change:(nullable NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(nullable void*)context;
@end

extern "C" void NSLog(NSString* format, ...) NS_FORMAT_FUNCTION(1, 2);

#pragma clang assume_nonnull end
