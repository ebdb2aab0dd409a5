#include "platform/linux/tray/status_notifier_item.h"

#include "platform/linux/tray/item_encoding.h"

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

constexpr char kCategory[] = "Hardware";
constexpr char kId[] = "amperly";
constexpr int kNoWindow = 0;
constexpr bool kIsMenu = false; // said, because some hosts take silence for yes

/// Every other text, IconName above all: a name there would win over the pixmaps.
constexpr char kEmpty[] = "";

void noPixmaps(BusWriter& writer)
{
    writer.array("(iiay)", [] {});
}

} // namespace

const sd_bus_vtable StatusNotifierItem::kInterface[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Category", "s", busConstant<kCategory>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Id", "s", busConstant<kId>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Title", "s", busProperty<&StatusNotifierItem::m_title>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Status", "s", busProperty<&StatusNotifierItem::status>, 0, 0),
    SD_BUS_PROPERTY("WindowId", "i", busConstant<kNoWindow>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("ItemIsMenu", "b", busConstant<kIsMenu>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Menu", "o", busProperty<&StatusNotifierItem::menuPath>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconThemePath", "s", busConstant<kEmpty>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconName", "s", busConstant<kEmpty>, 0, 0),
    SD_BUS_PROPERTY("IconPixmap", "a(iiay)", busProperty<&StatusNotifierItem::iconPixmap>, 0, 0),
    SD_BUS_PROPERTY("IconAccessibleDesc", "s", busProperty<&StatusNotifierItem::m_spokenLabel>, 0,
        SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
    // Explicit: left out where a host asks for everything, as most do after each change.
    SD_BUS_PROPERTY("OverlayIconName", "s", busConstant<kEmpty>, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_PROPERTY(
        "OverlayIconPixmap", "a(iiay)", busConstant<noPixmaps>, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_PROPERTY("AttentionIconName", "s", busConstant<kEmpty>, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_PROPERTY(
        "AttentionIconPixmap", "a(iiay)", busConstant<noPixmaps>, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_PROPERTY("AttentionMovieName", "s", busConstant<kEmpty>, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_PROPERTY("ToolTip", "(sa(iiay)ss)", busProperty<&StatusNotifierItem::toolTip>, 0, 0),
    SD_BUS_METHOD("Activate", "ii", "", busMethod<&StatusNotifierItem::activate>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD(
        "SecondaryActivate", "ii", "", busMethod<&StatusNotifierItem::activate>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD(
        "ContextMenu", "ii", "", busMethod<&StatusNotifierItem::contextMenu>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Scroll", "is", "", busMethod<&StatusNotifierItem::scroll>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ProvideXdgActivationToken", "s", "", busMethod<&StatusNotifierItem::provideToken>,
        SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("XAyatanaSecondaryActivate", "u", "", busMethod<&StatusNotifierItem::secondaryActivate>,
        SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("NewIcon", "", 0),
    SD_BUS_SIGNAL("NewToolTip", "", 0),
    SD_BUS_SIGNAL("NewTitle", "", 0),
    SD_BUS_SIGNAL("NewStatus", "s", 0),
    SD_BUS_VTABLE_END,
};

const sd_bus_vtable StatusNotifierItem::kLabelInterface[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("XAyatanaLabel", "s", busProperty<&StatusNotifierItem::m_label>, 0, 0),
    SD_BUS_PROPERTY("XAyatanaLabelGuide", "s", busConstant<kEmpty>, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_SIGNAL("XAyatanaNewLabel", "ss", 0),
    SD_BUS_VTABLE_END,
};

StatusNotifierItem::StatusNotifierItem(
    BusConnection& connection, const HostProfile& profile, std::string path, std::string menuPath)
    : m_connection(connection), m_profile(profile), m_path(std::move(path)), m_menuPath(std::move(menuPath))
{
    m_object = m_connection.exportObject(m_path.c_str(), kInterfaceName, kInterface, *this);
    if (m_profile.drawing == ItemDrawing::Labelled)
        m_labelObject = m_connection.exportObject(m_path.c_str(), kInterfaceName, kLabelInterface, *this);
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
    if (shown)
        m_connection.emitSignal(m_path.c_str(), kInterfaceName, "NewStatus", status());
    if (picture)
        m_connection.emitSignal(m_path.c_str(), kInterfaceName, "NewIcon");
    const bool fetchedAnyway = picture && m_profile.asksForEverything;
    if (toolTip && !fetchedAnyway && m_profile.toolTip != ToolTipText::None)
        m_connection.emitSignal(m_path.c_str(), kInterfaceName, "NewToolTip");
    if (m_profile.drawing != ItemDrawing::Labelled)
        return;
    if (label)
        m_connection.emitSignal(m_path.c_str(), kInterfaceName, "XAyatanaNewLabel", m_label, "");
    // The label's host reads the spoken description too, and there is no signal for it.
    if (spoken) {
        sd_bus_emit_properties_changed(
            m_connection.bus(), m_path.c_str(), kInterfaceName, "IconAccessibleDesc", nullptr);
        m_connection.settle();
    }
}

void StatusNotifierItem::registerWith(const std::string& watcher, std::function<void()> done)
{
    m_registrationDone = std::move(done);
    // From here on the host may ask, so from here on it must hear of changes.
    m_registered = true;
    m_registration = m_connection.call<&StatusNotifierItem::registered>(
        {watcher.c_str(), "/StatusNotifierWatcher", "org.kde.StatusNotifierWatcher",
            "RegisterStatusNotifierItem"},
        *this, m_path);
}

void StatusNotifierItem::registered()
{
    if (const std::function<void()> done = std::exchange(m_registrationDone, nullptr))
        done();
}

void StatusNotifierItem::forgetWatcher()
{
    m_registered = false;
    m_registration.reset();
    m_registrationDone = nullptr;
}

void StatusNotifierItem::menuPath(BusWriter& writer) const
{
    writer.writePath(m_menuPath.empty() ? "/NO_DBUSMENU" : m_menuPath.c_str());
}

void StatusNotifierItem::iconPixmap(BusWriter& writer) const
{
    writer.array("(iiay)", [&] {
        for (const CoverageMask& mask : m_pixmaps) {
            writer.structure("iiay", [&] {
                writer.write(mask.width);
                writer.write(mask.height);
                // Straight into the message: pixels exist nowhere else.
                const std::span<std::uint8_t> bytes = writer.bytes(pixmapSize(mask));
                if (!bytes.empty())
                    writePixmap(mask, m_ink, m_profile.pixmapAlpha, bytes);
            });
        }
    });
}

void StatusNotifierItem::toolTip(BusWriter& writer) const
{
    const auto write = [&](const std::string& text, bool isReadAsMarkup) {
        if (isReadAsMarkup)
            writer.write(asMarkup(text));
        else
            writer.write(text);
    };
    writer.structure("sa(iiay)ss", [&] {
        writer.write(kEmpty);
        noPixmaps(writer);
        if (m_toolTip) {
            write(*m_toolTip, m_profile.toolTip == ToolTipText::Markup);
            write(m_spokenLabel, m_profile.toolTip != ToolTipText::Plain);
        } else {
            writer.write(kEmpty);
            writer.write(kEmpty);
        }
    });
}

void StatusNotifierItem::click(ClickButton button, std::optional<ScreenPoint> place)
{
    if (m_clickHandler)
        m_clickHandler({.button = button, .anchor = m_profile.globalCoordinates ? place : std::nullopt});
}

void StatusNotifierItem::activate(BusReply&, int x, int y)
{
    click(ClickButton::Left, ScreenPoint{x, y});
}

void StatusNotifierItem::contextMenu(BusReply&, int x, int y)
{
    click(ClickButton::Right, ScreenPoint{x, y});
}

void StatusNotifierItem::secondaryActivate(BusReply&, std::uint32_t)
{
    click(ClickButton::Left, std::nullopt);
}

void StatusNotifierItem::provideToken(BusReply&, std::string_view token)
{
    if (!token.empty() && m_tokenHandler)
        m_tokenHandler(std::string(token));
}

} // namespace amperly
