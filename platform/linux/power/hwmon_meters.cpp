#include "platform/linux/power/hwmon_meters.h"

#include <string>
#include <string_view>

namespace amperly {

namespace {

constexpr std::string_view kLabelSuffix = "_label";

/// "power3" of "power3_label". Every device has a folder called "power" too.
std::string_view powerChannel(std::string_view name)
{
    if (!name.starts_with("power") || !name.ends_with(kLabelSuffix))
        return {};
    name.remove_suffix(kLabelSuffix.size());
    const std::string_view digits = name.substr(5);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos)
        return {};
    return name;
}

class MeterSearch {
public:
    explicit MeterSearch(SystemFiles& files) : m_files(files) { }

    void look(const std::string& device)
    {
        const std::string name = readOnce(m_files, device + "/name");
        if (name == "power_meter") {
            // A firmware's meter may also be one of the battery alone.
            if (readOnce(m_files, device + "/power1_is_battery") != "1")
                offer(LoadMeter::FirmwareMeter, device + "/power1");
            return;
        }
        KeptFolder files(m_files, device);
        if (!files.changed())
            return;
        for (const std::string& file : files.names()) {
            const std::string_view channel = powerChannel(file);
            if (channel.empty())
                continue;
            const std::string folder = device + '/';
            const std::string label = readOnce(m_files, folder + file);
            const std::string sensor = std::string(folder).append(channel);
            if (label == "Total System Power")
                offer(LoadMeter::Controller, sensor);
            else if (label == "AC Input Power")
                m_found.adapterIn = openSensor(sensor);
            else if (label == "power total" && name.starts_with("corsair"))
                offer(LoadMeter::PowerSupplyUnit, sensor);
        }
    }

    [[nodiscard]] HwmonMeters take()
    {
        if (m_isAmbiguous) {
            m_found.loadMeter = LoadMeter::None;
            m_found.systemLoad = KeptFile();
        }
        return std::move(m_found);
    }

private:
    [[nodiscard]] KeptFile openSensor(const std::string& sensor)
    {
        KeptFile input(m_files, sensor + "_input");
        return input.isOpen() ? std::move(input) : KeptFile(m_files, sensor + "_average");
    }

    void offer(LoadMeter meter, const std::string& sensor)
    {
        if (meter > m_found.loadMeter)
            return;
        KeptFile file = openSensor(sensor);
        if (!file.isOpen())
            return;
        m_isAmbiguous = meter == m_found.loadMeter;
        m_found.loadMeter = meter;
        m_found.systemLoad = std::move(file);
    }

    SystemFiles& m_files;
    HwmonMeters m_found;
    bool m_isAmbiguous = false;
};

} // namespace

HwmonMeters findHwmonMeters(SystemFiles& files, const KeptFolder& hwmon)
{
    MeterSearch search(files);
    for (const std::string& name : hwmon.names())
        search.look(hwmon.path() + '/' + name);
    return search.take();
}

} // namespace amperly
