// What an X11 desktop publishes of its settings, made up by a test.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace amperly {

/// Settings as a desktop serialises them.
class SerialisedSettings {
public:
    SerialisedSettings(bool lowestFirst, std::uint32_t count) : m_lowestFirst(lowestFirst)
    {
        m_bytes.push_back(lowestFirst ? 0 : 1);
        m_bytes.resize(4);
        number(7, 4);
        number(count, 4);
    }

    SerialisedSettings& integer(const std::string& name, std::int32_t value)
    {
        head(0, name);
        number(static_cast<std::uint32_t>(value), 4);
        return *this;
    }
    SerialisedSettings& text(const std::string& name, const std::string& value)
    {
        head(1, name);
        number(static_cast<std::uint32_t>(value.size()), 4);
        padded(value);
        return *this;
    }
    SerialisedSettings& color(const std::string& name)
    {
        head(2, name);
        number(0x01020304, 4);
        number(0x05060708, 4);
        return *this;
    }
    SerialisedSettings& unheardOf(const std::string& name)
    {
        head(9, name);
        return *this;
    }

    [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return m_bytes; }

private:
    void head(std::uint8_t kind, const std::string& name)
    {
        number(kind, 1);
        number(0, 1);
        number(static_cast<std::uint32_t>(name.size()), 2);
        padded(name);
        number(3, 4);
    }
    void number(std::uint32_t value, int size)
    {
        for (int index = 0; index < size; ++index)
            m_bytes.push_back(
                static_cast<std::uint8_t>(value >> 8 * (m_lowestFirst ? index : size - 1 - index)));
    }
    void padded(const std::string& words)
    {
        m_bytes.insert(m_bytes.end(), words.begin(), words.end());
        m_bytes.resize((m_bytes.size() + 3) / 4 * 4);
    }

    bool m_lowestFirst;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace amperly
