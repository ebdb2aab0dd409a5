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

} // namespace

const sd_bus_vtable SingleInstance::kObject[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Activate", "a{sv}", "", busMethod<&SingleInstance::activate>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Open", "asa{sv}", "", busMethod<&SingleInstance::open>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ActivateAction", "sava{sv}", "", busMethod<&SingleInstance::activateAction>,
        SD_BUS_VTABLE_UNPRIVILEGED),
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
    m_object = m_connection->exportObject(m_name.objectPath.c_str(), kInterface, kObject, *this);
    const int owned = sd_bus_request_name(m_connection->bus(), m_name.busName.c_str(), 0);
    if (owned >= 0) {
        m_connection->settle();
        return Claim::Primary;
    }
    const bool isTaken = owned == -EEXIST;
    if (isTaken)
        tellTheOther();
    m_object.reset();
    m_connection.reset();
    return isTaken ? Claim::HandedOver : Claim::NoBus;
}

void SingleInstance::tellTheOther()
{
    const auto tokens = [](BusWriter& writer) {
        writer.array("{sv}", [&] {
            for (const Token& token : kTokens) {
                if (const char* const text = std::getenv(token.variable))
                    writer.entry(token.key, [&] { writer.variant(text); });
            }
        });
    };
    const BusMessage call = m_connection->makeCall(
        {m_name.busName.c_str(), m_name.objectPath.c_str(), kInterface, "Activate"}, tokens);
    // Even one that does not answer is there: a second item in the panel helps nobody.
    constexpr std::uint64_t kTimeoutMicroseconds = 3'000'000;
    if (call)
        sd_bus_call(m_connection->bus(), call.get(), kTimeoutMicroseconds, nullptr, nullptr);
}

void SingleInstance::activate(BusReply&, const PlatformData& data)
{
    // Into the environment, where the toolkit looks for the tokens when a window asks for attention.
    for (const auto& [key, text] : data.entries) {
        for (const Token& token : kTokens) {
            if (key == token.key)
                qputenv(token.variable, QByteArray(text.data(), static_cast<qsizetype>(text.size())));
        }
    }
    QMetaObject::invokeMethod(
        &m_context,
        [this] {
            if (m_activated)
                m_activated();
        },
        Qt::QueuedConnection);
}

void SingleInstance::activateAction(BusReply& reply, std::string_view, BusIgnored, const PlatformData& data)
{
    activate(reply, data);
}

} // namespace amperly
