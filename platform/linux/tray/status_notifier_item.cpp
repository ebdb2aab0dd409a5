#include "platform/linux/tray/status_notifier_item.h"

#include <utility>

namespace amperly {

namespace {

/// Assigns where it differs. Tells whether it did.
template <typename Kept, typename Given>
bool replace(Kept& kept, const Given& given)
{
    if (kept == given)
        return false;
    kept = given;
    return true;
}

} // namespace

StatusNotifierItem::StatusNotifierItem(
    BusConnection& connection, const HostProfile& profile, std::string path, std::string menuPath)
    : m_connection(connection), m_profile(profile), m_path(std::move(path)), m_menuPath(std::move(menuPath))
{
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object_vtable(m_connection.bus(), &slot, m_path.c_str(), kInterfaceName, kInterface, this);
    m_object.reset(slot);
    if (m_profile.drawing != ItemDrawing::Labelled)
        return;
    slot = nullptr;
    sd_bus_add_object_vtable(
        m_connection.bus(), &slot, m_path.c_str(), kInterfaceName, kLabelInterface, this);
    m_labelObject.reset(slot);
}

void StatusNotifierItem::setShown(bool shown)
{
    m_shownChanged |= replace(m_shown, shown);
}

void StatusNotifierItem::setPixmapCount(std::size_t count)
{
    if (m_pixmaps.size() == count)
        return;
    m_pixmaps.resize(count);
    m_pictureChanged = true;
}

void StatusNotifierItem::setPixmap(std::size_t index, CoverageMask& drawn)
{
    if (m_pixmaps[index] == drawn)
        return;
    std::swap(m_pixmaps[index], drawn);
    m_pictureChanged = true;
}

void StatusNotifierItem::setInk(Ink ink)
{
    m_pictureChanged |= replace(m_ink, ink);
}

void StatusNotifierItem::setTexts(std::optional<std::string_view> toolTip, std::string_view spokenLabel)
{
    m_toolTipChanged |= replace(m_toolTip, toolTip);
    if (replace(m_spokenLabel, spokenLabel)) {
        m_spokenChanged = true;
        m_toolTipChanged |= m_toolTip.has_value(); // which has the label as its second line
    }
}

void StatusNotifierItem::setLabel(std::string_view label)
{
    m_labelChanged |= replace(m_label, label);
}

void StatusNotifierItem::publish()
{
    const bool shown = std::exchange(m_shownChanged, false);
    const bool picture = std::exchange(m_pictureChanged, false);
    const bool toolTip = std::exchange(m_toolTipChanged, false);
    const bool spoken = std::exchange(m_spokenChanged, false);
    const bool label = std::exchange(m_labelChanged, false);
    if (!m_registered || !m_connection.isOpen())
        return;
    if (shown) {
        sd_bus_emit_signal(
            m_connection.bus(), m_path.c_str(), kInterfaceName, "NewStatus", "s", statusText());
        m_connection.settle();
    }
    if (picture)
        m_connection.emitSignal(m_path.c_str(), kInterfaceName, "NewIcon");
    const bool fetchedAnyway = picture && m_profile.asksForEverything;
    if (toolTip && !fetchedAnyway && m_profile.toolTip != ToolTipText::None)
        m_connection.emitSignal(m_path.c_str(), kInterfaceName, "NewToolTip");
    if (m_profile.drawing != ItemDrawing::Labelled)
        return;
    if (label) {
        sd_bus_emit_signal(m_connection.bus(), m_path.c_str(), kInterfaceName, "XAyatanaNewLabel", "ss",
            m_label.c_str(), "");
    }
    // The label's host reads the spoken description too, and there is no signal for it.
    if (spoken) {
        sd_bus_emit_properties_changed(
            m_connection.bus(), m_path.c_str(), kInterfaceName, "IconAccessibleDesc", nullptr);
    }
    m_connection.settle();
}

void StatusNotifierItem::registerWith(const std::string& watcher, std::function<void()> done)
{
    m_registrationDone = std::move(done);
    // From here on the host may ask, so from here on it must hear of changes.
    m_registered = true;
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(m_connection.bus(), &slot, watcher.c_str(), "/StatusNotifierWatcher",
        "org.kde.StatusNotifierWatcher", "RegisterStatusNotifierItem", registered, this, "s", m_path.c_str());
    m_registration.reset(slot);
    m_connection.settle();
}

int StatusNotifierItem::registered(sd_bus_message*, void* self, sd_bus_error*)
{
    if (const std::function<void()> done
        = std::exchange(static_cast<StatusNotifierItem*>(self)->m_registrationDone, nullptr))
        done();
    return 0;
}

void StatusNotifierItem::forgetWatcher()
{
    m_registered = false;
    m_registration.reset();
    m_registrationDone = nullptr;
}

} // namespace amperly
