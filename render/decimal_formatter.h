// Writes decimal numbers for people, in their locale's digits and separators and with exactly
// 0 or 1 digits behind the separator, rounded half to even: what the system's decimal style
// gives, to the character, without keeping its formatter.
#pragma once

#include "render/number_shape.h"

#include <optional>
#include <string>

namespace amperly {

class DecimalFormatter {
public:
    /// `localeId` is the system's name of a locale; of an unknown one it takes the parent or
    /// the default. `fractionDigits` is 0 or 1. Loads what the system knows about the locale, which
    /// takes a fraction of a millisecond the first time.
    DecimalFormatter(const std::string& localeId, int fractionDigits);

    /// The same with the shape already at hand, for several formatters of one locale. Without
    /// one, the system writes each number.
    DecimalFormatter(
        const std::string& localeId, const std::optional<NumberShape>& shape, int fractionDigits);

    /// Appends `value`. Numbers from 0 to below a quadrillion cost some ten nanoseconds and no
    /// memory of their own; the system writes the others, and should it yield nothing, they come out in
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
