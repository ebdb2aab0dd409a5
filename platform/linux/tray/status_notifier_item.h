// One StatusNotifierItem on the bus. It keeps what it shows as coverage and text and turns them
// into pixels and markup only while a host asks; a host asks after it was told of a change.
#pragma once

#include "platform/coverage_mask.h"
#include "platform/linux/bus/bus_connection.h"
#include "platform/linux/tray/host_profile.h"
#include "platform/status_item.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace amperly {

class StatusNotifierItem {
public:
    static constexpr const char* kPath = "/StatusNotifierItem";

    /// Exports an item at `path` of `connection`, which must outlive it. `menuPath` is where the
    /// same connection exports the menu; empty for none.
    StatusNotifierItem(
        BusConnection& connection, const HostProfile& profile, std::string path, std::string menuPath);
    StatusNotifierItem(const StatusNotifierItem&) = delete;
    StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

    /// The item's name, "Amperly" unless said otherwise. To be said before it registers.
    void setTitle(std::string title) { m_title = std::move(title); }

    // Each of these takes note of what differs from before; publish() then tells the host.

    /// Shown at first. A hidden item stays registered and keeps its place among the others.
    void setShown(bool shown);

    /// How many sizes of the picture there are. The host chooses among them.
    void setPixmapCount(std::size_t count);

    /// Swaps `drawn` with what was shown, if they differ.
    void setPixmap(std::size_t index, CoverageMask& drawn);
    void setInk(Ink ink);
    void setTexts(std::optional<std::string_view> toolTip, std::string_view spokenLabel);

    /// A text beside the picture, on hosts that show one.
    void setLabel(std::string_view label);

    /// Sends one signal for each kind of change, none where nothing changed or nobody listens.
    void publish();

    /// Asks the watcher, by its name on the bus, to show the item; `done` is called when it has
    /// answered, whatever it says.
    void registerWith(const std::string& watcher, std::function<void()> done);

    /// Nobody shows the item any more; it waits for the next registration.
    void forgetWatcher();

    void onClick(StatusItem::ClickHandler handler) { m_clickHandler = std::move(handler); }

    /// Called with the permission to take the user's attention that precedes a click on Wayland.
    void onActivationToken(std::function<void(const std::string& token)> handler)
    {
        m_tokenHandler = std::move(handler);
    }

private:
    static constexpr const char* kInterfaceName = "org.kde.StatusNotifierItem";
    static const sd_bus_vtable kInterface[];

    /// The same interface's part for hosts that show a label. Others must not find it: MATE leaves
    /// the icon out for an item that has a label, be it an empty one.
    static const sd_bus_vtable kLabelInterface[];

    // What hosts read, as far as no member is the value itself.
    [[nodiscard]] const char* status() const { return m_shown ? "Active" : "Passive"; }
    void menuPath(BusWriter& writer) const;
    void iconPixmap(BusWriter& writer) const;
    void toolTip(BusWriter& writer) const;

    // What they call.
    void activate(BusReply& reply, int x, int y);
    void contextMenu(BusReply& reply, int x, int y);
    void secondaryActivate(BusReply& reply, std::uint32_t timestamp);
    void scroll(BusReply&, int, std::string_view) { }
    void provideToken(BusReply& reply, std::string_view token);

    void click(ClickButton button, std::optional<ScreenPoint> place);
    void registered();

    BusConnection& m_connection;
    const HostProfile m_profile;
    const std::string m_path;
    const std::string m_menuPath;

    std::string m_title = "Amperly";
    std::vector<CoverageMask> m_pixmaps;
    Ink m_ink;
    std::optional<std::string> m_toolTip;
    std::string m_spokenLabel;
    std::string m_label;

    bool m_shown = true;

    bool m_shownChanged = false;
    bool m_pictureChanged = false;
    bool m_toolTipChanged = false;
    bool m_spokenChanged = false;
    bool m_labelChanged = false;
    bool m_registered = false;

    std::function<void()> m_registrationDone;
    StatusItem::ClickHandler m_clickHandler;
    std::function<void(const std::string&)> m_tokenHandler;
    BusSlot m_registration;
    BusSlot m_object;
    BusSlot m_labelObject;
};

} // namespace amperly
