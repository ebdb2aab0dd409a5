#include "platform/linux/power/supply.h"

#include <utility>

namespace amperly {

namespace {

using Outcome = KeptFile::Outcome;

constexpr std::size_t kLongestUevent = 4096; // the kernel writes at most a page

/// More digits than a text is going to gain, so that keeping it takes no memory later.
constexpr std::size_t kRoomToGrow = 128;

/// The text without a last line that did not fit.
std::string_view wholeLines(std::string_view text)
{
    if (text.size() < kLongestUevent)
        return text;
    const std::size_t lastEnd = text.rfind('\n');
    return lastEnd == std::string_view::npos ? std::string_view() : text.substr(0, lastEnd);
}

} // namespace

/// Completes what the uevent said from the attributes' own files.
class Supply::Reader {
public:
    Reader(Supply& supply, std::span<char> buffer, SupplyAttributes& attributes, bool hasUevent)
        : m_supply(supply), m_buffer(buffer), m_attributes(attributes), m_hasUevent(hasUevent)
    {
    }

    void completeBattery(bool isOneOfSeveral)
    {
        want(Attribute::Status);
        if (!m_hasUevent)
            want(Attribute::Present);

        if (!has(Attribute::CurrentNow))
            want(Attribute::PowerNow);
        if (!has(Attribute::PowerNow)) {
            want(Attribute::CurrentNow);
            want(Attribute::VoltageNow);
        }

        want(Attribute::Capacity);
        if (!has(Attribute::Capacity) || isOneOfSeveral) {
            if (!has(Attribute::ChargeNow) || !has(Attribute::ChargeFull)) {
                want(Attribute::EnergyNow);
                want(Attribute::EnergyFull);
            }
            if (!has(Attribute::EnergyNow) || !has(Attribute::EnergyFull)) {
                want(Attribute::ChargeNow);
                want(Attribute::ChargeFull);
            }
        }
    }

    void completeExternal()
    {
        want(Attribute::Online);
        if (m_hasUevent)
            return;
        want(Attribute::Type);
        want(Attribute::Present);
        if (m_attributes.number(Attribute::Online).value_or(0) <= 0)
            return;
        switch (m_supply.m_traits.rating) {
        case RatingSource::None:
            break;
        case RatingSource::InputPowerLimit:
            want(Attribute::InputPowerLimit);
            break;
        case RatingSource::Contract:
            want(Attribute::VoltageNow);
            want(Attribute::CurrentNow);
            break;
        case RatingSource::DesignMaximum:
            want(Attribute::VoltageMaxDesign);
            want(Attribute::CurrentMax);
            break;
        }
    }

    [[nodiscard]] bool isDeviceGone() const
    {
        return m_wasReplaced || (!m_hasUevent && m_answers == 0 && m_sawNoDevice);
    }

private:
    [[nodiscard]] bool has(Attribute attribute) const { return m_attributes.has(attribute); }

    void want(Attribute attribute)
    {
        if (has(attribute))
            return;
        const std::size_t index = static_cast<std::size_t>(attribute);
        KeptFile& file = m_supply.m_attributeFiles[index];
        if (!std::exchange(m_supply.m_isOpened[index], true)) {
            std::string path = m_supply.m_directory;
            path.append("/").append(fileName(attribute));
            file = KeptFile(*m_supply.m_files, path);
        }

        const KeptFile::Reading reading = file.read(m_buffer);
        if (reading.outcome == Outcome::Read) {
            m_attributes.set(attribute, reading.text);
            ++m_answers;
        }
        m_wasReplaced = m_wasReplaced || reading.outcome == Outcome::Replaced;
        m_sawNoDevice = m_sawNoDevice || reading.outcome == Outcome::NoDevice;
        // The uevent left it out for the same reason a moment ago; it will be there once there
        // is a value.
        if (m_hasUevent && (reading.outcome == Outcome::NoDevice || reading.outcome == Outcome::Unknown))
            file.backOff();
    }

    Supply& m_supply;
    std::span<char> m_buffer;
    SupplyAttributes& m_attributes;
    bool m_hasUevent;
    bool m_wasReplaced = false;
    bool m_sawNoDevice = false;
    int m_answers = 0;
};

Supply::Supply(SystemFiles& files, std::string directory, std::string_view name)
    : m_files(&files)
    , m_directory(std::move(directory))
    , m_traits(supplyTraits(name))
    , m_uevent(files, m_directory + "/uevent")
{
    std::array<char, kLongestUevent> buffer;
    const KeptFile::Reading reading = m_uevent.read(buffer);
    if (reading.outcome == Outcome::Read)
        m_identity = attributesIn(wholeLines(reading.text));
    m_lastUevent.reserve(m_lastUevent.size() + kRoomToGrow);
    if (!m_identity.has(Attribute::Type))
        m_identity.set(Attribute::Type, readOnce(files, m_directory + "/type"));
    if (reading.outcome != Outcome::Read)
        m_identity.set(Attribute::Scope, readOnce(files, m_directory + "/scope"));
}

bool Supply::isOfInterest() const
{
    return m_identity.type() != SupplyType::Other && m_identity.scope() != SupplyScope::Device;
}

const SupplyAttributes& Supply::attributesIn(std::string_view uevent)
{
    if (uevent != m_lastUevent) {
        m_lastAttributes = SupplyAttributes::fromUevent(uevent);
        m_lastUevent = uevent;
    }
    return m_lastAttributes;
}

std::optional<SupplyAttributes> Supply::read(bool isOneOfSeveral)
{
    std::array<char, kLongestUevent> buffer;
    const KeptFile::Reading uevent = m_uevent.read(buffer);
    if (uevent.outcome == Outcome::NoDevice || uevent.outcome == Outcome::Replaced)
        return std::nullopt;

    const bool hasUevent = uevent.outcome == Outcome::Read;
    SupplyAttributes attributes;
    if (hasUevent)
        attributes = attributesIn(wholeLines(uevent.text));
    attributes.adoptIdentity(m_identity);

    Reader reader(*this, buffer, attributes, hasUevent);
    if (isBattery())
        reader.completeBattery(isOneOfSeveral);
    else
        reader.completeExternal();
    if (reader.isDeviceGone())
        return std::nullopt;
    return attributes;
}

} // namespace amperly
