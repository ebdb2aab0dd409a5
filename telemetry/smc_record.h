// The record that the controller's driver takes and gives: 80 bytes, little-endian, with the
// natural alignment of the kernel's own declaration. It is a wire format, so every offset is
// held fast below.
#pragma once

#include "platform/smc_service.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace amperly {

static_assert(std::endian::native == std::endian::little, "the record is exchanged as it lies in memory");

/// Selector of the driver's one struct call.
inline constexpr std::uint32_t kSmcStructSelector = 2;

/// Commands, written to KeyData::data8.
enum class SmcCommand : std::uint8_t {
    ReadValue = 5, ///< fills KeyData::bytes of the reply
    ReadKeyInfo = 9, ///< fills KeyData::keyInfo of the reply
};

struct Vers {
    std::uint8_t major = 0;
    std::uint8_t minor = 0;
    std::uint8_t build = 0;
    std::uint8_t reserved = 0;
    std::uint16_t release = 0;
};

struct LimitData {
    std::uint16_t version = 0;
    std::uint16_t length = 0;
    std::uint32_t cpuPLimit = 0;
    std::uint32_t gpuPLimit = 0;
    std::uint32_t memPLimit = 0;
};

// The driver declares the field after KeyInfo right behind its last byte, inside what would
// otherwise be the record's tail padding.
#pragma pack(push, 1)
/// How a key's value is stored.
struct KeyInfo {
    std::uint32_t dataSize = 0; ///< bytes
    std::uint32_t dataType = 0; ///< four characters, packed like a key
    std::uint8_t dataAttributes = 0; ///< passed back as it came
};
#pragma pack(pop)

struct KeyData {
    std::uint32_t key = 0;
    Vers vers{};
    std::uint16_t gapAfterVers = 0;
    LimitData limitData{};
    KeyInfo keyInfo{};
    std::uint8_t gapAfterKeyInfo = 0;
    std::uint16_t padding = 0;
    std::uint8_t result = 0; ///< the driver's verdict on the request, 0 for success
    std::uint8_t status = 0;
    std::uint8_t data8 = 0; ///< an SmcCommand
    std::uint8_t gapAfterData8 = 0;
    std::uint32_t data32 = 0;
    std::array<std::uint64_t, 4> bytes{}; ///< the value
};

static_assert(sizeof(KeyData) == kSmcRecordSize);
static_assert(offsetof(KeyData, key) == 0);
static_assert(offsetof(KeyData, vers.major) == 4);
static_assert(offsetof(KeyData, vers.minor) == 5);
static_assert(offsetof(KeyData, vers.build) == 6);
static_assert(offsetof(KeyData, vers.reserved) == 7);
static_assert(offsetof(KeyData, vers.release) == 8);
static_assert(offsetof(KeyData, limitData.version) == 12);
static_assert(offsetof(KeyData, limitData.length) == 14);
static_assert(offsetof(KeyData, limitData.cpuPLimit) == 16);
static_assert(offsetof(KeyData, limitData.gpuPLimit) == 20);
static_assert(offsetof(KeyData, limitData.memPLimit) == 24);
static_assert(offsetof(KeyData, keyInfo.dataSize) == 28);
static_assert(offsetof(KeyData, keyInfo.dataType) == 32);
static_assert(offsetof(KeyData, keyInfo.dataAttributes) == 36);
static_assert(offsetof(KeyData, padding) == 38);
static_assert(offsetof(KeyData, result) == 40);
static_assert(offsetof(KeyData, status) == 41);
static_assert(offsetof(KeyData, data8) == 42);
static_assert(offsetof(KeyData, data32) == 44);
static_assert(offsetof(KeyData, bytes) == 48);
static_assert(sizeof(KeyData::bytes) == 32);

} // namespace amperly
