// Linux has no driver for the System Management Controller's client interface: whoever looks
// for one finds none, once, and takes the registry's figures instead.
#pragma once

#include "platform/smc_service.h"

namespace amperly {

class NoSmcService final : public SmcService {
public:
    [[nodiscard]] SmcOpening open(std::string_view) override { return {}; }

    [[nodiscard]] std::int32_t callStruct(std::uint32_t, std::uint32_t,
        std::span<const std::byte, kSmcRecordSize>, std::span<std::byte, kSmcRecordSize>) override
    {
        return kNoConnection;
    }

    void close(std::uint32_t) override { }

private:
    static constexpr std::int32_t kNoConnection = -1;
};

} // namespace amperly
