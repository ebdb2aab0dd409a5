#include "bench/bench_laptop.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <unistd.h>

namespace amperly {

namespace {

struct Attribute {
    std::string_view name;
    std::string_view value;
};

constexpr std::array kBattery{
    Attribute{"type", "Battery"},
    Attribute{"status", "Discharging"},
    Attribute{"present", "1"},
    Attribute{"technology", "Li-ion"},
    Attribute{"cycle_count", "12"},
    Attribute{"voltage_min_design", "11400000"},
    Attribute{"voltage_now", "11800000"},
    Attribute{"power_now", "12300000"},
    Attribute{"energy_full_design", "57000000"},
    Attribute{"energy_full", "50000000"},
    Attribute{"energy_now", "41000000"},
    Attribute{"capacity", "82"},
};

constexpr std::array kAdapter{Attribute{"type", "Mains"}, Attribute{"online", "0"}};

std::string ueventKey(std::string_view attribute)
{
    std::string key = "POWER_SUPPLY_";
    std::transform(attribute.begin(), attribute.end(), std::back_inserter(key),
        [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    return key;
}

void writeSupply(const std::filesystem::path& folder, const auto& attributes)
{
    std::filesystem::create_directories(folder);
    std::ofstream uevent(folder / "uevent");
    uevent << "POWER_SUPPLY_NAME=" << folder.filename().string() << '\n';
    for (const Attribute& attribute : attributes) {
        std::ofstream(folder / attribute.name) << attribute.value << '\n';
        uevent << ueventKey(attribute.name) << '=' << attribute.value << '\n';
    }
}

int opened(const std::filesystem::path& path, int flags)
{
    const int descriptor = ::open(path.c_str(), flags | O_CLOEXEC);
    if (descriptor < 0)
        throw std::runtime_error("can't open " + path.string());
    return descriptor;
}

/// Replaces the text of a file that somebody else keeps open, in one call.
void overwrite(int descriptor, std::string_view text)
{
    if (::pwrite(descriptor, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
        throw std::runtime_error("can't write to a power file");
}

} // namespace

BenchLaptop::BenchLaptop()
{
    std::string folder = (std::filesystem::temp_directory_path() / "amperly-bench-XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr)
        throw std::runtime_error("can't make a folder " + folder);
    m_folder = folder;

    const std::filesystem::path supplies = m_folder / "sys/class/power_supply";
    writeSupply(supplies / "AC", kAdapter);
    const std::filesystem::path battery = supplies / "BAT0";
    writeSupply(battery, kBattery);

    m_powerFile = opened(battery / "power_now", O_RDWR);
    m_ueventFile = opened(battery / "uevent", O_RDWR);
    constexpr std::array<std::string_view, kYardstickFiles> kNames{
        "status", "present", "power_now", "voltage_now", "energy_now", "capacity"};
    std::transform(kNames.begin(), kNames.end(), m_yardstickFiles.begin(),
        [&battery](std::string_view name) { return opened(battery / name, O_RDONLY); });
}

BenchLaptop::~BenchLaptop()
{
    ::close(m_powerFile);
    ::close(m_ueventFile);
    for (const int descriptor : m_yardstickFiles)
        ::close(descriptor);
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

void BenchLaptop::setPower(long microwatts)
{
    std::array<char, 1024> buffer{};
    const ssize_t size = ::pread(m_ueventFile, buffer.data(), buffer.size(), 0);
    if (size <= 0)
        throw std::runtime_error("can't read a power file");
    std::string_view uevent(buffer.data(), static_cast<std::size_t>(size));

    constexpr std::string_view kKey = "POWER_SUPPLY_POWER_NOW=";
    const std::string digits = std::to_string(microwatts);
    const std::size_t at = uevent.find(kKey) + kKey.size();
    if (uevent.find('\n', at) - at != digits.size())
        throw std::invalid_argument("all powers have the same number of digits here");
    std::copy(digits.begin(), digits.end(), buffer.begin() + static_cast<std::ptrdiff_t>(at));
    overwrite(m_ueventFile, uevent);
    overwrite(m_powerFile, digits);
}

void BenchLaptop::readSixAttributes()
{
    std::array<char, 64> buffer;
    for (const int descriptor : m_yardstickFiles) {
        if (::pread(descriptor, buffer.data(), buffer.size(), 0) <= 0)
            throw std::runtime_error("can't read a power file");
    }
}

} // namespace amperly
