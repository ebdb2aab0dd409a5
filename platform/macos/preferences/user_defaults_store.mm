#include "platform/macos/preferences/user_defaults_store.h"

#include "platform/macos/foundation/strings.h"
#import "platform/macos/preferences/change_observer.h"

#include <CoreFoundation/CoreFoundation.h>

namespace amperly {
namespace {

PreferenceValue numberValue(NSNumber* number)
{
    if (CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID())
        return number.boolValue == YES;
    if (CFNumberIsFloatType((__bridge CFNumberRef)number))
        return number.doubleValue;
    return std::int64_t{number.longLongValue};
}

/// What an object of the store holds; nothing for dates, data and collections.
std::optional<PreferenceValue> valueOf(id object)
{
    if ([object isKindOfClass:[NSString class]])
        return stdString(object);
    if ([object isKindOfClass:[NSNumber class]])
        return numberValue(object);
    return std::nullopt;
}

struct Boxed {
    id operator()(const std::string& text) const { return nsString(text); }
    id operator()(std::int64_t number) const { return [NSNumber numberWithLongLong:number]; }
    id operator()(bool flag) const { return [NSNumber numberWithBool:flag]; }
    id operator()(double number) const { return [NSNumber numberWithDouble:number]; }
};

} // namespace

UserDefaultsStore::UserDefaultsStore(NSUserDefaults* defaults) : m_defaults(defaults)
{
    std::function<void()> handler = [this] { announceWhatChanged(); };
    m_observer = [[AMPChangeObserver alloc] initWithDefaults:defaults handler:std::move(handler)];
}

UserDefaultsStore::~UserDefaultsStore()
{
    [m_observer stop];
}

void UserDefaultsStore::registerDefaults(const PreferenceDictionary& defaults)
{
    NSMutableDictionary<NSString*, id>* const objects = [NSMutableDictionary new];
    for (const auto& [key, value] : defaults)
        [objects setObject:std::visit(Boxed{}, value) forKey:nsString(key)];
    [m_defaults registerDefaults:objects];
    for (const auto& [key, value] : defaults)
        follow(key);
}

const PreferenceValue* UserDefaultsStore::value(std::string_view key) const
{
    m_asked = read(key);
    return m_asked ? &*m_asked : nullptr;
}

void UserDefaultsStore::set(std::string_view key, const PreferenceValue& value)
{
    follow(key);
    [m_defaults setObject:std::visit(Boxed{}, value) forKey:nsString(key)];
}

void UserDefaultsStore::remove(std::string_view key)
{
    [m_defaults removeObjectForKey:nsString(key)];
}

std::optional<PreferenceValue> UserDefaultsStore::read(std::string_view key) const
{
    return valueOf([m_defaults objectForKey:nsString(key)]);
}

void UserDefaultsStore::follow(std::string_view key)
{
    if (m_announced.contains(key))
        return;
    m_announced.emplace(key, read(key));
    [m_observer followKey:nsString(key)];
}

void UserDefaultsStore::announceWhatChanged()
{
    bool changed = false;
    for (auto& [key, announced] : m_announced) {
        std::optional<PreferenceValue> current = read(key);
        if (current == announced)
            continue;
        announced = std::move(current);
        changed = true;
    }
    if (changed)
        announceChange();
}

} // namespace amperly
