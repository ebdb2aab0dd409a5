// Numbers as the user has them written: by the region's rules, with whatever the user changed of
// them in the system settings.

#include "render/locale_decimals.h"

#include "platform/macos/foundation/strings.h"
#include "render/number_locale.h"

#import <Foundation/Foundation.h>

namespace amperly {
namespace {

/// `localeId` as the system names locales; empty for the user's own, whatever it becomes.
NSNumberFormatter* formatterFor(const std::string& localeId, int fractionDigits)
{
    NSNumberFormatter* const formatter = [NSNumberFormatter new];
    formatter.locale = localeId.empty() ? NSLocale.autoupdatingCurrentLocale
                                        : [NSLocale localeWithLocaleIdentifier:nsString(localeId)];
    formatter.numberStyle = NSNumberFormatterDecimalStyle;
    formatter.roundingMode = NSNumberFormatterRoundHalfEven;
    formatter.minimumFractionDigits = static_cast<NSUInteger>(fractionDigits);
    formatter.maximumFractionDigits = static_cast<NSUInteger>(fractionDigits);
    return formatter;
}

} // namespace

struct LocaleDecimals::Formatter {
    NSNumberFormatter* formatter;
};

LocaleDecimals::LocaleDecimals(const std::string& localeId, int fractionDigits)
    : m_formatter(std::make_unique<Formatter>(Formatter{formatterFor(localeId, fractionDigits)}))
{
}

LocaleDecimals::~LocaleDecimals() = default;

std::optional<std::string> LocaleDecimals::text(double value) const
{
    NSString* const text = [m_formatter->formatter stringFromNumber:[NSNumber numberWithDouble:value]];
    if (text == nil || text.length == 0)
        return std::nullopt;
    return stdString(text);
}

std::optional<NumberSymbols> numberSymbols(const std::string& localeId)
{
    NSNumberFormatter* const formatter = formatterFor(localeId, 0);
    NumberSymbols symbols;
    int value = 0;
    for (ShortText& digit : symbols.digits) {
        const auto text
            = ShortText::from(stdString([formatter stringFromNumber:[NSNumber numberWithInt:value++]]));
        if (!text)
            return std::nullopt;
        digit = *text;
    }
    const auto decimalSeparator = ShortText::from(stdString(formatter.decimalSeparator));
    const auto groupingSeparator = ShortText::from(stdString(formatter.groupingSeparator));
    if (!decimalSeparator || !groupingSeparator)
        return std::nullopt;
    symbols.decimalSeparator = *decimalSeparator;
    symbols.groupingSeparator = *groupingSeparator;
    return symbols;
}

std::string numberLocaleOfUser()
{
    return {};
}

} // namespace amperly
