// A window's place above everything on one output, by the layer shell of the Wayland compositor.
#pragma once

#include <QSize>

#include <cstdint>
#include <functional>
#include <memory>

class QWindow;
struct zwlr_layer_surface_v1;

namespace amperly {

class LayerSurface {
public:
    /// Whether the compositor has a layer shell. Asks it once in the program's life; false on
    /// other windowing systems.
    [[nodiscard]] static bool isAvailable();

    /// Gives `window` the whole of an output. The window has been created without any role, which
    /// takes Qt::BypassWindowManagerHint and QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT=1, is not
    /// shown yet and must outlive this. Null where the compositor refuses. Waits for it.
    [[nodiscard]] static std::unique_ptr<LayerSurface> cover(QWindow& window);

    /// The window is to be hidden only after this is gone.
    ~LayerSurface();
    LayerSurface(const LayerSurface&) = delete;
    LayerSurface& operator=(const LayerSurface&) = delete;

    /// The output in logical pixels.
    [[nodiscard]] QSize size() const { return m_size; }

    /// What panels leave of it, as far as the compositor says.
    [[nodiscard]] QSize usableSize() const { return m_usableSize; }

    void onResized(std::function<void(QSize)> handler) { m_resized = std::move(handler); }

    /// The compositor takes the place back, for instance because the output is gone.
    void onClosed(std::function<void()> handler) { m_closed = std::move(handler); }

private:
    LayerSurface() = default;
    static void configured(
        void* self, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t width, std::uint32_t height);
    static void ended(void* self, zwlr_layer_surface_v1*);

    zwlr_layer_surface_v1* m_surface = nullptr;
    QSize m_size;
    QSize m_usableSize;
    bool m_ended = false;
    std::function<void(QSize)> m_resized;
    std::function<void()> m_closed;
};

} // namespace amperly
