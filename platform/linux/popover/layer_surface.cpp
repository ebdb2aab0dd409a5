#include "platform/linux/popover/layer_surface.h"

#include "platform/linux/popover/layer_shell_protocol.h"

#include <QGuiApplication>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

#include <algorithm>
#include <string_view>
#include <wayland-client-protocol.h>

namespace amperly {
namespace {

wl_display* currentDisplay()
{
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        return nullptr;
    QPlatformNativeInterface* const native = QGuiApplication::platformNativeInterface();
    return static_cast<wl_display*>(native->nativeResourceForIntegration("wl_display"));
}

/// A private line to the compositor: its answers can be waited for without running any of the
/// toolkit's own handlers meanwhile.
class Conversation {
public:
    explicit Conversation(wl_display* display) : m_display(display), m_queue(wl_display_create_queue(display))
    {
        auto* const wrapper = static_cast<wl_proxy*>(wl_proxy_create_wrapper(display));
        wl_proxy_set_queue(wrapper, m_queue);
        m_registry = wl_display_get_registry(reinterpret_cast<wl_display*>(wrapper));
        wl_proxy_wrapper_destroy(wrapper);
        static constexpr wl_registry_listener kListener{noteGlobal, ignoreRemoval};
        wl_registry_add_listener(m_registry, &kListener, this);
        wait();
    }
    ~Conversation()
    {
        if (m_shell != nullptr)
            layer_shell::destroyShell(m_shell);
        wl_registry_destroy(m_registry);
        wl_event_queue_destroy(m_queue);
    }
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;

    /// The compositor's layer shell; null where it has none.
    [[nodiscard]] wl_proxy* shell() const { return m_shell; }

    /// Until everything asked so far is answered. False when the compositor is gone.
    bool wait() { return wl_display_roundtrip_queue(m_display, m_queue) >= 0; }

private:
    static void noteGlobal(
        void* self, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t version)
    {
        auto& here = *static_cast<Conversation*>(self);
        if (here.m_shell == nullptr && std::string_view(interface) == layer_shell::kShellInterface.name) {
            const auto known = static_cast<std::uint32_t>(layer_shell::kShellInterface.version);
            here.m_shell = static_cast<wl_proxy*>(
                wl_registry_bind(registry, name, &layer_shell::kShellInterface, std::min(version, known)));
        }
    }
    static void ignoreRemoval(void*, wl_registry*, std::uint32_t) { }

    wl_display* m_display;
    wl_event_queue* m_queue;
    wl_registry* m_registry = nullptr;
    wl_proxy* m_shell = nullptr;
};

} // namespace

bool LayerSurface::isAvailable()
{
    static const bool kAvailable = [] {
        wl_display* const display = currentDisplay();
        return display != nullptr && Conversation(display).shell() != nullptr;
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
    Conversation conversation(display);
    if (conversation.shell() == nullptr)
        return nullptr;

    std::unique_ptr<LayerSurface> made(new LayerSurface);
    made->m_surface = layer_shell::getLayerSurface(conversation.shell(), surface, "popover");
    static constexpr layer_shell::SurfaceListener kListener{configured, ended};
    wl_proxy_add_listener(made->m_surface,
        reinterpret_cast<void (**)()>(const_cast<layer_shell::SurfaceListener*>(&kListener)), made.get());
    layer_shell::setSize(made->m_surface, 0, 0); // all that the edges leave
    layer_shell::setAnchor(made->m_surface, layer_shell::kAllEdges);
    layer_shell::setKeyboard(made->m_surface, layer_shell::Keyboard::Exclusive);

    // First clear of the panels, only to learn how much they take; then over all of the output,
    // so that a click on a panel is a click outside too.
    layer_shell::setExclusiveZone(made->m_surface, 0);
    wl_surface_commit(surface);
    if (!conversation.wait() || made->m_ended || made->m_size.isEmpty())
        return nullptr;
    made->m_usableSize = made->m_size;
    layer_shell::setExclusiveZone(made->m_surface, -1);
    wl_surface_commit(surface);
    if (!conversation.wait() || made->m_ended)
        return nullptr;

    // From here on the toolkit's event loop delivers what comes.
    wl_proxy_set_queue(made->m_surface, nullptr);
    return made;
}

LayerSurface::~LayerSurface()
{
    layer_shell::destroySurface(m_surface);
}

void LayerSurface::configured(
    void* self, wl_proxy* surface, std::uint32_t serial, std::uint32_t width, std::uint32_t height)
{
    auto& here = *static_cast<LayerSurface*>(self);
    layer_shell::acknowledgeConfigure(surface, serial);
    const QSize size(static_cast<int>(width), static_cast<int>(height));
    if (size == here.m_size)
        return;
    here.m_size = size;
    if (here.m_resized)
        here.m_resized(size);
}

void LayerSurface::ended(void* self, wl_proxy*)
{
    auto& here = *static_cast<LayerSurface*>(self);
    here.m_ended = true;
    if (here.m_closed)
        here.m_closed();
}

} // namespace amperly
