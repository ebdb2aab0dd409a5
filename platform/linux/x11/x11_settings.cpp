#include "platform/linux/x11/x11_settings.h"

#include "platform/linux/x11/x11_connection.h"

#include <array>
#include <utility>
#include <variant>

namespace amperly {

namespace {

// What a setting's value may be.
constexpr std::uint8_t kInteger = 0;
constexpr std::uint8_t kText = 1;
constexpr std::uint8_t kColor = 2;

/// Reads numbers of either byte order, and after the end of the data nothing but zeros.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes) : m_bytes(bytes) { }

    void setLowestFirst(bool lowestFirst) { m_lowestFirst = lowestFirst; }
    [[nodiscard]] bool isPastEnd() const { return m_pastEnd; }

    std::uint32_t number(std::size_t size)
    {
        std::uint32_t value = 0;
        const std::span<const std::uint8_t> bytes = take(size);
        for (std::size_t index = 0; index < bytes.size(); ++index)
            value = value << 8 | bytes[m_lowestFirst ? bytes.size() - 1 - index : index];
        return value;
    }

    std::string_view text(std::size_t size)
    {
        const std::span<const std::uint8_t> bytes = take(size);
        skip((4 - size % 4) % 4); // texts end at multiples of four
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }

    void skip(std::size_t size) { static_cast<void>(take(size)); }

private:
    std::span<const std::uint8_t> take(std::size_t size)
    {
        if (size > m_bytes.size() - m_position) {
            m_pastEnd = true;
            m_position = m_bytes.size();
            return {};
        }
        const std::span<const std::uint8_t> taken = m_bytes.subspan(m_position, size);
        m_position += size;
        return taken;
    }

    std::span<const std::uint8_t> m_bytes;
    std::size_t m_position = 0;
    bool m_lowestFirst = false;
    bool m_pastEnd = false;
};

using Value = std::variant<std::monostate, std::int32_t, std::string_view>;

/// The value called `name`, or none.
Value findSetting(std::span<const std::uint8_t> settings, std::string_view name)
{
    Reader reader(settings);
    reader.setLowestFirst(reader.number(1) == 0);
    reader.skip(3 + 4); // unused, serial
    const std::uint32_t count = reader.number(4);
    for (std::uint32_t index = 0; index < count && !reader.isPastEnd(); ++index) {
        const std::uint32_t kind = reader.number(1);
        reader.skip(1);
        const std::string_view found = reader.text(reader.number(2));
        reader.skip(4); // serial of its last change
        Value value;
        if (kind == kInteger)
            value = static_cast<std::int32_t>(reader.number(4));
        else if (kind == kText)
            value = reader.text(reader.number(4));
        else if (kind == kColor)
            reader.skip(8);
        else
            return {};
        if (found == name && !reader.isPastEnd())
            return value;
    }
    return {};
}

/// The settings of the toolkit's display, serialised; none without any.
X11Reply<xcb_get_property_reply_t> publishedSettings()
{
    xcb_connection_t* const connection = x11Connection();
    if (connection == nullptr)
        return nullptr;
    xcb_atom_t selection = XCB_ATOM_NONE;
    xcb_atom_t property = XCB_ATOM_NONE;
    std::array names{X11AtomName{&selection, "_XSETTINGS_S0"}, X11AtomName{&property, "_XSETTINGS_SETTINGS"}};
    internAtoms(connection, names);
    const xcb_window_t owner = selectionOwner(connection, selection);
    if (owner == XCB_WINDOW_NONE)
        return nullptr;
    constexpr std::uint32_t kMost = 1U << 14; // units of four bytes: many times what desktops publish
    X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, owner, property, property, 0, kMost), nullptr));
    return reply && reply->format == 8 ? std::move(reply) : nullptr;
}

std::span<const std::uint8_t> bytesOf(const xcb_get_property_reply_t& reply)
{
    return {static_cast<const std::uint8_t*>(xcb_get_property_value(&reply)),
        static_cast<std::size_t>(xcb_get_property_value_length(&reply))};
}

} // namespace

std::optional<std::int32_t> integerSetting(std::span<const std::uint8_t> settings, std::string_view name)
{
    const Value value = findSetting(settings, name);
    const auto* const integer = std::get_if<std::int32_t>(&value);
    return integer != nullptr ? std::optional(*integer) : std::nullopt;
}

std::optional<std::string> textSetting(std::span<const std::uint8_t> settings, std::string_view name)
{
    const Value value = findSetting(settings, name);
    const auto* const text = std::get_if<std::string_view>(&value);
    return text != nullptr ? std::optional<std::string>(*text) : std::nullopt;
}

std::optional<std::int32_t> x11IntegerSetting(std::string_view name)
{
    const auto settings = publishedSettings();
    return settings ? integerSetting(bytesOf(*settings), name) : std::nullopt;
}

std::optional<std::string> x11TextSetting(std::string_view name)
{
    const auto settings = publishedSettings();
    return settings ? textSetting(bytesOf(*settings), name) : std::nullopt;
}

} // namespace amperly
