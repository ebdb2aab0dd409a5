// Gives a test program the locale it expects, before anything in it asks.
#pragma once

#include <cstdlib>
#include <string_view>

namespace amperly {

/// One per program, at namespace scope: the first call of the formatter decides for good.
class NumberEnvironment {
public:
    explicit NumberEnvironment(const char* locale) { setenv("LC_ALL", locale, 1); }
};

} // namespace amperly
