#include "tests/platform/linux/power/fake_files.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <set>

namespace amperly {

std::string ueventText(const std::string& name, const AttributeList& attributes)
{
    std::string text = "DEVTYPE=power_supply\nPOWER_SUPPLY_NAME=" + name + '\n';
    for (const auto& [attribute, value] : attributes) {
        text += "POWER_SUPPLY_";
        std::transform(attribute.begin(), attribute.end(), std::back_inserter(text),
            [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
        text += '=' + value + '\n';
    }
    return text;
}

void FakeFiles::writeUevent(const std::string& name)
{
    setUevent(name, ueventText(name, m_supplies[name]));
}

void FakeFiles::addSupply(const std::string& name, const AttributeList& attributes)
{
    ++m_generation;
    m_supplies[name] = attributes;
    m_content[supplyPath(name) + "/uevent"] = Content{.generation = m_generation};
    m_content[supplyPath(name) + "/power/control"] = Content{.text = "auto\n", .generation = m_generation};
    for (const auto& [attribute, value] : attributes)
        m_content[supplyPath(name) + '/' + attribute]
            = Content{.text = value + '\n', .generation = m_generation};
    writeUevent(name);
}

void FakeFiles::setSupply(const std::string& name, const std::string& attribute, const std::string& value)
{
    AttributeList& attributes = m_supplies[name];
    const auto found = std::find_if(
        attributes.begin(), attributes.end(), [&](const auto& entry) { return entry.first == attribute; });
    if (found == attributes.end())
        attributes.emplace_back(attribute, value);
    else
        found->second = value;
    m_content[supplyPath(name) + '/' + attribute].text = value + '\n';
    writeUevent(name);
}

void FakeFiles::dropAttribute(const std::string& name, const std::string& attribute)
{
    std::erase_if(m_supplies[name], [&](const auto& entry) { return entry.first == attribute; });
    m_content.erase(supplyPath(name) + '/' + attribute);
    writeUevent(name);
}

void FakeFiles::addDevice(
    const std::string& deviceClass, const std::string& name, const AttributeList& attributes)
{
    ++m_generation;
    const std::string device = full("class/" + deviceClass + '/' + name);
    m_content[device + "/power/control"] = Content{.text = "auto\n", .generation = m_generation};
    for (const auto& [attribute, value] : attributes)
        m_content[device + '/' + attribute] = Content{.text = value + '\n', .generation = m_generation};
}

void FakeFiles::removeDevice(const std::string& path)
{
    const std::string folder = full(path) + '/';
    std::erase_if(m_content, [&](const auto& entry) { return entry.first.starts_with(folder); });
}

int FakeFiles::readsOf(const std::string& path) const
{
    const auto found = m_readsOf.find(full(path));
    return found == m_readsOf.end() ? 0 : found->second;
}

int FakeFiles::opensOf(const std::string& path) const
{
    const auto found = m_opensOf.find(full(path));
    return found == m_opensOf.end() ? 0 : found->second;
}

void FakeFiles::resetCounts()
{
    m_reads = m_opens = m_lists = 0;
    m_readsOf.clear();
    m_opensOf.clear();
}

int FakeFiles::open(const char* path, Kind kind)
{
    ++m_opens;
    ++m_opensOf[path];
    int generation = 0;
    if (kind == Kind::Directory) {
        const auto below = m_content.lower_bound(std::string(path) + '/');
        if (below == m_content.end() || !below->first.starts_with(std::string(path) + '/'))
            return -ENOENT;
    } else {
        const auto found = m_content.find(path);
        if (found == m_content.end())
            return -ENOENT;
        if (found->second.openError != 0)
            return -found->second.openError;
        generation = found->second.generation;
    }
    m_handles[m_nextHandle] = Handle{path, generation};
    return m_nextHandle++;
}

std::ptrdiff_t FakeFiles::read(int handle, std::span<char> into)
{
    const Handle& opened = m_handles.at(handle);
    ++m_reads;
    ++m_readsOf[opened.path];
    const auto found = m_content.find(opened.path);
    if (found == m_content.end() || found->second.generation != opened.generation)
        return -ENODEV;
    if (found->second.readError != 0)
        return -found->second.readError;
    const std::string& text = found->second.text;
    const std::size_t size = std::min(text.size(), into.size());
    std::memcpy(into.data(), text.data(), size);
    return static_cast<std::ptrdiff_t>(size);
}

bool FakeFiles::list(int directory, std::string& names)
{
    ++m_lists;
    names.clear();
    const std::string folder = m_handles.at(directory).path + '/';
    std::set<std::string> entries;
    for (auto found = m_content.lower_bound(folder);
         found != m_content.end() && found->first.starts_with(folder); ++found) {
        const std::string rest = found->first.substr(folder.size());
        entries.insert(rest.substr(0, rest.find('/')));
    }
    for (const std::string& entry : entries)
        names.append(entry).push_back('\0');
    return true;
}

} // namespace amperly
