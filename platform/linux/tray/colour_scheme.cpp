#include "platform/linux/tray/colour_scheme.h"

#include <utility>

namespace amperly {

namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";
constexpr const char* kNamespace = "org.freedesktop.appearance";
constexpr const char* kKey = "color-scheme";

constexpr std::uint32_t kPreferDark = 1;
constexpr std::uint32_t kPreferLight = 2;

} // namespace

ColourScheme::ColourScheme(BusConnection& connection) : m_connection(connection)
{
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(m_connection.bus(), &slot,
        "type='signal',sender='org.freedesktop.portal.Desktop',"
        "interface='org.freedesktop.portal.Settings',member='SettingChanged',"
        "arg0='org.freedesktop.appearance',arg1='color-scheme'",
        settingChanged, nullptr, this);
    m_match.reset(slot);
    refresh();
}

void ColourScheme::refresh()
{
    sd_bus_message* call = nullptr;
    if (sd_bus_message_new_method_call(m_connection.bus(), &call, kPortal, kPath, kInterface, "Read") < 0)
        return;
    const BusMessage owner(call);
    sd_bus_message_set_auto_start(call, 0);
    sd_bus_message_append(call, "ss", kNamespace, kKey);
    sd_bus_slot* slot = nullptr;
    sd_bus_call_async(m_connection.bus(), &slot, call, answered, this, 0);
    m_call.reset(slot);
    m_connection.settle();
}

int ColourScheme::answered(sd_bus_message* reply, void* self, sd_bus_error*)
{
    // Read answers with a variant in a variant.
    std::uint32_t scheme = 0;
    if (!sd_bus_message_is_method_error(reply, nullptr)
        && sd_bus_message_enter_container(reply, 'v', "v") > 0)
        sd_bus_message_read(reply, "v", "u", &scheme);
    static_cast<ColourScheme*>(self)->become(scheme);
    return 0;
}

int ColourScheme::settingChanged(sd_bus_message* signal, void* self, sd_bus_error*)
{
    std::uint32_t scheme = 0;
    if (sd_bus_message_skip(signal, "ss") >= 0 && sd_bus_message_read(signal, "v", "u", &scheme) >= 0)
        static_cast<ColourScheme*>(self)->become(scheme);
    return 0;
}

void ColourScheme::become(std::uint32_t scheme)
{
    std::optional<bool> prefersDark;
    if (scheme == kPreferDark || scheme == kPreferLight)
        prefersDark = scheme == kPreferDark;
    if (std::exchange(m_prefersDark, prefersDark) != prefersDark && m_changed)
        m_changed();
}

} // namespace amperly
