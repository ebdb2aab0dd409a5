// The fake Foundation's numbers: it knows English ones and German ones.

#include "tests/platform/macos/fakes/objects.h"

#include <algorithm>
#include <array>
#include <cstdio>

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-property-implementation"

using namespace amperly::fake_mac;

namespace {

struct NumberFormatterFields {
    NSLocale* locale = nil;
    NSUInteger fractionDigits = 0;
};

} // namespace

const NSNotificationName NSCurrentLocaleDidChangeNotification
    = @"kCFLocaleCurrentLocaleDidChangeNotification";

@implementation NSLocale

+ (NSLocale*)currentLocale
{
    return [self localeWithLocaleIdentifier:makeString(stage().system.locale)];
}

+ (NSLocale*)autoupdatingCurrentLocale
{
    return [NSLocale new]; // whatever the user's is at the time
}

+ (instancetype)localeWithLocaleIdentifier:(NSString*)identifier
{
    NSLocale* const locale = [NSLocale new];
    locale->_fakeState = new std::string(textOf(identifier));
    return locale;
}

@end

@implementation NSNumberFormatter

- (BOOL)isGerman
{
    NSLocale* const locale = fields<NumberFormatterFields>(self).locale;
    if (locale == nil)
        return NO;
    const auto* const own = static_cast<const std::string*>(locale->_fakeState);
    return (own != nullptr ? *own : stage().system.locale).starts_with("de");
}

- (void)setLocale:(NSLocale*)locale
{
    fields<NumberFormatterFields>(self).locale = locale;
}

- (void)setNumberStyle:(NSNumberFormatterStyle)style
{
    if (style != NSNumberFormatterDecimalStyle)
        fault("numbers that are no plain decimals");
}

- (void)setRoundingMode:(NSNumberFormatterRoundingMode)mode
{
    if (mode != NSNumberFormatterRoundHalfEven)
        fault("numbers that are rounded otherwise than half to even");
}

- (void)setMinimumFractionDigits:(NSUInteger)digits
{
    fields<NumberFormatterFields>(self).fractionDigits = digits;
}

- (void)setMaximumFractionDigits:(NSUInteger)digits
{
    if (digits != fields<NumberFormatterFields>(self).fractionDigits)
        fault("numbers with now more, now fewer digits");
}

- (NSString*)decimalSeparator
{
    return [self isGerman] ? @"," : @".";
}

- (NSString*)groupingSeparator
{
    return [self isGerman] ? @"." : @",";
}

- (NSString*)stringFromNumber:(NSNumber*)number
{
    // The C library rounds half to even as well.
    std::array<char, 400> digits{};
    std::snprintf(digits.data(), digits.size(), "%.*f",
        static_cast<int>(fields<NumberFormatterFields>(self).fractionDigits), number.doubleValue);
    std::string text(digits.data());
    const std::size_t point = std::min(text.find('.'), text.size());
    if (point < text.size())
        text.replace(point, 1, textOf(self.decimalSeparator));
    for (std::size_t place = point; place > 3 + (text.front() == '-' ? 1U : 0U);) {
        place -= 3;
        text.insert(place, textOf(self.groupingSeparator));
    }
    return makeString(text);
}

@end

namespace amperly::fake_mac {

void changeLocale(const std::string& identifier)
{
    stage().system.locale = identifier;
    post(NSCurrentLocaleDidChangeNotification, NSNotificationCenter.defaultCenter);
}

} // namespace amperly::fake_mac
