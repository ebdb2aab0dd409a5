// A sysfs in memory, whose files fail on request and whose reads are counted.
#pragma once

#include "platform/linux/power/system_files.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace amperly {

/// Attributes of a device in the order in which its uevent tells them.
using AttributeList = std::vector<std::pair<std::string, std::string>>;

class FakeFiles final : public SystemFiles {
public:
    static constexpr const char* kRoot = "/sys";

    /// Makes a supply, or makes it anew, with a uevent that tells every attribute.
    void addSupply(const std::string& name, const AttributeList& attributes);
    /// Sets one attribute of a supply, in its file and in its uevent.
    void setSupply(const std::string& name, const std::string& attribute, const std::string& value);
    /// Takes one attribute of a supply away, file and all.
    void dropAttribute(const std::string& name, const std::string& attribute);
    /// What the kernel does when one attribute is in error: the uevent reads as nothing.
    void emptyUevent(const std::string& name) { m_content[supplyPath(name) + "/uevent"].text.clear(); }
    /// Replaces the text of a uevent and leaves the files alone.
    void setUevent(const std::string& name, const std::string& text)
    {
        m_content[supplyPath(name) + "/uevent"].text = text;
    }
    void failSupply(const std::string& name, const std::string& attribute, int error)
    {
        failReading(supplyPath(name) + '/' + attribute, error);
    }
    void removeSupply(const std::string& name) { removeDevice(supplyPath(name)); }

    /// Makes any other device: "hwmon", "hwmon3", …
    void addDevice(const std::string& deviceClass, const std::string& name, const AttributeList& attributes);

    /// Path below kRoot, like "class/hwmon/hwmon3/name".
    void write(const std::string& path, const std::string& text) { m_content[full(path)].text = text; }
    void failReading(const std::string& path, int error) { m_content[full(path)].readError = error; }
    void failOpening(const std::string& path, int error) { m_content[full(path)].openError = error; }
    void removeDevice(const std::string& path);

    /// The kernel announces a change the next time it is asked.
    void announceChange() { m_isChangeAnnounced = true; }

    int reads() const { return m_reads; }
    int readsOf(const std::string& path) const;
    int opens() const { return m_opens; }
    int opensOf(const std::string& path) const;
    int lists() const { return m_lists; }
    int openHandles() const { return static_cast<int>(m_handles.size()); }
    void resetCounts();

    int open(const char* path, Kind kind) override;
    std::ptrdiff_t read(int handle, std::span<char> into) override;
    bool list(int directory, std::string& names) override;
    void close(int handle) override { m_handles.erase(handle); }
    bool devicesChanged() override { return std::exchange(m_isChangeAnnounced, false); }

private:
    struct Content {
        std::string text{};
        int readError = 0;
        int openError = 0;
        int generation = 0;
    };
    struct Handle {
        std::string path;
        int generation = 0;
    };

    static std::string full(const std::string& path)
    {
        return path.starts_with(kRoot) ? path : std::string(kRoot) + '/' + path;
    }
    static std::string supplyPath(const std::string& name) { return full("class/power_supply/" + name); }
    void writeUevent(const std::string& name);

    std::map<std::string, Content> m_content;
    std::map<std::string, AttributeList> m_supplies;
    std::map<int, Handle> m_handles;
    int m_nextHandle = 0;
    int m_generation = 0;
    bool m_isChangeAnnounced = false;
    int m_reads = 0;
    int m_opens = 0;
    int m_lists = 0;
    std::map<std::string, int> m_readsOf;
    std::map<std::string, int> m_opensOf;
};

/// The text that the kernel gives for a supply with these attributes.
std::string ueventText(const std::string& name, const AttributeList& attributes);

} // namespace amperly
