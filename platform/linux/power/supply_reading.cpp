#include "platform/linux/power/supply_reading.h"

#include "platform/linux/power/sysfs.h"
#include "platform/linux/trimmed.h"

namespace amperly {

namespace {

constexpr std::string_view kUeventPrefix = "POWER_SUPPLY_";

struct AttributeNames {
    std::string_view file;
    std::string_view uevent; ///< behind kUeventPrefix
};

// In the order of Attribute.
constexpr std::array<AttributeNames, kAttributeCount> kNames{{
    {"type", "TYPE"},
    {"scope", "SCOPE"},
    {"status", "STATUS"},
    {"present", "PRESENT"},
    {"online", "ONLINE"},
    {"capacity", "CAPACITY"},
    {"power_now", "POWER_NOW"},
    {"current_now", "CURRENT_NOW"},
    {"voltage_now", "VOLTAGE_NOW"},
    {"energy_now", "ENERGY_NOW"},
    {"energy_full", "ENERGY_FULL"},
    {"charge_now", "CHARGE_NOW"},
    {"charge_full", "CHARGE_FULL"},
    {"input_power_limit", "INPUT_POWER_LIMIT"},
    {"voltage_max_design", "VOLTAGE_MAX_DESIGN"},
    {"current_max", "CURRENT_MAX"},
}};

std::optional<SupplyType> supplyType(std::string_view text)
{
    if (text.empty() || text == "Unknown")
        return std::nullopt;
    if (text == "Battery" || text == "UPS")
        return SupplyType::Battery;
    // Older kernels name the kind of port: USB_DCP, USB_C, USB_PD_DRP …
    if (text == "Mains" || text == "Wireless" || text == "BrickID" || text.starts_with("USB"))
        return SupplyType::External;
    return SupplyType::Other;
}

std::optional<SupplyStatus> supplyStatus(std::string_view text)
{
    if (text == "Charging")
        return SupplyStatus::Charging;
    if (text == "Discharging")
        return SupplyStatus::Discharging;
    if (text == "Not charging")
        return SupplyStatus::NotCharging;
    if (text == "Full")
        return SupplyStatus::Full;
    if (text == "Unknown")
        return SupplyStatus::Unknown;
    return std::nullopt;
}

} // namespace

std::string_view fileName(Attribute attribute)
{
    return kNames[static_cast<std::size_t>(attribute)].file;
}

SupplyAttributes SupplyAttributes::fromUevent(std::string_view text)
{
    SupplyAttributes attributes;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);

        if (!line.starts_with(kUeventPrefix))
            continue;
        line.remove_prefix(kUeventPrefix.size());
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos)
            continue;
        const std::string_view name = line.substr(0, equals);
        for (std::size_t index = 0; index < kAttributeCount; ++index) {
            if (kNames[index].uevent == name) {
                attributes.set(static_cast<Attribute>(index), line.substr(equals + 1));
                break;
            }
        }
    }
    return attributes;
}

void SupplyAttributes::set(Attribute attribute, std::string_view text)
{
    if (has(attribute))
        return;
    text = trimmed(text, kSysfsBlanks);
    switch (attribute) {
    case Attribute::Type:
        m_type = supplyType(text);
        break;
    case Attribute::Scope:
        m_scope = text == "Device" ? SupplyScope::Device : SupplyScope::System;
        break;
    case Attribute::Status:
        m_status = supplyStatus(text);
        break;
    default:
        m_numbers[static_cast<std::size_t>(attribute)] = parseNumber(text);
        break;
    }
}

void SupplyAttributes::adoptIdentity(const SupplyAttributes& other)
{
    if (!m_type)
        m_type = other.m_type;
    if (!m_scope)
        m_scope = other.m_scope;
}

bool SupplyAttributes::has(Attribute attribute) const
{
    switch (attribute) {
    case Attribute::Type:
        return m_type.has_value();
    case Attribute::Scope:
        return m_scope.has_value();
    case Attribute::Status:
        return m_status.has_value();
    default:
        return number(attribute).has_value();
    }
}

std::optional<std::int64_t> SupplyAttributes::number(Attribute attribute) const
{
    return m_numbers[static_cast<std::size_t>(attribute)];
}

bool SupplyAttributes::counts() const
{
    return (type() == SupplyType::Battery || type() == SupplyType::External) && scope() != SupplyScope::Device
        && number(Attribute::Present).value_or(1) != 0;
}

SupplyTraits supplyTraits(std::string_view name)
{
    SupplyTraits traits;
    if (name.starts_with("macsmc-ac"))
        traits.rating = RatingSource::InputPowerLimit;
    else if (name.starts_with("ucsi"))
        traits.rating = RatingSource::Contract;
    else if (name.starts_with("CROS_"))
        traits.rating = RatingSource::DesignMaximum;

    // Of the drivers with a sign these have never had it the other way round.
    for (const std::string_view driver : {"macsmc-battery", "qcom-battmgr", "sbs-", "max170"})
        traits.hasSignedRate = traits.hasSignedRate || name.starts_with(driver);

    traits.isAlwaysOnline = name.starts_with("sbs-charger");
    return traits;
}

} // namespace amperly
