// What this program calls of the C library that only some systems have; see c_interfaces.cpp. Elsewhere
// than on macOS these are declared otherwise, and not used.

#include <clocale>
#include <cstdlib>
#include <type_traits>

#include <xlocale.h> // has strtod_l only for those who have read <cstdlib> before

namespace {

template <typename Declared, typename Expected>
constexpr bool is = std::is_same_v<Declared, Expected>;

static_assert(is<decltype(&newlocale), locale_t (*)(int, const char*, locale_t)>);
static_assert(is<decltype(&strtod_l), double (*)(const char*, char**, locale_t)>);
static_assert(LC_ALL_MASK != 0);

} // namespace
