#include "render/icu_decimals.h"

namespace amperly {

IcuDecimals::IcuDecimals(const std::string& localeId, int fractionDigits)
    : m_formatter(icu::number::NumberFormatter::withLocale(icu::Locale(localeId.c_str()))
                      .precision(icu::number::Precision::fixedFraction(fractionDigits))
                      .roundingMode(UNUM_ROUND_HALFEVEN))
{
}

std::optional<std::string> IcuDecimals::text(double value) const
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::number::FormattedNumber formatted = m_formatter.formatDouble(value, status);
    if (U_FAILURE(status))
        return std::nullopt;
    std::string utf8;
    formatted.toTempString(status).toUTF8String(utf8);
    if (U_FAILURE(status) || utf8.empty())
        return std::nullopt;
    return utf8;
}

} // namespace amperly
