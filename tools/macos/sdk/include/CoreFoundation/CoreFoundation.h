// The part of CoreFoundation that Amperly calls, declared by hand.
#pragma once

#include <stdint.h>

#include "../Availability.h"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__OBJC__)
#define AMPERLY_BRIDGED_TO(Class) __attribute__((objc_bridge(Class)))
#define AMPERLY_BRIDGED_TO_MUTABLE(Class) __attribute__((objc_bridge_mutable(Class)))
#else
#define AMPERLY_BRIDGED_TO(Class)
#define AMPERLY_BRIDGED_TO_MUTABLE(Class)
#endif
#if defined(__clang__)
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_CONSUMED __attribute__((cf_consumed))
#else
#define CF_RETURNS_RETAINED
#define CF_CONSUMED
#endif

typedef unsigned char Boolean;
typedef signed long CFIndex;
typedef unsigned long CFTypeID;

typedef const void* CFTypeRef;
typedef const struct AMPERLY_BRIDGED_TO(NSString) __CFString* CFStringRef;
typedef const struct AMPERLY_BRIDGED_TO(NSDictionary) __CFDictionary* CFDictionaryRef;
typedef struct AMPERLY_BRIDGED_TO_MUTABLE(NSMutableDictionary) __CFDictionary* CFMutableDictionaryRef;
typedef const struct AMPERLY_BRIDGED_TO(NSNumber) __CFNumber* CFNumberRef;
typedef const struct AMPERLY_BRIDGED_TO(NSNumber) __CFBoolean* CFBooleanRef;
typedef const struct AMPERLY_BRIDGED_TO(NSAttributedString) __CFAttributedString* CFAttributedStringRef;
typedef const struct __CFAllocator* CFAllocatorRef;
extern const CFAllocatorRef kCFAllocatorDefault;

CFTypeID CFGetTypeID(CFTypeRef object);
void CFRelease(CFTypeRef object);

typedef uint32_t CFStringEncoding;
enum { kCFStringEncodingUTF8 = 0x08000100 };
CFTypeID CFStringGetTypeID(void);
CFStringRef CFStringCreateWithCString(
    CFAllocatorRef allocator, const char* text, CFStringEncoding encoding) CF_RETURNS_RETAINED;
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding);

typedef CFIndex CFNumberType;
enum { kCFNumberSInt32Type = 3, kCFNumberSInt64Type = 4, kCFNumberFloat64Type = 6 };
CFTypeID CFNumberGetTypeID(void);
Boolean CFNumberIsFloatType(CFNumberRef number);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);

CFTypeID CFBooleanGetTypeID(void);
Boolean CFBooleanGetValue(CFBooleanRef boolean);

typedef void (*CFDictionaryApplierFunction)(const void* key, const void* value, void* context);
CFTypeID CFDictionaryGetTypeID(void);
void CFDictionaryApplyFunction(
    CFDictionaryRef dictionary, CFDictionaryApplierFunction applier, void* context);

typedef CFStringRef CFRunLoopMode;
typedef int32_t CFRunLoopRunResult;
typedef double CFTimeInterval;
extern const CFRunLoopMode kCFRunLoopDefaultMode;
CFRunLoopRunResult CFRunLoopRunInMode(
    CFRunLoopMode mode, CFTimeInterval seconds, Boolean returnAfterSourceHandled);

#ifdef __cplusplus
}
#endif
