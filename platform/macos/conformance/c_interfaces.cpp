// Every C function and constant of the system that this program uses, stated once more. On a Mac
// this is compiled against the system's own headers, elsewhere against the hand-written ones: where
// the two disagree about a type or a value, one of the builds fails.

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <CoreText/CoreText.h>
#include <IOKit/IOKitLib.h>
#include <mach/mach.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace {

template <typename Declared, typename Expected>
constexpr bool is = std::is_same_v<Declared, Expected>;

// IOKit
static_assert(is<decltype(&IOServiceMatching), CFMutableDictionaryRef (*)(const char*)>);
static_assert(is<decltype(&IOServiceGetMatchingService), io_service_t (*)(mach_port_t, CFDictionaryRef)>);
static_assert(
    is<decltype(&IOServiceOpen), kern_return_t (*)(io_service_t, task_port_t, std::uint32_t, io_connect_t*)>);
static_assert(is<decltype(&IOServiceClose), kern_return_t (*)(io_connect_t)>);
static_assert(is<decltype(&IOObjectRelease), kern_return_t (*)(io_object_t)>);
static_assert(is<decltype(&IOConnectCallStructMethod),
    kern_return_t (*)(mach_port_t, std::uint32_t, const void*, std::size_t, void*, std::size_t*)>);
static_assert(is<decltype(&IORegistryEntryCreateCFProperty),
    CFTypeRef (*)(io_registry_entry_t, CFStringRef, CFAllocatorRef, IOOptionBits)>);
static_assert(is<decltype(kIOMainPortDefault), const mach_port_t>);
static_assert(is<decltype(mach_task_self()), mach_port_t> || is<decltype(mach_task_self()), mach_port_t&>);
static_assert(is<mach_port_t, unsigned> && is<io_object_t, mach_port_t> && is<io_connect_t, io_object_t>);
static_assert(is<io_registry_entry_t, io_object_t> && is<kern_return_t, int>);
static_assert(is<IOOptionBits, std::uint32_t>);
static_assert(IO_OBJECT_NULL == 0);
static_assert(kIOReturnSuccess == 0);
static_assert(static_cast<unsigned>(kIOReturnNotPrivileged) == 0xe00002c1);
static_assert(static_cast<unsigned>(kIOReturnBadArgument) == 0xe00002c2);
static_assert(static_cast<unsigned>(kIOReturnUnsupported) == 0xe00002c7);

// CoreFoundation
static_assert(is<CFTypeRef, const void*> && is<CFIndex, long> && is<CFTypeID, unsigned long>);
static_assert(is<Boolean, unsigned char>);
static_assert(is<decltype(&CFGetTypeID), CFTypeID (*)(CFTypeRef)>);
static_assert(is<decltype(&CFRelease), void (*)(CFTypeRef)>);
static_assert(is<decltype(&CFStringGetTypeID), CFTypeID (*)()>);
static_assert(
    is<decltype(&CFStringCreateWithCString), CFStringRef (*)(CFAllocatorRef, const char*, CFStringEncoding)>);
static_assert(is<decltype(&CFStringGetCString), Boolean (*)(CFStringRef, char*, CFIndex, CFStringEncoding)>);
static_assert(is<decltype(&CFNumberGetTypeID), CFTypeID (*)()>);
static_assert(is<decltype(&CFNumberIsFloatType), Boolean (*)(CFNumberRef)>);
static_assert(is<decltype(&CFNumberGetValue), Boolean (*)(CFNumberRef, CFNumberType, void*)>);
static_assert(is<decltype(&CFBooleanGetTypeID), CFTypeID (*)()>);
static_assert(is<decltype(&CFBooleanGetValue), Boolean (*)(CFBooleanRef)>);
static_assert(is<decltype(&CFDictionaryGetTypeID), CFTypeID (*)()>);
static_assert(
    is<decltype(&CFDictionaryApplyFunction), void (*)(CFDictionaryRef, CFDictionaryApplierFunction, void*)>);
static_assert(is<CFDictionaryApplierFunction, void (*)(const void*, const void*, void*)>);
static_assert(is<decltype(kCFAllocatorDefault), const CFAllocatorRef>);
static_assert(kCFStringEncodingUTF8 == 0x08000100);
static_assert(kCFNumberSInt64Type == 4 && kCFNumberFloat64Type == 6);

// CoreGraphics
static_assert(is<CGFloat, double> && sizeof(CGRect) == 4 * sizeof(CGFloat));
static_assert(is<decltype(&CGBitmapContextCreate),
    CGContextRef (*)(
        void*, std::size_t, std::size_t, std::size_t, std::size_t, CGColorSpaceRef, std::uint32_t)>);
static_assert(is<decltype(&CGContextSetShouldSmoothFonts), void (*)(CGContextRef, bool)>);
static_assert(is<decltype(&CGContextTranslateCTM), void (*)(CGContextRef, CGFloat, CGFloat)>);
static_assert(is<decltype(&CGContextScaleCTM), void (*)(CGContextRef, CGFloat, CGFloat)>);
static_assert(is<decltype(&CGContextSetTextPosition), void (*)(CGContextRef, CGFloat, CGFloat)>);
static_assert(static_cast<std::uint32_t>(kCGImageAlphaOnly) == 7);

// CoreText
static_assert(is<decltype(&CTLineCreateWithAttributedString), CTLineRef (*)(CFAttributedStringRef)>);
static_assert(is<decltype(&CTLineGetTypographicBounds), double (*)(CTLineRef, CGFloat*, CGFloat*, CGFloat*)>);
static_assert(is<decltype(&CTLineGetBoundsWithOptions), CGRect (*)(CTLineRef, CTLineBoundsOptions)>);
static_assert(is<decltype(&CTLineDraw), void (*)(CTLineRef, CGContextRef)>);
static_assert(static_cast<unsigned long>(kCTLineBoundsUseGlyphPathBounds) == 8);

} // namespace
