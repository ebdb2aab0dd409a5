// What this program uses of the Wayland protocol wlr-layer-shell-unstable-v1, version 4, by which
// compositors let panels and overlays take their place on an output. The distribution ships no
// description of it, so the few messages are described here.
#pragma once

#include <cstdint>
#include <wayland-client-core.h>

struct wl_surface;

namespace amperly::layer_shell {

extern const wl_interface kShellInterface;
extern const wl_interface kSurfaceInterface;

/// Above windows, panels and what is fullscreen.
inline constexpr std::uint32_t kOverlayLayer = 3;

/// Top, bottom, left and right.
inline constexpr std::uint32_t kAllEdges = 1 | 2 | 4 | 8;

enum class Keyboard : std::uint32_t { None = 0, Exclusive = 1 };

struct SurfaceListener {
    /// The compositor's wish for a size in logical pixels, to be acknowledged.
    void (*configure)(
        void* data, wl_proxy* surface, std::uint32_t serial, std::uint32_t width, std::uint32_t height);
    /// The surface will be shown no more.
    void (*closed)(void* data, wl_proxy* surface);
};

/// A layer surface for `surface` in the overlay layer of the output of the compositor's choice.
[[nodiscard]] wl_proxy* getLayerSurface(wl_proxy* shell, wl_surface* surface, const char* nameSpace);

void setSize(wl_proxy* surface, std::uint32_t width, std::uint32_t height);
void setAnchor(wl_proxy* surface, std::uint32_t edges);

/// 0: keeps clear of panels; -1: reaches under them.
void setExclusiveZone(wl_proxy* surface, std::int32_t zone);
void setKeyboard(wl_proxy* surface, Keyboard keyboard);
void acknowledgeConfigure(wl_proxy* surface, std::uint32_t serial);

/// The proxies are gone afterwards.
void destroySurface(wl_proxy* surface);
void destroyShell(wl_proxy* shell);

} // namespace amperly::layer_shell
