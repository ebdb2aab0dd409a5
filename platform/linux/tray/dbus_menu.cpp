#include "platform/linux/tray/dbus_menu.h"

#include <QGuiApplication>

#include <algorithm>
#include <utility>

namespace amperly {

namespace {

constexpr const char* kNoSuchEntry = "There is no such menu entry";

/// The key's name as the X keyboard tables have it.
std::string keyName(char shortcut)
{
    return shortcut == ',' ? "comma" : std::string(1, shortcut);
}

void writeShortcut(BusWriter& writer, char shortcut)
{
    writer.variant("aas", [&] {
        writer.array("as", [&] {
            if (shortcut == 0)
                return;
            writer.array("s", [&] {
                writer.write("Control");
                writer.write(keyName(shortcut));
            });
        });
    });
}

/// What the protocol says about an entry.
struct Property {
    const char* name;
    bool (*isStated)(const MenuEntry& entry); ///< it is not at what the protocol gives to missing ones
    bool (*differs)(const MenuEntry& before, const MenuEntry& now);
    void (*write)(BusWriter& writer, const MenuEntry& entry); ///< as a variant
};

using Entry = const MenuEntry&;

constexpr bool never(Entry, Entry)
{
    return false;
}

constexpr Property kProperties[] = {
    {"type", [](Entry entry) { return entry.separator; }, never,
        [](BusWriter& writer, Entry entry) { writer.variant(entry.separator ? "separator" : "standard"); }},
    {"label", [](Entry entry) { return !entry.separator; },
        [](Entry before, Entry now) { return before.title != now.title; },
        [](BusWriter& writer, Entry entry) { writer.variant(menuLabel(entry.title)); }},
    {"enabled", [](Entry entry) { return !entry.enabled; },
        [](Entry before, Entry now) { return before.enabled != now.enabled; },
        [](BusWriter& writer, Entry entry) { writer.variant(entry.enabled); }},
    {"visible", [](Entry entry) { return !entry.visible; },
        [](Entry before, Entry now) { return before.visible != now.visible; },
        [](BusWriter& writer, Entry entry) { writer.variant(entry.visible); }},
    {"shortcut", [](Entry entry) { return entry.shortcut != 0; }, never,
        [](BusWriter& writer, Entry entry) { writeShortcut(writer, entry.shortcut); }},
};

/// The a{sv} of those of the entry's properties that are wanted.
void writeWanted(BusWriter& writer, const MenuEntry& entry, const auto& wanted)
{
    writer.array("{sv}", [&] {
        for (const Property& property : kProperties) {
            if (wanted(property))
                writer.entry(property.name, [&] { property.write(writer, entry); });
        }
    });
}

/// The a{sv} of the entry: of those `names`, or of all for no names.
void writeProperties(BusWriter& writer, const MenuEntry& entry, const std::vector<std::string_view>& names)
{
    writeWanted(writer, entry, [&](const Property& property) {
        return property.isStated(entry)
            && (names.empty() || std::find(names.begin(), names.end(), property.name) != names.end());
    });
}

const char* textDirection()
{
    return QGuiApplication::layoutDirection() == Qt::RightToLeft ? "rtl" : "ltr";
}

void noFolders(BusWriter& writer)
{
    writer.array("s", [] {});
}

constexpr std::uint32_t kVersion = 3;
constexpr char kNormal[] = "normal";

} // namespace

const sd_bus_vtable DbusMenu::kInterface[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Version", "u", busConstant<kVersion>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Status", "s", busConstant<kNormal>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("TextDirection", "s", busConstant<textDirection>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconThemePath", "as", busConstant<noFolders>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_METHOD(
        "GetLayout", "iias", "u(ia{sv}av)", busMethod<&DbusMenu::getLayout>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("GetGroupProperties", "aias", "a(ia{sv})", busMethod<&DbusMenu::getGroupProperties>,
        SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("GetProperty", "is", "v", busMethod<&DbusMenu::getProperty>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Event", "isvu", "", busMethod<&DbusMenu::event>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD(
        "EventGroup", "a(isvu)", "ai", busMethod<&DbusMenu::eventGroup>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("AboutToShow", "i", "b", busMethod<&DbusMenu::aboutToShow>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD(
        "AboutToShowGroup", "ai", "aiai", busMethod<&DbusMenu::aboutToShowGroup>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("ItemsPropertiesUpdated", "a(ia{sv})a(ias)", 0),
    SD_BUS_SIGNAL("LayoutUpdated", "ui", 0),
    SD_BUS_SIGNAL("ItemActivationRequested", "iu", 0),
    SD_BUS_VTABLE_END,
};

std::string menuLabel(std::string_view title)
{
    std::string result;
    result.reserve(title.size());
    for (const char character : title) {
        if (character == '_')
            result += '_';
        result += character;
    }
    return result;
}

DbusMenu::DbusMenu(
    BusConnection& connection, Menu& menu, MenuOpening& opening, std::vector<MenuEntry> leading)
    : m_connection(connection)
    , m_menu(menu)
    , m_opening(opening)
    , m_leading(std::move(leading))
    , m_subscription(menu.onEntryChanged([this](int) { publishLater(); }))
{
    m_slot = m_connection.exportObject(kPath, kInterfaceName, kInterface, *this);
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
    for (std::size_t index = 0; index < m_leading.size(); ++index)
        result.push_back(kLeadingIdentifier + static_cast<int>(index));
    for (std::size_t index = 0; index < m_menu.entries().size(); ++index)
        result.push_back(static_cast<int>(index) + 1);
    return result;
}

void DbusMenu::writeItem(BusWriter& writer, int identifier, const Names& names, bool children) const
{
    writer.structure("ia{sv}av", [&] {
        writer.write(identifier);
        if (identifier == kRoot) {
            writer.array(
                "{sv}", [&] { writer.entry("children-display", [&] { writer.variant("submenu"); }); });
        } else {
            writeProperties(writer, *entry(identifier), names);
        }
        writer.array("v", [&] {
            if (identifier != kRoot || !children)
                return;
            for (const int child : identifiers())
                writer.variant("(ia{sv}av)", [&] { writeItem(writer, child, names, false); });
        });
    });
}

void DbusMenu::getLayout(BusReply& reply, int parent, int depth, const Names& names)
{
    if (!knows(parent))
        return reply.refuse(kNoSuchEntry);
    remember();
    reply.write(m_revision);
    writeItem(reply, parent, names, depth != 0);
}

void DbusMenu::getGroupProperties(BusReply& reply, const std::vector<int>& wanted, const Names& names)
{
    reply.array("(ia{sv})", [&] {
        for (const int identifier : wanted.empty() ? identifiers() : wanted) {
            const MenuEntry* const found = entry(identifier);
            if (found == nullptr)
                continue;
            reply.structure("ia{sv}", [&] {
                reply.write(identifier);
                writeProperties(reply, *found, names);
            });
        }
    });
}

void DbusMenu::getProperty(BusReply& reply, int identifier, std::string_view name)
{
    const MenuEntry* const found = entry(identifier);
    if (found == nullptr)
        return reply.refuse(kNoSuchEntry);
    const auto* const property = std::find_if(std::begin(kProperties), std::end(kProperties),
        [&](const Property& candidate) { return candidate.name == name; });
    if (property == std::end(kProperties))
        return reply.refuse("There is no such property");
    property->write(reply, *found);
}

void DbusMenu::event(BusReply& reply, int identifier, std::string_view what)
{
    if (!knows(identifier))
        return reply.refuse(kNoSuchEntry);
    handleEvent(identifier, what);
}

void DbusMenu::eventGroup(BusReply& reply, const std::vector<Event>& events)
{
    std::vector<int> unknown;
    for (const auto& [identifier, what, data, time] : events) {
        if (knows(identifier))
            handleEvent(identifier, what);
        else
            unknown.push_back(identifier);
    }
    if (!events.empty() && unknown.size() == events.size())
        return reply.refuse(kNoSuchEntry);
    reply.write(unknown);
}

void DbusMenu::aboutToShow(BusReply& reply, int identifier)
{
    if (!knows(identifier))
        return reply.refuse(kNoSuchEntry);
    reply.write(identifier == kRoot && prepareToShow());
}

void DbusMenu::aboutToShowGroup(BusReply& reply, const std::vector<int>& asked)
{
    std::vector<int> changed;
    std::vector<int> unknown;
    for (const int identifier : asked) {
        if (!knows(identifier))
            unknown.push_back(identifier);
        else if (identifier == kRoot && prepareToShow())
            changed.push_back(identifier);
    }
    if (!asked.empty() && unknown.size() == asked.size())
        return reply.refuse(kNoSuchEntry);
    reply.write(changed);
    reply.write(unknown);
}

void DbusMenu::handleEvent(int identifier, std::string_view what)
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
        m_connection.emitSignal(kPath, kInterfaceName, "LayoutUpdated", m_revision, kRoot);
        return true;
    }
    const auto changes = [&](std::size_t index) { return !entries[index].looksLike(m_published[index]); };
    std::size_t first = 0;
    while (first < entries.size() && !changes(first))
        ++first;
    if (first == entries.size())
        return false;
    const auto updated = [&](BusWriter& writer) {
        writer.array("(ia{sv})", [&] {
            for (std::size_t index = first; index < entries.size(); ++index) {
                if (!changes(index))
                    continue;
                writer.structure("ia{sv}", [&] {
                    writer.write(static_cast<int>(index) + 1);
                    writeWanted(writer, entries[index], [&](const Property& property) {
                        return property.differs(m_published[index], entries[index]);
                    });
                });
            }
        });
    };
    // Nothing goes back to its default by removal.
    const auto removed = [](BusWriter& writer) { writer.array("(ias)", [] {}); };
    m_connection.emitSignal(kPath, kInterfaceName, "ItemsPropertiesUpdated", updated, removed);
    remember();
    return true;
}

} // namespace amperly
