#include "telemetry/smc.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <span>

namespace amperly {

std::unique_ptr<SMC> SMC::open(SmcService& service)
{
    const SmcOpening opening = service.open("AppleSMC");
    // Made even when the opening failed, so that whatever handle there is gets closed.
    std::unique_ptr<SMC> client(new SMC(service, opening.connection));
    if (!opening.opened)
        return nullptr;
    return client;
}

SMC::SMC(SmcService& service, std::uint32_t connection) : m_service(service), m_connection(connection) { }

SMC::~SMC()
{
    m_service.close(m_connection);
}

std::optional<KeyData> SMC::call(const KeyData& request)
{
    KeyData reply{};
    const std::int32_t code = m_service.callStruct(m_connection, kSmcStructSelector,
        std::as_bytes(std::span<const KeyData, 1>(&request, 1)),
        std::as_writable_bytes(std::span<KeyData, 1>(&reply, 1)));
    if (code != 0 || reply.result != 0)
        return std::nullopt;
    return reply;
}

std::optional<double> SMC::floatValue(std::string_view name)
{
    const std::uint32_t code = keyCode(name);
    if (m_missingKeys.contains(code))
        return std::nullopt;

    auto cached = m_keyInfoCache.find(code);
    if (cached == m_keyInfoCache.end()) {
        KeyData request{};
        request.key = code;
        request.data8 = static_cast<std::uint8_t>(SmcCommand::ReadKeyInfo);
        const std::optional<KeyData> reply = call(request);
        if (!reply) {
            m_missingKeys.insert(code);
            return std::nullopt;
        }
        cached = m_keyInfoCache.emplace(code, reply->keyInfo).first;
    }

    const KeyInfo info = cached->second;
    if (info.dataSize != sizeof(float) || info.dataType != kFloatTypeCode)
        return std::nullopt;

    KeyData request{};
    request.key = code;
    request.keyInfo = info;
    request.data8 = static_cast<std::uint8_t>(SmcCommand::ReadValue);
    const std::optional<KeyData> reply = call(request);
    if (!reply)
        return std::nullopt;

    float value = 0;
    std::memcpy(&value, reply->bytes.data(), sizeof value);
    if (!std::isfinite(value))
        return std::nullopt;
    return static_cast<double>(value);
}

} // namespace amperly
