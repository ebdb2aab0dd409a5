#include "platform/linux/popover/layer_shell_protocol.h"

#include <iterator>
#include <wayland-client-protocol.h>

namespace amperly::layer_shell {
namespace {

// Opcodes are places in the lists of requests below.
enum ShellRequest : std::uint32_t { GetLayerSurface, DestroyShell };
enum SurfaceRequest : std::uint32_t {
    SetSize,
    SetAnchor,
    SetExclusiveZone,
    SetMargin,
    SetKeyboardInteractivity,
    GetPopup,
    AckConfigure,
    DestroySurface,
    SetLayer,
};

/// Versions from which a proxy's end is told to the compositor.
constexpr std::uint32_t kShellDestroySince = 3;

// One entry for each argument; null where it is not an object of a known interface.
const wl_interface* const kPlainTypes[] = {nullptr, nullptr, nullptr, nullptr};
const wl_interface* const kGetLayerSurfaceTypes[]
    = {&kSurfaceInterface, &wl_surface_interface, &wl_output_interface, nullptr, nullptr};

const wl_message kShellRequests[] = {
    {"get_layer_surface", "no?ous", const_cast<const wl_interface**>(kGetLayerSurfaceTypes)},
    {"destroy", "3", const_cast<const wl_interface**>(kPlainTypes)},
};

#define AMPERLY_PLAIN(name, signature)                                                                       \
    {                                                                                                        \
        name, signature, const_cast<const wl_interface**>(kPlainTypes)                                       \
    }
const wl_message kSurfaceRequests[] = {
    AMPERLY_PLAIN("set_size", "uu"),
    AMPERLY_PLAIN("set_anchor", "u"),
    AMPERLY_PLAIN("set_exclusive_zone", "i"),
    AMPERLY_PLAIN("set_margin", "iiii"),
    AMPERLY_PLAIN("set_keyboard_interactivity", "u"),
    AMPERLY_PLAIN("get_popup", "o"),
    AMPERLY_PLAIN("ack_configure", "u"),
    AMPERLY_PLAIN("destroy", ""),
    AMPERLY_PLAIN("set_layer", "2u"),
};
const wl_message kSurfaceEvents[] = {
    AMPERLY_PLAIN("configure", "uuu"),
    AMPERLY_PLAIN("closed", ""),
};
#undef AMPERLY_PLAIN

} // namespace

const wl_interface kShellInterface
    = {"zwlr_layer_shell_v1", 4, std::size(kShellRequests), kShellRequests, 0, nullptr};
const wl_interface kSurfaceInterface = {"zwlr_layer_surface_v1", 4, std::size(kSurfaceRequests),
    kSurfaceRequests, std::size(kSurfaceEvents), kSurfaceEvents};

wl_proxy* getLayerSurface(wl_proxy* shell, wl_surface* surface, const char* nameSpace)
{
    return wl_proxy_marshal_flags(shell, GetLayerSurface, &kSurfaceInterface, wl_proxy_get_version(shell), 0,
        nullptr, surface, nullptr, kOverlayLayer, nameSpace);
}

void setSize(wl_proxy* surface, std::uint32_t width, std::uint32_t height)
{
    wl_proxy_marshal_flags(surface, SetSize, nullptr, wl_proxy_get_version(surface), 0, width, height);
}

void setAnchor(wl_proxy* surface, std::uint32_t edges)
{
    wl_proxy_marshal_flags(surface, SetAnchor, nullptr, wl_proxy_get_version(surface), 0, edges);
}

void setExclusiveZone(wl_proxy* surface, std::int32_t zone)
{
    wl_proxy_marshal_flags(surface, SetExclusiveZone, nullptr, wl_proxy_get_version(surface), 0, zone);
}

void setKeyboard(wl_proxy* surface, Keyboard keyboard)
{
    wl_proxy_marshal_flags(surface, SetKeyboardInteractivity, nullptr, wl_proxy_get_version(surface), 0,
        static_cast<std::uint32_t>(keyboard));
}

void acknowledgeConfigure(wl_proxy* surface, std::uint32_t serial)
{
    wl_proxy_marshal_flags(surface, AckConfigure, nullptr, wl_proxy_get_version(surface), 0, serial);
}

void destroySurface(wl_proxy* surface)
{
    wl_proxy_marshal_flags(
        surface, DestroySurface, nullptr, wl_proxy_get_version(surface), WL_MARSHAL_FLAG_DESTROY);
}

void destroyShell(wl_proxy* shell)
{
    if (wl_proxy_get_version(shell) >= kShellDestroySince)
        wl_proxy_marshal_flags(
            shell, DestroyShell, nullptr, wl_proxy_get_version(shell), WL_MARSHAL_FLAG_DESTROY);
    else
        wl_proxy_destroy(shell);
}

} // namespace amperly::layer_shell
