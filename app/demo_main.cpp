// Amperly on a simulated laptop, whose day passes in two minutes.

#include "app/linux_program.h"
#include "platform/simulated/desktop/fake_login_item.h"
#include "platform/simulated/laptop/simulated_day.h"
#include "platform/simulated/laptop/simulated_laptop.h"

#include <chrono>
#include <string_view>

namespace {

using namespace amperly;

/// The laptop's registry on the wall's clock: looking at it is what lets the day go on.
class PassingDay : public Registry {
public:
    explicit PassingDay(SimulatedLaptop& laptop) : m_laptop(laptop), m_day(laptop) { }

    [[nodiscard]] RegistryEntry find(std::string_view className) override
    {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - m_start;
        m_day.advanceTo(passed.count());
        return m_laptop.registry().find(className);
    }
    [[nodiscard]] RegistryProperty copyProperty(RegistryEntry entry, std::string_view name) override
    {
        return m_laptop.registry().copyProperty(entry, name);
    }
    void release(RegistryEntry entry) override { m_laptop.registry().release(entry); }

private:
    SimulatedLaptop& m_laptop;
    SimulatedDay m_day;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

} // namespace

int main(int argc, char** argv)
{
    SimulatedLaptop laptop;
    PassingDay day(laptop);
    // The demo goes by Amperly's own entry in the desktop's menus, and would go by its entry at
    // login: what is tried out here is not to change what the user's session starts.
    FakeLoginItem loginItem;
    return runLinuxProgram(
        argc, argv, kAmperlyDemo, {.smcService = laptop.smc(), .registry = day, .loginItem = &loginItem});
}
