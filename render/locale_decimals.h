// How the system itself writes decimal numbers in a locale. Dear to create and to keep: it is made
// for the moment, to learn a locale's number shape or to write a number beyond the everyday ones.
#pragma once

#include "render/short_text.h"

#include <array>
#include <memory>
#include <optional>
#include <string>

namespace amperly {

class LocaleDecimals {
public:
    /// `localeId` is the system's name of the locale, or what numberLocaleOfUser() says; `fractionDigits` the
    /// exact count of them.
    LocaleDecimals(const std::string& localeId, int fractionDigits);
    ~LocaleDecimals();
    LocaleDecimals(const LocaleDecimals&) = delete;
    LocaleDecimals& operator=(const LocaleDecimals&) = delete;

    /// Rounded half to even. Nothing when the system fails, for example for want of its data.
    [[nodiscard]] std::optional<std::string> text(double value) const;

private:
    struct Formatter;
    std::unique_ptr<Formatter> m_formatter;
};

/// The signs of a locale's numbers.
struct NumberSymbols {
    std::array<ShortText, 10> digits{};
    ShortText decimalSeparator{};
    ShortText groupingSeparator{};
};

/// Nothing when the system does not know them, or they are longer than any are.
[[nodiscard]] std::optional<NumberSymbols> numberSymbols(const std::string& localeId);

} // namespace amperly
