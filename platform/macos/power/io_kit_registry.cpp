#include "platform/macos/power/io_kit_registry.h"

#include "platform/macos/foundation/cf_ref.h"
#include "platform/macos/power/io_object.h"

#include <array>
#include <string>

namespace amperly {
namespace {

/// Bytes that hold every name an entry is asked for, with much room to spare. Entries with
/// longer names are left out of a copied dictionary.
constexpr std::size_t kLongestName = 128;

constexpr IOOptionBits kNoOptions = 0;

RegistryScalar numberOf(CFNumberRef number)
{
    if (CFNumberIsFloatType(number)) {
        double value = 0.0;
        CFNumberGetValue(number, kCFNumberFloat64Type, &value);
        return value;
    }
    // The kernel's numbers have no sign of their own: 64 bits, which drivers fill with negative
    // currents as well, and this reads them back as such.
    std::int64_t value = 0;
    CFNumberGetValue(number, kCFNumberSInt64Type, &value);
    return value;
}

RegistryScalar scalarOf(CFTypeRef value)
{
    const CFTypeID type = CFGetTypeID(value);
    if (type == CFBooleanGetTypeID())
        return CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0;
    if (type == CFNumberGetTypeID())
        return numberOf(static_cast<CFNumberRef>(value));
    return {};
}

/// Called for each entry of a dictionary; `context` is the copy that is being made.
void addEntry(const void* key, const void* value, void* context)
{
    std::array<char, kLongestName> name{};
    if (CFGetTypeID(key) != CFStringGetTypeID()
        || !CFStringGetCString(static_cast<CFStringRef>(key), name.data(), static_cast<CFIndex>(name.size()),
            kCFStringEncodingUTF8))
        return;
    const RegistryScalar scalar = scalarOf(value);
    if (scalar != RegistryScalar())
        static_cast<RegistryDictionary*>(context)->emplace(name.data(), scalar);
}

RegistryProperty propertyOf(CFTypeRef value)
{
    if (CFGetTypeID(value) == CFDictionaryGetTypeID()) {
        RegistryDictionary dictionary;
        CFDictionaryApplyFunction(static_cast<CFDictionaryRef>(value), addEntry, &dictionary);
        return dictionary;
    }
    return std::visit([](auto scalar) -> RegistryProperty { return scalar; }, scalarOf(value));
}

} // namespace

RegistryEntry IoKitRegistry::find(std::string_view className)
{
    return IoObject::firstService(className).release();
}

RegistryProperty IoKitRegistry::copyProperty(RegistryEntry entry, std::string_view name)
{
    const CfRef key(
        CFStringCreateWithCString(kCFAllocatorDefault, std::string(name).c_str(), kCFStringEncodingUTF8));
    if (!key)
        return {};
    const CfRef value(IORegistryEntryCreateCFProperty(entry, key.get(), kCFAllocatorDefault, kNoOptions));
    if (!value)
        return {};
    return propertyOf(value.get());
}

void IoKitRegistry::release(RegistryEntry entry)
{
    if (entry != IO_OBJECT_NULL)
        IOObjectRelease(entry);
}

} // namespace amperly
