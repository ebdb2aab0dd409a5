// The fake Foundation's numbers, collections, addresses and errors.

#include "tests/platform/macos/fakes/values.h"
#include "tests/platform/macos/fakes/core_foundation_objects.h"

#include <algorithm>
#include <set>

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wunused-parameter"

using namespace amperly::fake_mac;

namespace {

using NumberFields = Stored;

struct SetFields {
    std::vector<id> objects;
    unsigned long changes = 0;
};

std::set<CFTypeRef> numbers;

} // namespace

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

namespace amperly::fake_mac {

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

Stored unboxed(id object)
{
    if (object == nil)
        return {};
    if ([object isKindOfClass:[NSString class]])
        return textOf(object);
    return fields<NumberFields>(object);
}

id objectIn(NSDictionary* dictionary, NSString* key)
{
    const DictionaryFields& objects = fields<DictionaryFields>(dictionary);
    const auto place = objects.find(textOf(key));
    return place == objects.end() ? nil : place->second;
}

void bridgeNumbers()
{
    bridgedNumber = [](CFTypeRef object) -> std::optional<BridgedNumber> {
        if (!numbers.contains(object))
            return std::nullopt;
        const Stored& value = fields<NumberFields>((__bridge NSNumber*)object);
        return BridgedNumber{.isBoolean = std::holds_alternative<bool>(value),
            .isFloat = std::holds_alternative<double>(value)};
    };
}

} // namespace amperly::fake_mac
