// A controller whose every answer a test writes down beforehand, and which remembers every
// record that it was sent. It lays records out by offset, so it shares no mistake with the client.
#pragma once

#include "platform/smc_service.h"

#include <algorithm>
#include <array>
#include <bit>
#include <map>
#include <string>
#include <vector>

namespace amperly {

/// One record as it lies in memory.
using SmcBytes = std::array<std::uint8_t, kSmcRecordSize>;

inline void putWord(SmcBytes& record, std::size_t offset, std::uint32_t value)
{
    for (std::size_t index = 0; index < 4; ++index)
        record[offset + index] = static_cast<std::uint8_t>(value >> (8 * index));
}

inline std::uint32_t wordAt(const SmcBytes& record, std::size_t offset)
{
    std::uint32_t value = 0;
    for (std::size_t index = 4; index-- > 0;)
        value = (value << 8) | record[offset + index];
    return value;
}

/// The four characters as a human packs them, first one highest.
inline std::uint32_t fourCharacters(const char (&name)[5])
{
    std::uint32_t code = 0;
    for (std::size_t index = 0; index < 4; ++index)
        code = (code << 8) | static_cast<std::uint8_t>(name[index]);
    return code;
}

class CannedSmc : public SmcService {
public:
    struct Call {
        std::uint32_t connection = 0;
        std::uint32_t selector = 0;
        SmcBytes request{};
    };

    /// What a command comes to: the kernel's code, then the whole reply.
    struct Answer {
        std::int32_t kernelCode = 0;
        SmcBytes reply{};
    };

    struct Key {
        Answer information;
        Answer value;
    };

    static constexpr std::uint32_t kConnection = 0x1507;
    static constexpr std::uint8_t kInformation = 9;
    static constexpr std::uint8_t kValue = 5;

    SmcOpening opening{.opened = true, .connection = kConnection};
    std::vector<std::string> openedClasses;
    std::vector<std::uint32_t> closedConnections;
    std::vector<Call> calls;

    /// The key as it answers; what there is not yet answers like a float key of 0 W.
    Key& key(std::uint32_t code)
    {
        const auto [found, isNew] = m_keys.try_emplace(code);
        if (isNew) {
            describe(found->second, 4, fourCharacters("flt "));
            pay(found->second, std::bit_cast<std::uint32_t>(0.0f));
        }
        return found->second;
    }
    Key& key(const char (&name)[5]) { return key(fourCharacters(name)); }

    // Ways to write answers down.
    void hold(const char (&name)[5], float watts) { pay(key(name), std::bit_cast<std::uint32_t>(watts)); }
    void holdBits(const char (&name)[5], std::uint32_t bits) { pay(key(name), bits); }
    void describe(const char (&name)[5], std::uint32_t size, std::uint32_t type, std::uint8_t attributes = 0)
    {
        describe(key(name), size, type, attributes);
    }
    void refuse(const char (&name)[5]) { key(name).information.reply[kResultOffset] = 0x84; }
    void refuseValue(const char (&name)[5]) { key(name).value.reply[kResultOffset] = 0x85; }
    void allowValue(const char (&name)[5]) { key(name).value.reply[kResultOffset] = 0; }

    // What it was asked for, "PSTR?" for a key's information and "PSTR" for its value.
    [[nodiscard]] std::vector<std::string> conversation() const
    {
        std::vector<std::string> asked;
        for (const Call& call : calls) {
            const std::uint32_t code = wordAt(call.request, 0);
            std::string name;
            for (int shift = 24; shift >= 0; shift -= 8)
                name += static_cast<char>(static_cast<std::uint8_t>(code >> shift));
            asked.push_back(call.request[kCommandOffset] == kInformation ? name + "?" : name);
        }
        return asked;
    }

    SmcOpening open(std::string_view className) override
    {
        openedClasses.emplace_back(className);
        return opening;
    }

    std::int32_t callStruct(std::uint32_t connection, std::uint32_t selector,
        std::span<const std::byte, kSmcRecordSize> request,
        std::span<std::byte, kSmcRecordSize> reply) override
    {
        Call call{.connection = connection, .selector = selector};
        std::transform(request.begin(), request.end(), call.request.begin(),
            [](std::byte byte) { return std::to_integer<std::uint8_t>(byte); });
        calls.push_back(call);

        // A real controller knows few keys; this one only those that a test has written down.
        const auto found = m_keys.find(wordAt(call.request, 0));
        Answer answer;
        answer.reply[kResultOffset] = 0x84;
        if (found != m_keys.end())
            answer = call.request[kCommandOffset] == kInformation ? found->second.information
                                                                  : found->second.value;
        std::transform(answer.reply.begin(), answer.reply.end(), reply.begin(),
            [](std::uint8_t byte) { return std::byte{byte}; });
        return answer.kernelCode;
    }

    void close(std::uint32_t connection) override { closedConnections.push_back(connection); }

    static constexpr std::size_t kResultOffset = 40;
    static constexpr std::size_t kStatusOffset = 41;
    static constexpr std::size_t kCommandOffset = 42;

private:
    static void describe(Key& key, std::uint32_t size, std::uint32_t type, std::uint8_t attributes = 0)
    {
        putWord(key.information.reply, 28, size);
        putWord(key.information.reply, 32, type);
        key.information.reply[36] = attributes;
    }
    static void pay(Key& key, std::uint32_t bits) { putWord(key.value.reply, 48, bits); }

    std::map<std::uint32_t, Key> m_keys;
};

} // namespace amperly
