// A client of the System Management Controller, the chip that meters the machine's supply
// rails. It answers one question: what is the value of the floating-point key with this
// four-character name? The calls that reach the chip live behind SmcService.
//
// Absence is ordinary here. A key the machine lacks, a refused call and a type other than a
// 32-bit float all read as nothing, silently.
#pragma once

#include "platform/smc_service.h"
#include "telemetry/smc_record.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace amperly {

/// The code under which the controller knows `name`: its bytes folded into 32 bits, the first
/// one highest. Of a longer name the last four bytes count.
[[nodiscard]] constexpr std::uint32_t keyCode(std::string_view name)
{
    std::uint32_t code = 0;
    for (const char byte : name)
        code = (code << 8) | static_cast<std::uint8_t>(byte);
    return code;
}

/// Type code of a 32-bit float value.
inline constexpr std::uint32_t kFloatTypeCode = keyCode("flt ");

class SMC {
public:
    /// Opens the controller; null where there is none or it refuses. `service` must outlive the
    /// client. There is no retry.
    [[nodiscard]] static std::unique_ptr<SMC> open(SmcService& service);

    /// Closes the connection.
    ~SMC();
    SMC(const SMC&) = delete;
    SMC& operator=(const SMC&) = delete;

    /// The value of a float key, or nothing. A present key costs one call after its first use,
    /// one whose information was refused costs none for ever after.
    [[nodiscard]] std::optional<double> floatValue(std::string_view name);

private:
    SMC(SmcService& service, std::uint32_t connection);

    [[nodiscard]] std::optional<KeyData> call(const KeyData& request);

    SmcService& m_service;
    std::uint32_t m_connection;
    std::unordered_map<std::uint32_t, KeyInfo> m_keyInfoCache;
    std::unordered_set<std::uint32_t> m_missingKeys;
};

} // namespace amperly
