// A copy of sysfs on disk, gone with the object.
#pragma once

#include "tests/platform/linux/power/fake_files.h"
#include "tests/support/temporary_folder.h"

#include <filesystem>
#include <string>

namespace amperly {

class SysfsFolder {
public:
    std::string root() const { return m_folder.path().string(); }
    std::filesystem::path supply(const std::string& name) const
    {
        return m_folder.path() / "class/power_supply" / name;
    }

    void addSupply(const std::string& name, const AttributeList& attributes)
    {
        addDevice("class/power_supply/" + name, attributes);
        write("class/power_supply/" + name + "/uevent", ueventText(name, attributes));
    }
    void addDevice(const std::string& path, const AttributeList& attributes)
    {
        write(path + "/power/control", "auto\n");
        for (const auto& [attribute, value] : attributes)
            write(path + '/' + attribute, value + '\n');
    }
    /// Writes into the file that is there.
    void write(const std::string& path, const std::string& text) { m_folder.write(path, text); }
    /// Puts a new file in its place, as careful writers do.
    void replace(const std::string& path, const std::string& text) { replaceFile(m_folder / path, text); }

private:
    TemporaryFolder m_folder;
};

} // namespace amperly
