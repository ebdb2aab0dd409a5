// The C++ library of this system reads no floating-point numbers without a stream yet; its C
// library does, in any locale.

#include "platform/decimal_text.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>

#include <xlocale.h> // has strtod_l only for those who have read <cstdlib> before

namespace amperly {

double decimalValue(std::string_view number)
{
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    // Infinity where it fits no double.
    const double value = strtod_l(std::string(number).c_str(), nullptr, plain);
    return std::min(value, std::numeric_limits<double>::max());
}

} // namespace amperly
