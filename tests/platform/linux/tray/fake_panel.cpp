#include "tests/platform/linux/tray/fake_panel.h"

#include "tests/support/run_until.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string_view>
#include <utility>

namespace amperly::test {

namespace {

constexpr const char* kWatcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
constexpr const char* kItemPath = "/StatusNotifierItem";
constexpr const char* kItemInterface = "org.kde.StatusNotifierItem";
constexpr const char* kMenuPath = "/MenuBar";
constexpr const char* kMenuInterface = "com.canonical.dbusmenu";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

/// The parts of an item's address.
std::string busName(const std::string& item)
{
    return item.substr(0, item.find('/'));
}

const char* itemPath(const std::string& item)
{
    return item.c_str() + item.find('/');
}

FakePanel& panelAt(void* self)
{
    return *static_cast<FakePanel*>(self);
}

void readLine(sd_bus_message* message, MenuLine& line)
{
    sd_bus_message_read(message, "i", &line.identifier);
    sd_bus_message_enter_container(message, 'a', "{sv}");
    while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
        const char* name = nullptr;
        sd_bus_message_read(message, "s", &name);
        const std::string_view property = name;
        const char* text = "";
        int truth = 0;
        if (property == "type" && sd_bus_message_read(message, "v", "s", &text) > 0) {
            line.type = text;
        } else if (property == "label" && sd_bus_message_read(message, "v", "s", &text) > 0) {
            line.label = text;
        } else if (property == "enabled" && sd_bus_message_read(message, "v", "b", &truth) > 0) {
            line.enabled = truth != 0;
        } else if (property == "visible" && sd_bus_message_read(message, "v", "b", &truth) > 0) {
            line.visible = truth != 0;
        } else if (property == "shortcut") {
            sd_bus_message_enter_container(message, 'v', "aas");
            sd_bus_message_enter_container(message, 'a', "as");
            sd_bus_message_enter_container(message, 'a', "s");
            while (sd_bus_message_read(message, "s", &text) > 0)
                line.shortcut.emplace_back(text);
            sd_bus_message_exit_container(message);
            sd_bus_message_exit_container(message);
            sd_bus_message_exit_container(message);
        } else {
            ADD_FAILURE() << "unexpected property " << property;
            sd_bus_message_skip(message, "v");
        }
        sd_bus_message_exit_container(message);
    }
    sd_bus_message_exit_container(message);
}

} // namespace

const sd_bus_vtable FakePanel::kWatcher[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "", registerItem, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_PROPERTY("IsStatusNotifierHostRegistered", "b", hasHostProperty, 0, 0),
    SD_BUS_SIGNAL("StatusNotifierHostRegistered", "", 0),
    SD_BUS_SIGNAL("StatusNotifierHostUnregistered", "", 0),
    SD_BUS_VTABLE_END,
};

FakePanel::FakePanel(const std::string& address, std::optional<bool> hasHost)
    : m_connection(BusConnection::open(address)), m_hasHost(hasHost)
{
    sd_bus* bus = m_connection->bus();
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object_vtable(bus, &slot, kWatcherPath, kWatcherName, kWatcher, this);
    m_object.reset(slot);
    const auto listen = [&](const char* rule, BusSlot& kept) {
        sd_bus_slot* match = nullptr;
        sd_bus_add_match_async(bus, &match, rule, signalArrived, nullptr, this);
        kept.reset(match);
    };
    listen("type='signal',path_namespace='/StatusNotifierItem',interface='org.kde.StatusNotifierItem'",
        m_itemSignals);
    listen("type='signal',path='/MenuBar'", m_menuSignals);
    listen("type='signal',path_namespace='/StatusNotifierItem',interface='org.freedesktop.DBus.Properties'",
        m_propertySignals);
    watchAgain();
}

std::string FakePanel::address() const
{
    const char* name = "";
    EXPECT_GE(sd_bus_get_unique_name(m_connection->bus(), &name), 0);
    return name;
}

void FakePanel::stopWatching()
{
    EXPECT_GE(sd_bus_release_name(m_connection->bus(), kWatcherName), 0);
    m_connection->settle();
}

void FakePanel::watchAgain()
{
    EXPECT_GE(sd_bus_request_name(m_connection->bus(), kWatcherName, 0), 0);
    m_connection->settle();
}

int FakePanel::registerItem(sd_bus_message* call, void* self, sd_bus_error*)
{
    const char* service = nullptr;
    sd_bus_message_read(call, "s", &service);
    EXPECT_THAT(service, testing::StartsWith(kItemPath));
    panelAt(self).m_items.push_back(std::string(sd_bus_message_get_sender(call)) + service);
    return sd_bus_reply_method_return(call, nullptr);
}

int FakePanel::hasHostProperty(
    sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* self, sd_bus_error*)
{
    const std::optional<bool> hasHost = panelAt(self).m_hasHost;
    return hasHost ? sd_bus_message_append(reply, "b", static_cast<int>(*hasHost)) : -ENOENT;
}

int FakePanel::signalArrived(sd_bus_message* signal, void* self, sd_bus_error*)
{
    const std::string_view path = sd_bus_message_get_path(signal);
    panelAt(self).m_heard.push_back(
        {std::string(sd_bus_message_get_sender(signal)).append(path == kMenuPath ? kItemPath : path),
            sd_bus_message_get_member(signal)});
    return 0;
}

void FakePanel::setHasHost(bool hasHost)
{
    m_hasHost = hasHost;
    m_connection->emitSignal(kWatcherPath, kWatcherName,
        hasHost ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered");
}

bool FakePanel::sees(std::size_t items)
{
    return runUntil([&] { return m_items.size() >= items; }) && m_items.size() == items;
}

bool FakePanel::isThere(const std::string& item)
{
    const BusMessage reply
        = ask("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
            [&](sd_bus_message* call) { sd_bus_message_append(call, "s", busName(item).c_str()); });
    int owned = 0;
    sd_bus_message_read(reply.get(), "b", &owned);
    return owned != 0;
}

std::vector<Heard> FakePanel::heard()
{
    // Each item answers after all that it sent before: its answer is the end of the line.
    for (const std::string& item : m_items) {
        if (isThere(item))
            static_cast<void>(ask(item, itemPath(item), "org.freedesktop.DBus.Peer", "Ping"));
    }
    return std::exchange(m_heard, {});
}

BusMessage FakePanel::ask(const std::string& item, const char* path, const char* interface,
    const char* member, const std::function<void(sd_bus_message*)>& append)
{
    struct Answer {
        bool arrived = false;
        BusMessage message;
    } answer;
    sd_bus_message* message = nullptr;
    EXPECT_GE(sd_bus_message_new_method_call(
                  m_connection->bus(), &message, busName(item).c_str(), path, interface, member),
        0);
    const BusMessage call(message);
    if (append)
        append(message);
    sd_bus_slot* slot = nullptr;
    sd_bus_call_async(
        m_connection->bus(), &slot, message,
        [](sd_bus_message* reply, void* kept, sd_bus_error*) {
            Answer& waiting = *static_cast<Answer*>(kept);
            waiting.arrived = true;
            if (!sd_bus_message_is_method_error(reply, nullptr))
                waiting.message.reset(sd_bus_message_ref(reply));
            return 0;
        },
        &answer, 0);
    const BusSlot pending(slot);
    m_connection->settle();
    EXPECT_TRUE(runUntil([&] { return answer.arrived; })) << member << " was not answered";
    return std::move(answer.message);
}

BusMessage FakePanel::property(const std::string& item, const char* name)
{
    BusMessage reply = ask(item, itemPath(item), kProperties, "Get",
        [&](sd_bus_message* call) { sd_bus_message_append(call, "ss", kItemInterface, name); });
    EXPECT_TRUE(reply) << name;
    const char* contents = nullptr;
    sd_bus_message_peek_type(reply.get(), nullptr, &contents);
    sd_bus_message_enter_container(reply.get(), 'v', contents);
    return reply;
}

std::string FakePanel::textProperty(const std::string& item, const char* name)
{
    const BusMessage reply = property(item, name);
    const char* text = "";
    sd_bus_message_read(reply.get(), "s", &text);
    return text;
}

std::vector<Pixmap> FakePanel::pixmaps(const std::string& item)
{
    const BusMessage reply = property(item, "IconPixmap");
    std::vector<Pixmap> result;
    sd_bus_message_enter_container(reply.get(), 'a', "(iiay)");
    while (sd_bus_message_enter_container(reply.get(), 'r', "iiay") > 0) {
        Pixmap pixmap;
        sd_bus_message_read(reply.get(), "ii", &pixmap.width, &pixmap.height);
        const void* bytes = nullptr;
        std::size_t size = 0;
        sd_bus_message_read_array(reply.get(), 'y', &bytes, &size);
        const auto* first = static_cast<const std::uint8_t*>(bytes);
        pixmap.bytes.assign(first, first + size);
        EXPECT_EQ(size, static_cast<std::size_t>(pixmap.width * pixmap.height * 4));
        result.push_back(std::move(pixmap));
        sd_bus_message_exit_container(reply.get());
    }
    return result;
}

ToolTip FakePanel::toolTip(const std::string& item)
{
    const BusMessage reply = property(item, "ToolTip");
    const char* icon = "";
    const char* title = "";
    const char* text = "";
    sd_bus_message_enter_container(reply.get(), 'r', "sa(iiay)ss");
    sd_bus_message_read(reply.get(), "s", &icon);
    sd_bus_message_skip(reply.get(), "a(iiay)");
    sd_bus_message_read(reply.get(), "ss", &title, &text);
    return {icon, title, text};
}

std::vector<std::string> FakePanel::propertyNames(const std::string& item)
{
    const BusMessage reply = ask(item, itemPath(item), kProperties, "GetAll",
        [](sd_bus_message* call) { sd_bus_message_append(call, "s", kItemInterface); });
    std::vector<std::string> names;
    sd_bus_message_enter_container(reply.get(), 'a', "{sv}");
    while (sd_bus_message_enter_container(reply.get(), 'e', "sv") > 0) {
        const char* name = nullptr;
        sd_bus_message_read(reply.get(), "s", &name);
        names.emplace_back(name);
        sd_bus_message_skip(reply.get(), "v");
        sd_bus_message_exit_container(reply.get());
    }
    return names;
}

void FakePanel::click(const std::string& item, const char* member, int x, int y)
{
    EXPECT_TRUE(ask(item, itemPath(item), kItemInterface, member,
        [&](sd_bus_message* call) { sd_bus_message_append(call, "ii", x, y); }));
}

MenuLayout FakePanel::layout(const std::string& item)
{
    const BusMessage reply = ask(item, kMenuPath, kMenuInterface, "GetLayout",
        [](sd_bus_message* call) { sd_bus_message_append(call, "iias", 0, -1, 0); });
    MenuLayout layout;
    int root = -1;
    const char* name = "";
    const char* display = "";
    sd_bus_message_read(reply.get(), "u", &layout.revision);
    sd_bus_message_enter_container(reply.get(), 'r', "ia{sv}av");
    sd_bus_message_read(reply.get(), "i", &root);
    EXPECT_EQ(root, 0);
    sd_bus_message_read(reply.get(), "a{sv}", 1, &name, "s", &display);
    EXPECT_STREQ(name, "children-display");
    layout.rootDisplay = display;
    sd_bus_message_enter_container(reply.get(), 'a', "v");
    while (sd_bus_message_enter_container(reply.get(), 'v', "(ia{sv}av)") > 0) {
        sd_bus_message_enter_container(reply.get(), 'r', "ia{sv}av");
        readLine(reply.get(), layout.lines.emplace_back());
        sd_bus_message_skip(reply.get(), "av");
        sd_bus_message_exit_container(reply.get());
        sd_bus_message_exit_container(reply.get());
    }
    return layout;
}

bool FakePanel::aboutToShow(const std::string& item, int identifier)
{
    const BusMessage reply = ask(item, kMenuPath, kMenuInterface, "AboutToShow",
        [&](sd_bus_message* call) { sd_bus_message_append(call, "i", identifier); });
    int changed = 0;
    sd_bus_message_read(reply.get(), "b", &changed);
    return changed != 0;
}

void FakePanel::menuEvent(const std::string& item, int identifier, const char* what)
{
    EXPECT_TRUE(ask(item, kMenuPath, kMenuInterface, "Event", [&](sd_bus_message* call) {
        sd_bus_message_append(call, "isvu", identifier, what, "s", "", std::uint32_t{0});
    }));
}

} // namespace amperly::test
