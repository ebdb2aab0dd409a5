// The program's status item on Linux. One item to the program; to the desktop it is whatever the
// panel that runs shows best, and it follows panels that come, go and change.
//
// While there is a watcher on the bus, a row of StatusNotifierItems is registered with it. While
// there is none, or it has nobody who shows items, the fallback is shown.
#pragma once

#include "platform/linux/bus/bus_connection.h"
#include "platform/linux/tray/desktop_ink.h"
#include "platform/linux/tray/item_row.h"
#include "platform/linux/tray/menu_opening.h"
#include "platform/linux/tray/status_notifier_watcher.h"
#include "platform/linux/tray/tray_fallback.h"
#include "platform/status_item.h"

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QScreen;

namespace amperly {

/// Shows a menu as the program's own, announcing its opening and closing.
using MenuOpener = std::function<void(Menu& menu, std::optional<ScreenPoint> anchor)>;

/// What the item is given; everything it points to must outlive it.
struct LinuxStatusItemParts {
    InkSource& ink;
    TrayFallback* fallback = nullptr; ///< none: without a watcher nothing is shown
    MenuOpener openMenu{};
    std::function<void(std::string_view line)> warn{};
    CurrentDesktop desktop{};
    std::string busAddress{}; ///< as BusConnection::open() takes it
    StatusNotifierWatcher::ProcessName processName = processNameFromProc;
};

class LinuxStatusItem : public StatusItem {
public:
    /// A bus that is not there, or has gone, is looked for again so often.
    static constexpr std::chrono::seconds kBusRetry{60};

    explicit LinuxStatusItem(LinuxStatusItemParts parts);
    ~LinuxStatusItem() override;

    void show(const StatusPicture& picture, std::optional<std::string_view> toolTip,
        std::string_view spokenLabel) override;
    void onPictureWanted(std::function<void()> handler) override { m_pictureWanted = std::move(handler); }
    void onClick(ClickHandler handler) override { m_clickHandler = std::move(handler); }
    void setMenu(Menu& menu) override;
    void openMenu(std::optional<ScreenPoint> anchor) override;

private:
    void joinBus();
    void loseBus();
    void followWatcher();
    void buildRow(const HostProfile& profile);
    void showFallback(bool shown);
    void wantPicture();
    void followScreen(QScreen& screen);
    void followScale();
    void inkChanged();
    void refreshInk();
    void handleClick(const StatusClick& click);
    [[nodiscard]] ExportedMenu exportedMenu(const HostProfile& profile);

    LinuxStatusItemParts m_parts;
    ClickHandler m_clickHandler;
    std::function<void()> m_pictureWanted;

    Menu* m_menu = nullptr;
    std::unique_ptr<MenuOpening> m_opening;

    // What was shown last. Nothing in m_key: it has to be drawn anew.
    std::optional<std::uint64_t> m_key;
    double m_scale = 0.0;
    std::optional<std::string> m_toolTip;
    std::string m_spokenLabel;

    bool m_fallbackShown = false;
    bool m_lossTold = false;
    std::unique_ptr<BusConnection> m_connection;
    std::unique_ptr<StatusNotifierWatcher> m_watcher;
    std::unique_ptr<ItemRow> m_row;
    std::string m_registeredWith; ///< the watcher's unique name
    QTimer m_retry;
    QObject m_context;
};

} // namespace amperly
