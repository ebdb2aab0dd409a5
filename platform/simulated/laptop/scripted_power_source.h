// A machine that reads exactly what the caller says.
#pragma once

#include "platform/power_source.h"

namespace amperly {

class ScriptedPowerSource final : public PowerSource {
public:
    /// What every reading is from now on; nothing for a machine without figures. Before the first
    /// call nothing flows.
    void give(const std::optional<PowerSample>& sample) { m_sample = sample; }

    [[nodiscard]] std::optional<PowerSample> read() override
    {
        ++m_readings;
        return m_sample;
    }

    /// How often it was read.
    [[nodiscard]] int readings() const { return m_readings; }

private:
    std::optional<PowerSample> m_sample = PowerSample{};
    int m_readings = 0;
};

} // namespace amperly
