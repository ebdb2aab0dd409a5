#include "platform/linux/desktop/single_instance.h"

#include <cstdlib>
#include <string_view>

namespace amperly {
namespace {

constexpr const char* kInterface = "org.freedesktop.Application";

// How the right to come forward is handed from one program to another, by environment and by
// call. The first pair is Wayland's, the second X11's.
struct Token {
    const char* variable;
    const char* key;
};
constexpr Token kTokens[] = {
    {"XDG_ACTIVATION_TOKEN", "activation-token"},
    {"DESKTOP_STARTUP_ID", "desktop-startup-id"},
};

/// Takes the tokens of a call's platform data into the environment, where the toolkit looks for
/// them when a window asks for attention.
void takeTokens(sd_bus_message* call)
{
    if (sd_bus_message_enter_container(call, SD_BUS_TYPE_ARRAY, "{sv}") < 0)
        return;
    while (sd_bus_message_enter_container(call, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        const char* key = nullptr;
        const char* contents = nullptr;
        if (sd_bus_message_read(call, "s", &key) < 0
            || sd_bus_message_peek_type(call, nullptr, &contents) < 0)
            return;
        const char* text = nullptr;
        if (std::string_view(contents) == "s" && sd_bus_message_read(call, "v", "s", &text) > 0) {
            for (const Token& token : kTokens) {
                if (std::string_view(key) == token.key)
                    qputenv(token.variable, text);
            }
        } else if (text == nullptr && sd_bus_message_skip(call, "v") < 0) {
            return;
        }
        sd_bus_message_exit_container(call);
    }
    sd_bus_message_exit_container(call);
}

} // namespace

const sd_bus_vtable SingleInstance::s_vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Activate", "a{sv}", "", SingleInstance::activate, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Open", "asa{sv}", "", SingleInstance::open, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD(
        "ActivateAction", "sava{sv}", "", SingleInstance::activateAction, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

SingleInstance::SingleInstance(Name name, std::string busAddress)
    : m_name(std::move(name)), m_busAddress(std::move(busAddress))
{
}

SingleInstance::~SingleInstance() = default;

SingleInstance::Claim SingleInstance::claim()
{
    m_connection = BusConnection::open(m_busAddress);
    if (!m_connection)
        return Claim::NoBus;
    // The object first: once the name is there, a call may follow at once.
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object_vtable(
        m_connection->bus(), &slot, m_name.objectPath.c_str(), kInterface, s_vtable, this);
    m_object.reset(slot);

    const int owned = sd_bus_request_name(m_connection->bus(), m_name.busName.c_str(), 0);
    if (owned == -EEXIST) {
        tellTheOther();
        m_object.reset();
        m_connection.reset();
        return Claim::HandedOver;
    }
    if (owned < 0) {
        m_object.reset();
        m_connection.reset();
        return Claim::NoBus;
    }
    m_connection->settle();
    return Claim::Primary;
}

void SingleInstance::tellTheOther()
{
    sd_bus_message* made = nullptr;
    if (sd_bus_message_new_method_call(m_connection->bus(), &made, m_name.busName.c_str(),
            m_name.objectPath.c_str(), kInterface, "Activate")
        < 0)
        return;
    const BusMessage call(made);
    sd_bus_message_open_container(made, SD_BUS_TYPE_ARRAY, "{sv}");
    for (const Token& token : kTokens) {
        if (const char* const text = std::getenv(token.variable))
            sd_bus_message_append(made, "{sv}", token.key, "s", text);
    }
    sd_bus_message_close_container(made);
    // Even one that does not answer is there: a second item in the panel helps nobody.
    constexpr std::uint64_t kPatienceMicroseconds = 3'000'000;
    sd_bus_call(m_connection->bus(), made, kPatienceMicroseconds, nullptr, nullptr);
}

int SingleInstance::activate(sd_bus_message* call, void* self, sd_bus_error*)
{
    return static_cast<SingleInstance*>(self)->come(call);
}

// The program has neither files to open nor actions of its own, but whoever calls means it.
int SingleInstance::open(sd_bus_message* call, void* self, sd_bus_error*)
{
    sd_bus_message_skip(call, "as");
    return static_cast<SingleInstance*>(self)->come(call);
}

int SingleInstance::activateAction(sd_bus_message* call, void* self, sd_bus_error*)
{
    sd_bus_message_skip(call, "sav");
    return static_cast<SingleInstance*>(self)->come(call);
}

int SingleInstance::come(sd_bus_message* call)
{
    takeTokens(call);
    QMetaObject::invokeMethod(
        &m_context,
        [this] {
            if (m_activated)
                m_activated();
        },
        Qt::QueuedConnection);
    return sd_bus_reply_method_return(call, nullptr);
}

} // namespace amperly
