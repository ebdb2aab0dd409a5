// ICU's own number formatter for one locale. Dear to create and to keep: it is made for the
// moment, to learn a locale's number shape or to write a number beyond the everyday ones.
#pragma once

#include <unicode/numberformatter.h>

#include <optional>
#include <string>

namespace amperly {

class IcuDecimals {
public:
    /// `localeId` is ICU's name of the locale, `fractionDigits` the exact count of them.
    IcuDecimals(const std::string& localeId, int fractionDigits);

    /// Nothing when ICU fails, for example for want of its data.
    [[nodiscard]] std::optional<std::string> text(double value) const;

private:
    icu::number::LocalizedNumberFormatter m_formatter;
};

} // namespace amperly
