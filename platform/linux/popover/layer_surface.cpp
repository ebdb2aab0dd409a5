#include "platform/linux/popover/layer_surface.h"

#include <QGuiApplication>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

#include <algorithm>
#include <string_view>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-header.h>

namespace amperly {
namespace {

wl_display* currentDisplay()
{
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        return nullptr;
    QPlatformNativeInterface* const native = QGuiApplication::platformNativeInterface();
    return static_cast<wl_display*>(native->nativeResourceForIntegration("wl_display"));
}

/// A queue of our own for what the compositor answers: it can be waited for without running any of
/// the toolkit's own handlers meanwhile.
class CompositorQueue {
public:
    explicit CompositorQueue(wl_display* display)
        : m_display(display), m_queue(wl_display_create_queue(display))
    {
        auto* const wrapper = static_cast<wl_proxy*>(wl_proxy_create_wrapper(display));
        wl_proxy_set_queue(wrapper, m_queue);
        m_registry = wl_display_get_registry(reinterpret_cast<wl_display*>(wrapper));
        wl_proxy_wrapper_destroy(wrapper);
        static constexpr wl_registry_listener kListener{noteGlobal, ignoreRemoval};
        wl_registry_add_listener(m_registry, &kListener, this);
        wait();
    }
    ~CompositorQueue()
    {
        if (m_shell != nullptr)
            release(*m_shell);
        wl_registry_destroy(m_registry);
        wl_event_queue_destroy(m_queue);
    }
    CompositorQueue(const CompositorQueue&) = delete;
    CompositorQueue& operator=(const CompositorQueue&) = delete;

    /// The compositor's layer shell; null where it has none.
    [[nodiscard]] zwlr_layer_shell_v1* shell() const { return m_shell; }

    /// Until everything asked so far is answered. False when the compositor is gone.
    bool wait() { return wl_display_roundtrip_queue(m_display, m_queue) >= 0; }

private:
    static void noteGlobal(
        void* self, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t version)
    {
        auto& here = *static_cast<CompositorQueue*>(self);
        const wl_interface& shell = zwlr_layer_shell_v1_interface;
        if (here.m_shell == nullptr && std::string_view(interface) == shell.name) {
            const auto known = static_cast<std::uint32_t>(shell.version);
            here.m_shell = static_cast<zwlr_layer_shell_v1*>(
                wl_registry_bind(registry, name, &shell, std::min(version, known)));
        }
    }
    static void ignoreRemoval(void*, wl_registry*, std::uint32_t) { }

    /// Older compositors are not told of the end of their shell's use.
    static void release(zwlr_layer_shell_v1& shell)
    {
        if (zwlr_layer_shell_v1_get_version(&shell) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION)
            zwlr_layer_shell_v1_destroy(&shell);
        else
            wl_proxy_destroy(reinterpret_cast<wl_proxy*>(&shell));
    }

    wl_display* m_display;
    wl_event_queue* m_queue;
    wl_registry* m_registry = nullptr;
    zwlr_layer_shell_v1* m_shell = nullptr;
};

} // namespace

bool LayerSurface::isAvailable()
{
    static const bool kAvailable = [] {
        wl_display* const display = currentDisplay();
        return display != nullptr && CompositorQueue(display).shell() != nullptr;
    }();
    return kAvailable;
}

std::unique_ptr<LayerSurface> LayerSurface::cover(QWindow& window)
{
    wl_display* const display = currentDisplay();
    auto* const surface = static_cast<wl_surface*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForWindow("surface", &window));
    if (display == nullptr || surface == nullptr)
        return nullptr;
    CompositorQueue compositor(display);
    if (compositor.shell() == nullptr)
        return nullptr;

    std::unique_ptr<LayerSurface> made(new LayerSurface);
    // Of whichever output the compositor chooses, above windows, panels and what is fullscreen.
    made->m_surface = zwlr_layer_shell_v1_get_layer_surface(
        compositor.shell(), surface, nullptr, ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "popover");
    static constexpr zwlr_layer_surface_v1_listener kListener{configured, ended};
    zwlr_layer_surface_v1_add_listener(made->m_surface, &kListener, made.get());
    zwlr_layer_surface_v1_set_size(made->m_surface, 0, 0); // all that the edges leave
    zwlr_layer_surface_v1_set_anchor(made->m_surface,
        ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM
            | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
    zwlr_layer_surface_v1_set_keyboard_interactivity(
        made->m_surface, ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE);

    // First clear of the panels, only to learn how much they take; then over all of the output,
    // so that a click on a panel is a click outside too.
    zwlr_layer_surface_v1_set_exclusive_zone(made->m_surface, 0);
    wl_surface_commit(surface);
    if (!compositor.wait() || made->m_ended || made->m_size.isEmpty())
        return nullptr;
    made->m_usableSize = made->m_size;
    zwlr_layer_surface_v1_set_exclusive_zone(made->m_surface, -1);
    wl_surface_commit(surface);
    if (!compositor.wait() || made->m_ended)
        return nullptr;

    // From here on the toolkit's event loop delivers what comes.
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(made->m_surface), nullptr);
    return made;
}

LayerSurface::~LayerSurface()
{
    zwlr_layer_surface_v1_destroy(m_surface);
}

void LayerSurface::configured(void* self, zwlr_layer_surface_v1* surface, std::uint32_t serial,
    std::uint32_t width, std::uint32_t height)
{
    auto& here = *static_cast<LayerSurface*>(self);
    zwlr_layer_surface_v1_ack_configure(surface, serial);
    const QSize size(static_cast<int>(width), static_cast<int>(height));
    if (size == here.m_size)
        return;
    here.m_size = size;
    if (here.m_resized)
        here.m_resized(size);
}

void LayerSurface::ended(void* self, zwlr_layer_surface_v1*)
{
    auto& here = *static_cast<LayerSurface*>(self);
    here.m_ended = true;
    if (here.m_closed)
        here.m_closed();
}

} // namespace amperly
