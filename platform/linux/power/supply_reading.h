// One power supply at one moment: what it says about itself, as far as that is used here, and
// what its name tells of its driver. A supply says everything at once in its `uevent`, as lines
// of POWER_SUPPLY_STATUS=Charging, or piece by piece in files called `status` and so on.
//
// Units are the kernel's: microvolts, microamperes, microwatts, microwatt-hours and
// microampere-hours. A missing attribute is ordinary; so are signs and sizes that make no sense.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace amperly {

enum class SupplyType : std::uint8_t {
    Unknown, ///< not told; some ports tell only while something is plugged in
    Other, ///< of no interest
    Battery, ///< an uninterruptible supply too: it holds charge and carries the load
    External, ///< mains, USB of any kind, wireless
};

enum class SupplyStatus : std::uint8_t { Unknown, Charging, Discharging, NotCharging, Full };

enum class SupplyScope : std::uint8_t {
    System,
    Device, ///< it powers a mouse, a keyboard, a pen
};

enum class Attribute : std::uint8_t {
    // Words.
    Type,
    Scope,
    Status,
    // Numbers.
    Present,
    Online,
    Capacity,
    PowerNow,
    CurrentNow,
    VoltageNow,
    EnergyNow,
    EnergyFull,
    ChargeNow,
    ChargeFull,
    InputPowerLimit,
    VoltageMaxDesign,
    CurrentMax,
};
inline constexpr std::size_t kAttributeCount = static_cast<std::size_t>(Attribute::CurrentMax) + 1;

class SupplyAttributes {
public:
    /// The attributes in the text of a uevent; what is not of interest is skipped.
    [[nodiscard]] static SupplyAttributes fromUevent(std::string_view text);

    /// Takes the text of one attribute. What can't be understood stays missing, and what is
    /// there already stays: some kernels say TYPE twice.
    void set(Attribute attribute, std::string_view text);

    /// Takes type and scope from `other` where they are missing here.
    void adoptIdentity(const SupplyAttributes& other);

    [[nodiscard]] bool has(Attribute attribute) const;
    [[nodiscard]] std::optional<std::int64_t> number(Attribute attribute) const;

    [[nodiscard]] SupplyType type() const { return m_type.value_or(SupplyType::Unknown); }
    [[nodiscard]] SupplyScope scope() const { return m_scope.value_or(SupplyScope::System); }
    [[nodiscard]] SupplyStatus status() const { return m_status.value_or(SupplyStatus::Unknown); }

    /// Whether this is a source of power for the system, and in its place: an empty bay keeps
    /// its supply, sometimes with a capacity of 100 %.
    [[nodiscard]] bool counts() const;

private:
    std::optional<SupplyType> m_type;
    std::optional<SupplyScope> m_scope;
    std::optional<SupplyStatus> m_status;
    std::array<std::optional<std::int64_t>, kAttributeCount> m_numbers{};
};

/// Name of the attribute's file.
[[nodiscard]] std::string_view fileName(Attribute attribute);

/// Which attributes of an external supply are the adapter's rating.
enum class RatingSource : std::uint8_t {
    None,
    InputPowerLimit,
    Contract, ///< voltage_now × current_now are what was negotiated, not what flows
    DesignMaximum, ///< voltage_max_design × current_max
};

/// How some attributes of a driver are meant.
struct SupplyTraits {
    RatingSource rating = RatingSource::None;
    /// The rate is known to be negative while discharging, whatever the status says.
    bool hasSignedRate = false;
    /// `online` says 1 for ever, so it says nothing.
    bool isAlwaysOnline = false;
};

/// By the supply's name, which begins with its driver's.
[[nodiscard]] SupplyTraits supplyTraits(std::string_view name);

struct SupplyReading {
    SupplyTraits traits{};
    SupplyAttributes attributes{};
};

} // namespace amperly
