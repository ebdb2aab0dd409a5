// A whole laptop on a clock that the caller moves: a load that wanders, a battery, a charger that
// comes and goes, the System Management Controller and the battery's registry entry that
// tell of them, and all the ways in which those go wrong.
//
// At every instant adapterIn = systemLoad + battery. The adapter serves the load first, the
// battery takes what is left and it can accept, and helps out where the adapter is too weak.
// The charge follows the battery's power. A machine that finds too little power slows down;
// without any it is off and draws nothing.
#pragma once

#include "platform/simulated/laptop/simulated_battery.h"
#include "platform/simulated/laptop/simulated_registry.h"
#include "platform/simulated/laptop/simulated_smc.h"
#include "platform/simulated/laptop/wandering_load.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace amperly {

/// A charger, by its rating.
struct AdapterWatts {
    int rating = 0; ///< watts, at most this comes out; not negative
    friend bool operator==(const AdapterWatts&, const AdapterWatts&) = default;
};

/// Where the power goes at one instant, in watts. adapterIn is always systemLoad + battery.
struct PowerFlows {
    double systemLoad = 0; ///< drawn by the machine, never negative
    double adapterIn = 0; ///< delivered by the adapter, never negative
    double battery = 0; ///< into the battery while positive, out of it while negative
    friend bool operator==(const PowerFlows&, const PowerFlows&) = default;
};

enum class Fault {
    None,
    Refused, ///< as if there were no such thing
    ValueRefused, ///< a key tells its type but not its value; in the registry the same as Refused
    WrongType, ///< something of another type than it should be
    Infinite, ///< of the right type where that can hold an infinity
};

/// What goes wrong, by the name under which it is asked: a controller key ("PDTR"), a registry
/// property or an entry of one ("Voltage", "BatteryPower"), or the class of a service ("AppleSMC").
class Faults {
public:
    void set(std::string_view name, Fault fault) { m_byName.insert_or_assign(std::string(name), fault); }

    [[nodiscard]] Fault of(std::string_view name) const
    {
        const auto found = m_byName.find(name);
        return found == m_byName.end() ? Fault::None : found->second;
    }

    [[nodiscard]] bool refuse(std::string_view name) const { return of(name) == Fault::Refused; }

private:
    std::map<std::string, Fault, std::less<>> m_byName;
};

class SimulatedLaptop {
public:
    static constexpr double kStartPercent = 62.0;

    /// On battery below this the machine draws at most kThrottledWatts.
    static constexpr double kThrottlePercent = 2.0;
    static constexpr double kThrottledWatts = 6.0;

    /// On battery, charged to kStartPercent, with the load of WanderingLoad(seed).
    explicit SimulatedLaptop(WanderingLoad load = WanderingLoad());
    SimulatedLaptop(const SimulatedLaptop&) = delete;
    SimulatedLaptop& operator=(const SimulatedLaptop&) = delete;

    /// Moves the laptop's clock; not backwards.
    void advance(double seconds);

    // Power.
    void plugIn(AdapterWatts adapter) { m_adapter = adapter; }
    void unplug() { m_adapter.reset(); }
    void setPercent(double percent) { m_battery.setPercent(percent); }
    void setLoad(double watts); ///< from now on, as far as there is power for it; not negative
    void letLoadWander() { m_fixedLoad.reset(); } ///< undoes setLoad()
    void holdCharge() { m_chargeHeld = true; } ///< stays where it is on power, as to spare the cells
    void allowCharge() { m_chargeHeld = false; }
    void removeBattery() { m_hasBattery = false; }
    void insertBattery() { m_hasBattery = true; }

    // What goes wrong, for whatever has this name. A later fault replaces an earlier one.
    void refuse(std::string_view name) { m_faults.set(name, Fault::Refused); }
    void refuseValue(std::string_view name) { m_faults.set(name, Fault::ValueRefused); }
    void giveWrongType(std::string_view name) { m_faults.set(name, Fault::WrongType); }
    void giveInfinity(std::string_view name) { m_faults.set(name, Fault::Infinite); }
    void behave(std::string_view name) { m_faults.set(name, Fault::None); }

    /// The controller is gone: it cannot be opened, and open connections answer no more.
    void loseController() { m_hasController = false; }
    void restoreController() { m_hasController = true; }

    // How things are.
    [[nodiscard]] PowerFlows flows() const;
    [[nodiscard]] double percent() const { return m_battery.percent(); }
    [[nodiscard]] double batteryVolts() const { return m_battery.volts(); }
    [[nodiscard]] double elapsedSeconds() const { return m_elapsedSeconds; }
    [[nodiscard]] std::optional<AdapterWatts> adapter() const { return m_adapter; }
    [[nodiscard]] bool isPluggedIn() const { return m_adapter.has_value(); }
    [[nodiscard]] bool hasBattery() const { return m_hasBattery; }
    [[nodiscard]] bool hasController() const { return m_hasController; }
    [[nodiscard]] const Faults& faults() const { return m_faults; }

    // Where a program reads.
    [[nodiscard]] SimulatedSmc& smc() { return m_smc; }
    [[nodiscard]] SimulatedRegistry& registry() { return m_registry; }

private:
    [[nodiscard]] double wantedLoad() const;

    WanderingLoad m_load;
    std::optional<double> m_fixedLoad;
    SimulatedBattery m_battery{kStartPercent};
    std::optional<AdapterWatts> m_adapter;
    double m_elapsedSeconds = 0;
    bool m_hasBattery = true;
    bool m_chargeHeld = false;
    bool m_hasController = true;
    Faults m_faults;
    SimulatedSmc m_smc{*this};
    SimulatedRegistry m_registry{*this};
};

} // namespace amperly
