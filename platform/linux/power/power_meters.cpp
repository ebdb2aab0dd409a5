#include "platform/linux/power/power_meters.h"

#include <array>
#include <utility>

namespace amperly {

namespace {

// Meters come with drivers, which load once. The two lists take turns with each other and with
// that of the supplies, so that no turn pays for all.
constexpr std::uint32_t kTurnsBetweenListings = 15;
constexpr std::uint32_t kTurnOfHwmon = 7;
constexpr std::uint32_t kTurnOfPowercap = 12;

// No single computer under a desk draws this; a meter's error code reads as four megawatts.
constexpr double kHighestWatts = 5000.0;

// The counter is updated about every millisecond; over less time than this its steps show.
constexpr double kShortestSeconds = 0.1;
// A mean over more time is not what flows now; in between the machine may have slept.
constexpr double kLongestSeconds = 120.0;

} // namespace

std::optional<double> EnergyCounter::watts(std::int64_t microjoules, double seconds)
{
    if (m_last && seconds - m_last->seconds < kShortestSeconds)
        return m_watts;

    m_watts.reset();
    if (m_last && seconds - m_last->seconds <= kLongestSeconds) {
        std::int64_t difference = microjoules - m_last->microjoules;
        if (difference < 0 && m_range > 0)
            difference += m_range;
        if (difference > 0)
            m_watts = static_cast<double>(difference) / 1e6 / (seconds - m_last->seconds);
    }
    m_last = Point{microjoules, seconds};
    return m_watts;
}

PowerMeters::PowerMeters(
    SystemFiles& files, const std::string& root, std::function<double()> monotonicSeconds)
    : m_files(files)
    , m_monotonicSeconds(std::move(monotonicSeconds))
    , m_hwmon(files, root + "/class/hwmon")
    , m_powercap(files, root + "/class/powercap")
{
}

bool PowerMeters::hasAny() const
{
    return m_meters.systemLoad.isOpen() || m_meters.adapterIn.isOpen() || m_platformEnergy.isOpen();
}

void PowerMeters::findPlatformMeter()
{
    m_platformEnergy = KeptFile();
    bool isAmbiguous = false;
    for (const std::string& name : m_powercap.names()) {
        const std::string zone = m_powercap.path() + '/' + name;
        // Zones called package, core or dram are parts of the machine only.
        if (readOnce(m_files, zone + "/name") != "psys")
            continue;
        // Mostly readable by the administrator only, and that does not change later.
        KeptFile energy(m_files, zone + "/energy_uj");
        if (!energy.isOpen())
            continue;
        isAmbiguous = m_platformEnergy.isOpen();
        m_platformEnergy = std::move(energy);
        m_platformCounter
            = EnergyCounter(parseNumber(readOnce(m_files, zone + "/max_energy_range_uj")).value_or(0));
    }
    if (isAmbiguous)
        m_platformEnergy = KeptFile();
}

std::optional<std::int64_t> PowerMeters::readNumber(KeptFile& file, bool& wasReplaced)
{
    std::array<char, 64> buffer;
    const KeptFile::Reading reading = file.read(buffer);
    wasReplaced = wasReplaced || reading.outcome == KeptFile::Outcome::Replaced;
    if (reading.outcome != KeptFile::Outcome::Read)
        return std::nullopt;
    return parseNumber(reading.text);
}

std::optional<double> PowerMeters::readWatts(KeptFile& file)
{
    const std::optional<std::int64_t> microwatts = readNumber(file, m_isHwmonOutOfDate);
    if (!microwatts || *microwatts < 0)
        return std::nullopt;
    const double watts = static_cast<double>(*microwatts) / 1e6;
    return watts <= kHighestWatts ? std::optional(watts) : std::nullopt;
}

std::optional<double> PowerMeters::readPlatformMeter()
{
    const std::optional<std::int64_t> microjoules = readNumber(m_platformEnergy, m_isPowercapOutOfDate);
    if (!microjoules)
        return std::nullopt;
    const std::optional<double> watts = m_platformCounter.watts(*microjoules, m_monotonicSeconds());
    return watts && *watts <= kHighestWatts ? watts : std::nullopt;
}

MeteredPower PowerMeters::read(bool devicesChanged)
{
    const std::uint32_t turn = m_turn++;
    const bool lookAtAll = devicesChanged || turn == 0;
    if (lookAtAll || m_isHwmonOutOfDate || turn % kTurnsBetweenListings == kTurnOfHwmon) {
        if (m_hwmon.changed() || std::exchange(m_isHwmonOutOfDate, false))
            m_meters = findHwmonMeters(m_files, m_hwmon);
    }
    if (lookAtAll || m_isPowercapOutOfDate || turn % kTurnsBetweenListings == kTurnOfPowercap) {
        if (m_powercap.changed() || std::exchange(m_isPowercapOutOfDate, false))
            findPlatformMeter();
    }

    MeteredPower metered;
    metered.adapterIn = readWatts(m_meters.adapterIn);
    if (m_meters.loadMeter == LoadMeter::Controller)
        metered.systemLoad = readWatts(m_meters.systemLoad);
    if (!metered.systemLoad)
        metered.systemLoad = readPlatformMeter();
    if (!metered.systemLoad && m_meters.loadMeter != LoadMeter::Controller)
        metered.systemLoad = readWatts(m_meters.systemLoad);
    // A computer that runs draws something: 0 is a meter that is there but not connected.
    if (metered.systemLoad == 0.0)
        metered.systemLoad.reset();
    return metered;
}

} // namespace amperly
