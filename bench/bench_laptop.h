// A made-up laptop on battery: the kernel's power files in a temporary folder, kept open the way
// the program keeps them, and changed from outside of it.
#pragma once

#include <array>
#include <filesystem>
#include <string>

namespace amperly {

class BenchLaptop {
public:
    /// Makes the files in a new folder below the one for temporary files; they go with the object.
    BenchLaptop();
    ~BenchLaptop();
    BenchLaptop(const BenchLaptop&) = delete;
    BenchLaptop& operator=(const BenchLaptop&) = delete;

    /// Takes the place of /sys.
    [[nodiscard]] std::string root() const { return (m_folder / "sys").string(); }

    /// A file that does not exist yet.
    [[nodiscard]] std::string preferencesFile() const { return (m_folder / "amperly.ini").string(); }

    /// What the battery gives from now on.
    void setPower(long microwatts);

    /// The yardstick: six of the battery's attributes, read from descriptors that stay open.
    void readSixAttributes();

private:
    static constexpr std::size_t kYardstickFiles = 6;

    std::filesystem::path m_folder;
    int m_powerFile = -1;
    int m_ueventFile = -1;
    std::array<int, kYardstickFiles> m_yardstickFiles{};
};

} // namespace amperly
