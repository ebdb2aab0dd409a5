// Writes decimal numbers for people, in their locale's digits and separators and with exactly
// 0 or 1 digits behind the separator, rounded half to even: what ICU's decimal style gives, to
// the character, without keeping ICU's formatter.
#pragma once

#include "render/number_shape.h"

#include <optional>
#include <string>

namespace amperly {

class DecimalFormatter {
public:
    /// `localeId` is ICU's name of a locale; of one that ICU doesn't know it takes the parent or
    /// the default. `fractionDigits` is 0 or 1. Loads what ICU knows about the locale, which
    /// takes a fraction of a millisecond the first time.
    DecimalFormatter(const std::string& localeId, int fractionDigits);

    /// The same with the shape already at hand, for several formatters of one locale. Without
    /// one, ICU writes each number.
    DecimalFormatter(
        const std::string& localeId, const std::optional<NumberShape>& shape, int fractionDigits);

    /// Appends `value`. Numbers from 0 to below a quadrillion cost some ten nanoseconds and no
    /// memory of their own; ICU writes the others, and should it yield nothing, they come out in
    /// plain digits with a point.
    void append(std::string& text, double value) const;

    [[nodiscard]] std::string text(double value) const;

    [[nodiscard]] int fractionDigits() const { return m_fractionDigits; }

private:
    std::string m_localeId;
    std::optional<NumberShape> m_shape;
    int m_fractionDigits;
};

} // namespace amperly
