// The status item in the tray that X11 had before status items went over the bus: a window of
// ours inside the panel. It follows trays that come, go and change, over the toolkit's own
// connection, so that nothing more is open and nothing more wakes the program.
#pragma once

#include "platform/linux/tray/tray_fallback.h"
#include "platform/linux/xembed/hover_tip.h"
#include "platform/linux/xembed/tray_window.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace amperly {

struct XEmbedItemParts {
    /// The colour to draw in, asked for at each painting; whoever knows it tells when it changes.
    std::function<Ink()> ink;

    /// How long the pointer stays on the item before its tool tip is shown.
    std::chrono::milliseconds hoverDelay{700};
};

/// A panel that draws transparent windows itself may lose a drawing that arrives while it lays its
/// items out, so what it has exposed or resized is drawn once more so long after.
inline constexpr std::chrono::milliseconds kTraySettles{400};

class XEmbedItem final : public TrayFallback, private QAbstractNativeEventFilter {
public:
    /// Null where the toolkit is not on X11. Until the item is shown, the server hears nothing.
    [[nodiscard]] static std::unique_ptr<XEmbedItem> create(XEmbedItemParts parts);

    ~XEmbedItem() override;

    void show(const StatusPicture& picture, std::optional<std::string_view> toolTip,
        std::string_view spokenLabel) override;
    void inkChanged() override { repaint(); }
    void hide() override;
    void onClick(StatusItem::ClickHandler handler) override { m_clickHandler = std::move(handler); }
    void onPictureWanted(std::function<void()> handler) override { m_pictureWanted = std::move(handler); }

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    XEmbedItem(XEmbedItemParts parts, X11Screen x11, int screenNumber);

    void handleMessage(const xcb_client_message_event_t& message);
    void handleReparenting(const xcb_reparent_notify_event_t& event);
    void handleResizing(const xcb_configure_notify_event_t& event);
    void handleTrayProperty(const xcb_property_notify_event_t& change);
    void handleRelease(const xcb_button_release_event_t& event);
    void dock(double widthPoints);
    void lookForTray();
    void dropWindow();
    void repaint();
    void wantPicture();
    [[nodiscard]] bool isOurs(xcb_window_t window) const;

    XEmbedItemParts m_parts;
    X11Screen m_x11;
    int m_screenNumber;
    StatusItem::ClickHandler m_clickHandler;
    std::function<void()> m_pictureWanted;

    bool m_shown = false;
    bool m_trayToBeLookedFor = false;
    std::optional<FoundTray> m_tray;
    std::unique_ptr<TrayWindow> m_window;
    bool m_insideTray = false;

    CoverageMask m_mask;
    CoverageMask m_nextMask; ///< kept for its memory
    HoverTip m_hoverTip;
    QTimer m_settled;
    QObject m_context;
};

/// One screen as the toolkit tells it.
struct ScaledScreen {
    int x = 0; ///< of its corner, the same in both coordinates
    int y = 0;
    int width = 0; ///< logical
    int height = 0; ///< logical
    double scale = 1.0; ///< pixels per logical unit
};

/// From the pixels that the X server counts in to the desktop's logical coordinates. The toolkit keeps
/// each screen's corner where the server has it and scales what lies within. `native` itself where no
/// screen is.
[[nodiscard]] ScreenPoint logicalPoint(ScreenPoint native, std::span<const ScaledScreen> screens);

} // namespace amperly
