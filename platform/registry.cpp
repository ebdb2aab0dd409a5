#include "platform/registry.h"

#include <algorithm>

namespace amperly {

void RegistryDictionary::add(std::string_view name, RegistryScalar value)
{
    if (find(name) != RegistryScalar())
        return;
    if (m_inlineCount < kInlineEntries && name.size() <= kInlineNameLength) {
        InlineEntry& entry = m_inline[m_inlineCount++];
        std::copy(name.begin(), name.end(), entry.characters.begin());
        entry.length = static_cast<std::uint8_t>(name.size());
        entry.value = value;
    } else {
        m_more.push_back(Entry{std::string(name), value});
    }
}

RegistryScalar RegistryDictionary::find(std::string_view name) const
{
    for (std::size_t index = 0; index < m_inlineCount; ++index) {
        const InlineEntry& entry = m_inline[index];
        if (std::string_view(entry.characters.data(), entry.length) == name)
            return entry.value;
    }
    for (const Entry& entry : m_more) {
        if (entry.name == name)
            return entry.value;
    }
    return {};
}

} // namespace amperly
