#include "platform/linux/tray/dbus_menu.h"

#include "platform/linux/tray/dbus_menu_properties.h"

#include <utility>

namespace amperly {

DbusMenu::DbusMenu(
    BusConnection& connection, Menu& menu, MenuOpening& opening, std::vector<MenuEntry> leading)
    : m_connection(connection)
    , m_menu(menu)
    , m_opening(opening)
    , m_leading(std::move(leading))
    , m_listener(menu.onEntryChanged([this](int) { publishLater(); }))
{
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object_vtable(m_connection.bus(), &slot, kPath, kInterfaceName, kInterface, this);
    m_slot.reset(slot);
}

DbusMenu::~DbusMenu()
{
    m_menu.stopListening(m_listener);
}

const MenuEntry* DbusMenu::entry(int identifier) const
{
    const std::vector<MenuEntry>& own = m_menu.entries();
    if (identifier >= 1 && static_cast<std::size_t>(identifier) <= own.size())
        return &own[static_cast<std::size_t>(identifier) - 1];
    if (identifier >= kLeadingIdentifier
        && static_cast<std::size_t>(identifier - kLeadingIdentifier) < m_leading.size())
        return &m_leading[static_cast<std::size_t>(identifier - kLeadingIdentifier)];
    return nullptr;
}

bool DbusMenu::knows(int identifier) const
{
    return identifier == kRoot || entry(identifier);
}

std::vector<int> DbusMenu::identifiers() const
{
    std::vector<int> result;
    for (std::size_t place = 0; place < m_leading.size(); ++place)
        result.push_back(kLeadingIdentifier + static_cast<int>(place));
    for (std::size_t place = 0; place < m_menu.entries().size(); ++place)
        result.push_back(static_cast<int>(place) + 1);
    return result;
}

void DbusMenu::handleEvent(int identifier, const std::string& what)
{
    if (what == "clicked") {
        if (const MenuEntry* chosen = entry(identifier))
            m_opening.choose(*chosen);
    } else if (identifier == kRoot && what == "opened") {
        m_opening.opened(this);
    } else if (identifier == kRoot && what == "closed") {
        m_opening.closed();
    }
}

bool DbusMenu::prepareToShow()
{
    // The readings are made fresh first, so that whatever the host asks for next has them.
    m_opening.aboutToShow(this, std::chrono::steady_clock::now());
    return publish();
}

void DbusMenu::remember()
{
    m_fetched = true;
    m_published = m_menu.entries();
}

void DbusMenu::publishLater()
{
    // What nobody looks at here is told when somebody is about to. One reading changes several
    // lines; they are told in one signal.
    if (!m_fetched || m_opening.isOpenElsewhere(this) || std::exchange(m_publishing, true))
        return;
    QMetaObject::invokeMethod(
        &m_context, [this] { publish(); }, Qt::QueuedConnection);
}

bool DbusMenu::publish()
{
    m_publishing = false;
    if (!m_fetched || !m_connection.isOpen())
        return false;
    const std::vector<MenuEntry>& entries = m_menu.entries();
    if (entries.size() != m_published.size()) {
        remember();
        ++m_revision;
        sd_bus_emit_signal(
            m_connection.bus(), kPath, kInterfaceName, "LayoutUpdated", "ui", m_revision, kRoot);
        m_connection.settle();
        return true;
    }
    sd_bus_message* signal = nullptr;
    for (std::size_t place = 0; place < entries.size(); ++place) {
        if (entries[place].looksLike(m_published[place]))
            continue;
        if (!signal) {
            if (sd_bus_message_new_signal(
                    m_connection.bus(), &signal, kPath, kInterfaceName, "ItemsPropertiesUpdated")
                < 0)
                return false;
            sd_bus_message_open_container(signal, 'a', "(ia{sv})");
        }
        sd_bus_message_open_container(signal, 'r', "ia{sv}");
        sd_bus_message_append(signal, "i", static_cast<int>(place) + 1);
        dbus_menu::appendChanges(signal, m_published[place], entries[place]);
        sd_bus_message_close_container(signal);
    }
    if (!signal)
        return false;
    const BusMessage owner(signal);
    sd_bus_message_close_container(signal);
    sd_bus_message_append(signal, "a(ias)", 0); // nothing goes back to its default by removal
    sd_bus_send(m_connection.bus(), signal, nullptr);
    remember();
    m_connection.settle();
    return true;
}

} // namespace amperly
