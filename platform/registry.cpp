#include "platform/registry.h"

namespace amperly {

void RegistryDictionary::add(std::string_view name, RegistryScalar value)
{
    if (m_inlineCount < kInlineEntries)
        m_inline[m_inlineCount++] = Entry{std::string(name), value};
    else
        m_more.push_back(Entry{std::string(name), value});
}

RegistryScalar RegistryDictionary::find(std::string_view name) const
{
    for (std::size_t index = 0; index < m_inlineCount; ++index) {
        if (m_inline[index].name == name)
            return m_inline[index].value;
    }
    for (const Entry& entry : m_more) {
        if (entry.name == name)
            return entry.value;
    }
    return {};
}

} // namespace amperly
