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

std::optional<std::string> UserDefaultsStore::text(std::string_view key) const
{
    const std::optional<PreferenceValue> found = value(key);
    return found ? std::optional(asText(*found)) : std::nullopt;
}

std::int64_t UserDefaultsStore::integer(std::string_view key) const
{
    const std::optional<PreferenceValue> found = value(key);
    return found ? asInteger(*found) : 0;
}

bool UserDefaultsStore::boolean(std::string_view key) const
{
    const std::optional<PreferenceValue> found = value(key);
    return found && asBoolean(*found);
}

double UserDefaultsStore::real(std::string_view key) const
{
    const std::optional<PreferenceValue> found = value(key);
    return found ? asReal(*found) : 0.0;
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

void UserDefaultsStore::onDidChange(ChangeHandler handler)
{
    m_handlers.push_back(std::move(handler));
}

std::optional<PreferenceValue> UserDefaultsStore::value(std::string_view key) const
{
    return valueOf([m_defaults objectForKey:nsString(key)]);
}

void UserDefaultsStore::follow(std::string_view key)
{
    if (m_announced.contains(key))
        return;
    m_announced.emplace(key, value(key));
    [m_observer followKey:nsString(key)];
}

void UserDefaultsStore::announceWhatChanged()
{
    bool changed = false;
    for (auto& [key, announced] : m_announced) {
        std::optional<PreferenceValue> current = value(key);
        if (current == announced)
            continue;
        announced = std::move(current);
        changed = true;
    }
    if (!changed)
        return;
    for (const ChangeHandler& handler : m_handlers)
        handler();
}

} // namespace amperly
