// The part of IOKit's user library that Amperly calls, declared by hand.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "../CoreFoundation/CoreFoundation.h"
#include "../mach/mach.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef mach_port_t io_object_t;
typedef io_object_t io_service_t;
typedef io_object_t io_connect_t;
typedef io_object_t io_registry_entry_t;
typedef uint32_t IOOptionBits;
typedef kern_return_t IOReturn;

#define IO_OBJECT_NULL ((io_object_t)0)
#define kIOReturnSuccess 0
#define kIOReturnNotPrivileged ((IOReturn)0xe00002c1)
#define kIOReturnBadArgument ((IOReturn)0xe00002c2)
#define kIOReturnUnsupported ((IOReturn)0xe00002c7)

extern const mach_port_t kIOMainPortDefault AMPERLY_SINCE_MACOS(12.0);

CFMutableDictionaryRef IOServiceMatching(const char* name) CF_RETURNS_RETAINED;
io_service_t IOServiceGetMatchingService(mach_port_t mainPort, CFDictionaryRef matching CF_CONSUMED);
kern_return_t IOServiceOpen(io_service_t service, task_port_t task, uint32_t type, io_connect_t* connection);
kern_return_t IOServiceClose(io_connect_t connection);
kern_return_t IOObjectRelease(io_object_t object);
kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector, const void* input,
    size_t inputSize, void* output, size_t* outputSize);
CFTypeRef IORegistryEntryCreateCFProperty(io_registry_entry_t entry, CFStringRef key,
    CFAllocatorRef allocator, IOOptionBits options) CF_RETURNS_RETAINED;

#ifdef __cplusplus
}
#endif
