#include "render/locale_decimals.h"

#include <unicode/dcfmtsym.h>
#include <unicode/numberformatter.h>

#include <cstddef>

namespace amperly {
namespace {

std::optional<ShortText> symbol(
    const icu::DecimalFormatSymbols& symbols, icu::DecimalFormatSymbols::ENumberFormatSymbol which)
{
    std::string utf8;
    symbols.getSymbol(which).toUTF8String(utf8);
    return ShortText::from(utf8);
}

} // namespace

struct LocaleDecimals::Formatter {
    icu::number::LocalizedNumberFormatter formatter;
};

LocaleDecimals::LocaleDecimals(const std::string& localeId, int fractionDigits)
    : m_formatter(std::make_unique<Formatter>(
        Formatter{icu::number::NumberFormatter::withLocale(icu::Locale(localeId.c_str()))
                      .precision(icu::number::Precision::fixedFraction(fractionDigits))
                      .roundingMode(UNUM_ROUND_HALFEVEN)}))
{
}

LocaleDecimals::~LocaleDecimals() = default;

std::optional<std::string> LocaleDecimals::text(double value) const
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::number::FormattedNumber formatted = m_formatter->formatter.formatDouble(value, status);
    if (U_FAILURE(status))
        return std::nullopt;
    std::string utf8;
    formatted.toTempString(status).toUTF8String(utf8);
    if (U_FAILURE(status) || utf8.empty())
        return std::nullopt;
    return utf8;
}

std::optional<NumberSymbols> numberSymbols(const std::string& localeId)
{
    using Symbols = icu::DecimalFormatSymbols;
    // The digits after zero have numbers of their own, all in a row.
    constexpr std::array kDigits{Symbols::kZeroDigitSymbol, Symbols::kOneDigitSymbol,
        Symbols::kTwoDigitSymbol, Symbols::kThreeDigitSymbol, Symbols::kFourDigitSymbol,
        Symbols::kFiveDigitSymbol, Symbols::kSixDigitSymbol, Symbols::kSevenDigitSymbol,
        Symbols::kEightDigitSymbol, Symbols::kNineDigitSymbol};

    UErrorCode status = U_ZERO_ERROR;
    const Symbols symbols{icu::Locale{localeId.c_str()}, status};
    if (U_FAILURE(status))
        return std::nullopt;
    NumberSymbols found;
    for (std::size_t digit = 0; digit < kDigits.size(); ++digit) {
        const auto glyph = symbol(symbols, kDigits[digit]);
        if (!glyph)
            return std::nullopt;
        found.digits[digit] = *glyph;
    }
    const auto decimalSeparator = symbol(symbols, Symbols::kDecimalSeparatorSymbol);
    const auto groupingSeparator = symbol(symbols, Symbols::kGroupingSeparatorSymbol);
    if (!decimalSeparator || !groupingSeparator)
        return std::nullopt;
    found.decimalSeparator = *decimalSeparator;
    found.groupingSeparator = *groupingSeparator;
    return found;
}

} // namespace amperly
