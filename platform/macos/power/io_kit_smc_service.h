// The System Management Controller as the kernel offers it: a user client of its driver.
#pragma once

#include "platform/smc_service.h"

namespace amperly {

class IoKitSmcService : public SmcService {
public:
    [[nodiscard]] SmcOpening open(std::string_view className) override;
    [[nodiscard]] std::int32_t callStruct(std::uint32_t connection, std::uint32_t selector,
        std::span<const std::byte, kSmcRecordSize> request,
        std::span<std::byte, kSmcRecordSize> reply) override;
    void close(std::uint32_t connection) override;
};

} // namespace amperly
