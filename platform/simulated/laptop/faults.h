// What the simulated laptop gets wrong, by the name under which it is asked: a controller key
// ("PDTR"), a registry property or an entry of one ("Voltage", "BatteryPower"), or the class of
// a service ("AppleSMC").
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace amperly {

enum class Fault {
    None,
    Refused, ///< as if there were no such thing
    ValueRefused, ///< a key tells its type but not its value; in the registry the same as Refused
    WrongType, ///< something of another type than it should be
    Infinite, ///< of the right type where that can hold an infinity
};

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

} // namespace amperly
