// A copy of sysfs on disk, gone with the object.
#pragma once

#include "tests/platform/linux/power/fake_files.h"

#include <filesystem>
#include <fstream>
#include <string>

#include <stdlib.h>

namespace amperly {

class SysfsFolder {
public:
    SysfsFolder()
    {
        std::string path = (std::filesystem::temp_directory_path() / "amperly-sysfs-XXXXXX").string();
        m_root = ::mkdtemp(path.data());
    }
    ~SysfsFolder() { std::filesystem::remove_all(m_root); }
    SysfsFolder(const SysfsFolder&) = delete;
    SysfsFolder& operator=(const SysfsFolder&) = delete;

    std::string root() const { return m_root.string(); }
    std::filesystem::path supply(const std::string& name) const
    {
        return m_root / "class/power_supply" / name;
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
    void write(const std::string& path, const std::string& text)
    {
        std::filesystem::create_directories((m_root / path).parent_path());
        std::ofstream(m_root / path) << text;
    }
    /// Puts a new file in its place, as careful writers do.
    void replace(const std::string& path, const std::string& text)
    {
        write(path + ".new", text);
        std::filesystem::rename(m_root / (path + ".new"), m_root / path);
    }

private:
    std::filesystem::path m_root;
};

} // namespace amperly
