// Amperly on a simulated laptop, whose day passes in two minutes.

#include "app/linux_program.h"
#include "platform/simulated/desktop/fake_login_item.h"
#include "platform/simulated/laptop/simulated_day.h"
#include "platform/simulated/laptop/simulated_laptop.h"
#include "telemetry/power_reader.h"

#include <chrono>
#include <optional>

namespace {

using namespace amperly;

/// A laptop's day on the wall's clock: reading it is what lets the day go on.
class PassingDay : public PowerSource {
public:
    [[nodiscard]] std::optional<PowerSample> read() override
    {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - m_start;
        m_day.advanceTo(passed.count());
        return m_reader.read();
    }

private:
    SimulatedLaptop m_laptop;
    SimulatedDay m_day{m_laptop};
    PowerReader m_reader{m_laptop.smc(), m_laptop.registry()};
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

} // namespace

int main(int argc, char** argv)
{
    PassingDay day;
    // The demo goes by Amperly's own entry in the desktop's menus, and would go by its entry at
    // login: what is tried out here is not to change what the user's session starts.
    FakeLoginItem loginItem;
    return runLinuxProgram(argc, argv, kAmperlyDemo, {.power = day, .loginItem = &loginItem});
}
