// Takes one reading of the machine's power flows: from the System Management Controller where
// there is one, else from the battery controller's registry entry.
#pragma once

#include "telemetry/power_sample.h"

#include <memory>
#include <mutex>
#include <optional>

namespace amperly {

class Registry;
class SMC;
class SmcService;

class PowerReader {
public:
    PowerReader() = delete;

    /// Reads once, synchronously: one service look-up, up to six property copies and up to
    /// three controller requests. Nothing when no source at all is available. Outside every
    /// Sources there is none.
    [[nodiscard]] static std::optional<PowerSample> read();

    /// What read() reads from, for as long as this object lives. It keeps the one controller
    /// client, which the first read() opens, once, whatever threads read; if that fails the
    /// controller is not tried again.
    class Sources {
    public:
        /// Both must outlive this object. Scopes nest: the sources before come back with its end.
        Sources(SmcService& smcService, Registry& registry);
        ~Sources();
        Sources(const Sources&) = delete;
        Sources& operator=(const Sources&) = delete;

    private:
        friend class PowerReader;
        [[nodiscard]] SMC* smc();

        static Sources* s_current;

        SmcService& m_smcService;
        Registry& m_registry;
        std::unique_ptr<SMC> m_smc;
        std::once_flag m_smcTried;
        Sources* m_previous;
    };
};

} // namespace amperly
