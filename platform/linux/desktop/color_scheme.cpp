#include "platform/linux/desktop/color_scheme.h"

#include <utility>

namespace amperly {

namespace {

constexpr std::uint32_t kPreferDark = 1;
constexpr std::uint32_t kPreferLight = 2;

} // namespace

ColorScheme::ColorScheme(BusConnection& connection)
    : m_setting(connection, "org.freedesktop.appearance", "color-scheme",
        [this](sd_bus_message* value) { return take(value); })
{
}

bool ColorScheme::take(sd_bus_message* value)
{
    std::uint32_t scheme = 0;
    if (value != nullptr && sd_bus_message_read(value, "v", "u", &scheme) < 0)
        return false;
    become(scheme);
    return true;
}

void ColorScheme::become(std::uint32_t scheme)
{
    std::optional<bool> prefersDark;
    if (scheme == kPreferDark || scheme == kPreferLight)
        prefersDark = scheme == kPreferDark;
    if (std::exchange(m_prefersDark, prefersDark) != prefersDark && m_changed)
        m_changed();
}

} // namespace amperly
