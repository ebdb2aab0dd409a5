// The simulated laptop's System Management Controller and the driver in front of it. It
// takes and gives the driver's 80-byte records byte by byte, from the published layout and not
// from its client's idea of it, so that a client that lays them out wrongly is found out.
//
// Keys: "PSTR", "SBAP" (positive while the battery delivers; none without a battery) and
// "PDTR", floats in watts; "BUIC", the charge in percent, one byte, for those who ask
// for something that is no float.
#pragma once

#include "platform/smc_service.h"

#include <array>
#include <optional>
#include <vector>

namespace amperly {

class SimulatedLaptop;

class SimulatedSmc : public SmcService {
public:
    explicit SimulatedSmc(const SimulatedLaptop& laptop) : m_laptop(laptop) { }

    // The kernel's codes that this driver returns.
    static constexpr std::int32_t kSuccess = 0;
    static constexpr auto kNoDevice = static_cast<std::int32_t>(0xe00002c0); ///< the controller went away
    static constexpr auto kBadArgument = static_cast<std::int32_t>(0xe00002c2); ///< no such selector
    static constexpr auto kNotOpen = static_cast<std::int32_t>(0xe00002cd); ///< no such handle

    // The controller's own verdicts, in the reply.
    static constexpr std::uint8_t kBadCommand = 0x82;
    static constexpr std::uint8_t kKeyNotFound = 0x84;
    static constexpr std::uint8_t kNotReadable = 0x85;
    static constexpr std::uint8_t kSizeMismatch = 0x87;

    [[nodiscard]] SmcOpening open(std::string_view className) override;
    [[nodiscard]] std::int32_t callStruct(std::uint32_t connection, std::uint32_t selector,
        std::span<const std::byte, kSmcRecordSize> request,
        std::span<std::byte, kSmcRecordSize> reply) override;
    void close(std::uint32_t connection) override;

    // What has been asked of it so far.
    [[nodiscard]] int openings() const { return m_openings; } ///< failed ones included
    [[nodiscard]] int closings() const { return m_closings; } ///< those of handle 0 included
    [[nodiscard]] int openHandles() const { return static_cast<int>(m_handles.size()); }
    [[nodiscard]] int informationCalls() const { return m_informationCalls; }
    [[nodiscard]] int valueCalls() const { return m_valueCalls; }
    [[nodiscard]] int calls() const { return m_calls; } ///< of every kind, failed ones included
    [[nodiscard]] int misuses() const { return m_misuses; } ///< of handles that are not open

private:
    struct Key;

    [[nodiscard]] std::optional<Key> findKey(std::uint32_t code) const;
    void answer(
        std::span<const std::byte, kSmcRecordSize> request, std::span<std::byte, kSmcRecordSize> reply) const;

    const SimulatedLaptop& m_laptop;
    std::vector<std::uint32_t> m_handles;
    std::uint32_t m_lastHandle = 0;
    int m_openings = 0;
    int m_closings = 0;
    int m_informationCalls = 0;
    int m_valueCalls = 0;
    int m_calls = 0;
    int m_misuses = 0;
};

} // namespace amperly
