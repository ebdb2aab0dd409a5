#include "platform/simulated/laptop/simulated_smc.h"

#include "platform/simulated/laptop/simulated_laptop.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace amperly {

namespace {

constexpr std::string_view kClassName = "AppleSMC";
constexpr std::uint32_t kStructSelector = 2;

// Where the fields that this driver looks at lie in the record.
constexpr std::size_t kKeyOffset = 0; // 32 bits
constexpr std::size_t kDataSizeOffset = 28; // 32 bits
constexpr std::size_t kDataTypeOffset = 32; // 32 bits
constexpr std::size_t kDataAttributesOffset = 36; // 8 bits
constexpr std::size_t kResultOffset = 40; // 8 bits
constexpr std::size_t kCommandOffset = 42; // 8 bits
constexpr std::size_t kValueOffset = 48; // up to 32 bytes

constexpr std::uint8_t kReadValue = 5;
constexpr std::uint8_t kReadKeyInformation = 9;

constexpr std::uint8_t kReadable = 0x80;

constexpr std::uint32_t kUnsignedByteType = 0x75693820; // "ui8 "
constexpr std::uint32_t kUnsignedLongType = 0x75693332; // "ui32"
constexpr std::uint32_t kFloatType = 0x666c7420; // "flt "

using Request = std::span<const std::byte, kSmcRecordSize>;
using Reply = std::span<std::byte, kSmcRecordSize>;

std::uint8_t get8(Request record, std::size_t offset)
{
    return std::to_integer<std::uint8_t>(record[offset]);
}

std::uint32_t get32(Request record, std::size_t offset)
{
    std::uint32_t value = 0;
    for (std::size_t index = 4; index-- > 0;)
        value = (value << 8) | get8(record, offset + index);
    return value;
}

void put8(Reply record, std::size_t offset, std::uint8_t value)
{
    record[offset] = std::byte{value};
}

void put32(Reply record, std::size_t offset, std::uint32_t value)
{
    for (std::size_t index = 0; index < 4; ++index)
        put8(record, offset + index, static_cast<std::uint8_t>(value >> (8 * index)));
}

} // namespace

/// A key as it would answer now.
struct SimulatedSmc::Key {
    std::uint32_t type = 0;
    std::uint32_t size = 0; ///< bytes, at most four
    std::uint32_t value = 0; ///< as it lies in memory
    bool readable = true;
};

SmcOpening SimulatedSmc::open(std::string_view className)
{
    ++m_openings;
    if (className != kClassName || !m_laptop.hasController() || m_laptop.faults().refuse(kClassName))
        return {};
    m_handles.push_back(++m_lastHandle);
    return {.opened = true, .connection = m_lastHandle};
}

void SimulatedSmc::close(std::uint32_t connection)
{
    ++m_closings;
    if (connection != 0 && std::erase(m_handles, connection) == 0)
        ++m_misuses;
}

std::int32_t SimulatedSmc::callStruct(
    std::uint32_t connection, std::uint32_t selector, Request request, Reply reply)
{
    ++m_calls;
    if (std::find(m_handles.begin(), m_handles.end(), connection) == m_handles.end()) {
        ++m_misuses;
        return kNotOpen;
    }
    if (!m_laptop.hasController())
        return kNoDevice;
    if (selector != kStructSelector)
        return kBadArgument;

    switch (get8(request, kCommandOffset)) {
    case kReadKeyInformation:
        ++m_informationCalls;
        break;
    case kReadValue:
        ++m_valueCalls;
        break;
    default:
        break;
    }
    answer(request, reply);
    return kSuccess;
}

void SimulatedSmc::answer(Request request, Reply reply) const
{
    std::fill(reply.begin(), reply.end(), std::byte{0});
    const std::uint8_t command = get8(request, kCommandOffset);
    if (command != kReadKeyInformation && command != kReadValue)
        return put8(reply, kResultOffset, kBadCommand);

    const std::uint32_t code = get32(request, kKeyOffset);
    const std::optional<Key> key = findKey(code);
    if (!key)
        return put8(reply, kResultOffset, kKeyNotFound);
    put32(reply, kKeyOffset, code);

    if (command == kReadKeyInformation) {
        put32(reply, kDataSizeOffset, key->size);
        put32(reply, kDataTypeOffset, key->type);
        put8(reply, kDataAttributesOffset, kReadable);
        return;
    }
    // The controller asks to be told how much it should send.
    if (get32(request, kDataSizeOffset) != key->size)
        return put8(reply, kResultOffset, kSizeMismatch);
    if (!key->readable)
        return put8(reply, kResultOffset, kNotReadable);
    for (std::size_t index = 0; index < key->size; ++index)
        put8(reply, kValueOffset + index, static_cast<std::uint8_t>(key->value >> (8 * index)));
}

std::optional<SimulatedSmc::Key> SimulatedSmc::findKey(std::uint32_t code) const
{
    std::array<char, 4> letters{};
    for (std::size_t index = 0; index < letters.size(); ++index)
        letters[index] = static_cast<char>(static_cast<std::uint8_t>(code >> (24 - 8 * index)));
    const std::string_view name(letters.data(), letters.size());

    const PowerFlows flows = m_laptop.flows();
    Key key;
    const auto holdWatts = [&key](double watts) {
        key = {
            .type = kFloatType, .size = 4, .value = std::bit_cast<std::uint32_t>(static_cast<float>(watts))};
    };
    if (name == "PSTR")
        holdWatts(flows.systemLoad);
    else if (name == "PDTR")
        holdWatts(flows.adapterIn);
    else if (name == "SBAP" && m_laptop.hasBattery())
        holdWatts(-flows.battery);
    else if (name == "BUIC" && m_laptop.hasBattery())
        key = {.type = kUnsignedByteType,
            .size = 1,
            .value = static_cast<std::uint32_t>(std::lround(m_laptop.percent()))};
    else
        return std::nullopt;

    switch (m_laptop.faults().of(name)) {
    case Fault::None:
        break;
    case Fault::Refused:
        return std::nullopt;
    case Fault::ValueRefused:
        key.readable = false;
        break;
    case Fault::WrongType:
        key.type = kUnsignedLongType;
        key.size = 4;
        break;
    case Fault::Infinite:
        if (key.type == kFloatType)
            key.value = std::bit_cast<std::uint32_t>(std::numeric_limits<float>::infinity());
        break;
    }
    return key;
}

} // namespace amperly
