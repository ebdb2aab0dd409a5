// Takes one reading of the machine's power flows: from the System Management Controller where
// there is one, else from the battery controller's registry entry.
#pragma once

#include "platform/power_source.h"

#include <memory>
#include <mutex>
#include <optional>

namespace amperly {

class Registry;
class SMC;
class SmcService;

class PowerReader final : public PowerSource {
public:
    /// Both must outlive the reader.
    PowerReader(SmcService& smcService, Registry& registry);
    ~PowerReader() override;
    PowerReader(const PowerReader&) = delete;
    PowerReader& operator=(const PowerReader&) = delete;

    /// One service look-up, up to six property copies and up to three controller requests. The
    /// first call opens the controller's client, once, whatever threads read; if that fails the
    /// controller is not tried again.
    [[nodiscard]] std::optional<PowerSample> read() override;

private:
    [[nodiscard]] SMC* smc();

    SmcService& m_smcService;
    Registry& m_registry;
    std::unique_ptr<SMC> m_smc;
    std::once_flag m_smcTried;
};

} // namespace amperly
