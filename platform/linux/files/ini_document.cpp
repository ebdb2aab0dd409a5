#include "platform/linux/files/ini_document.h"

#include "platform/linux/files/ini_text.h"
#include "platform/linux/trimmed.h"

#include <algorithm>
#include <optional>

namespace amperly {

namespace {

constexpr std::string_view kOwnSection = "General";

bool isBlankOrComment(std::string_view text)
{
    return text.empty() || text.front() == '#' || text.front() == ';';
}

} // namespace

IniDocument::Line::Line(std::string line) : written(std::move(line))
{
    const std::string_view whole = written;
    const std::string_view text = trimmed(whole);
    const bool isText = isPlainText(whole.ends_with('\r') ? whole.substr(0, whole.size() - 1) : whole);
    // Only a file starts with a byte order mark; a line that does would be misread once it came first.
    if (!isText || whole.starts_with(kByteOrderMark)) {
        kind = Kind::Damaged;
    } else if (isBlankOrComment(text)) {
        kind = Kind::Other;
    } else if (text.front() == '[') {
        std::size_t end = text.find(']');
        while (end != text.npos && text.substr(end + 1).starts_with('['))
            end = text.find(']', end + 1);
        const bool isSection = end != text.npos && isBlankOrComment(trimmed(text.substr(end + 1)));
        kind = isSection ? Kind::Section : Kind::Damaged;
        if (isSection)
            name = trimmed(text.substr(1, end - 1));
    } else {
        // What follows an unfinished quoted key could finish it, so such a line is no entry.
        const std::optional<std::size_t> quotedKeyLength = quotedLength(text);
        const std::size_t equalsSign = text.find('=', quotedKeyLength.value_or(0));
        const std::string_view key = trimmed(text.substr(0, std::min(equalsSign, text.size())));
        const bool isKey = text.front() == '"' ? quotedKeyLength == key.size() : !key.empty();
        kind = isKey && equalsSign != text.npos ? Kind::Entry : Kind::Damaged;
        if (kind == Kind::Entry) {
            const std::string_view value = trimmed(text.substr(equalsSign + 1));
            name = decodeIniText(key);
            valueStart = static_cast<std::size_t>(
                (value.empty() ? text.data() + equalsSign + 1 : value.data()) - whole.data());
            valueLength = value.size();
        }
    }
}

std::string_view IniDocument::Line::value() const
{
    return std::string_view(written).substr(valueStart, valueLength);
}

IniDocument::IniDocument(std::string_view bytes)
{
    if (bytes.starts_with(kByteOrderMark)) {
        m_byteOrderMark = kByteOrderMark;
        bytes.remove_prefix(kByteOrderMark.size());
    }
    m_endsWithLineFeed = bytes.ends_with('\n');
    while (!bytes.empty()) {
        const std::size_t length = std::min(bytes.find('\n'), bytes.size());
        m_lines.emplace_back(std::string(bytes.substr(0, length)));
        bytes.remove_prefix(std::min(length + 1, bytes.size()));
    }
}

std::string IniDocument::bytes() const
{
    std::string bytes = m_byteOrderMark;
    for (const Line& line : m_lines)
        (bytes += line.written) += '\n';
    if (!m_lines.empty() && !m_endsWithLineFeed)
        bytes.pop_back();
    return bytes;
}

template <typename Visitor>
void IniDocument::forEachPreference(Visitor visit) const
{
    bool isOurs = true;
    for (std::size_t index = 0; index < m_lines.size(); ++index) {
        const Line& line = m_lines[index];
        if (line.kind == Line::Kind::Section)
            isOurs = line.name == kOwnSection;
        else if (line.kind == Line::Kind::Entry && isOurs)
            visit(index);
    }
}

PreferenceDictionary IniDocument::values() const
{
    PreferenceDictionary values;
    forEachPreference([&](std::size_t index) {
        const Line& line = m_lines[index];
        values.insert_or_assign(line.name, decodeIniText(line.value()));
    });
    return values;
}

std::optional<std::string_view> IniDocument::written(std::string_view section, std::string_view key) const
{
    std::optional<std::string_view> found;
    std::string_view current;
    for (const Line& line : m_lines) {
        if (line.kind == Line::Kind::Section)
            current = line.name;
        else if (line.kind == Line::Kind::Entry && current == section && line.name == key)
            found = line.value();
    }
    return found;
}

bool IniDocument::isDamaged() const
{
    return std::any_of(
        m_lines.begin(), m_lines.end(), [](const Line& line) { return line.kind == Line::Kind::Damaged; });
}

void IniDocument::dropDamage()
{
    if (std::erase_if(m_lines, [](const Line& line) { return line.kind == Line::Kind::Damaged; }) > 0)
        terminateLastLine();
}

void IniDocument::set(std::string_view key, std::string_view text)
{
    std::optional<std::size_t> place;
    forEachPreference([&](std::size_t index) {
        if (m_lines[index].name == key)
            place = index;
    });
    if (place) {
        Line& line = m_lines[*place];
        if (decodeIniText(line.value()) != text)
            line = Line(line.written.replace(line.valueStart, line.valueLength, encodeIniValue(text)));
        return;
    }
    const bool hasCarriageReturns = !m_lines.empty() && m_lines.front().written.ends_with('\r');
    std::string written = encodeIniKey(key) + '=' + encodeIniValue(text) + (hasCarriageReturns ? "\r" : "");
    const auto position = m_lines.begin() + static_cast<Lines::difference_type>(positionForNewPreference());
    m_lines.insert(position, Line(std::move(written)));
    terminateLastLine();
}

void IniDocument::remove(std::string_view key)
{
    std::vector<std::size_t> places;
    forEachPreference([&](std::size_t index) {
        if (m_lines[index].name == key)
            places.push_back(index);
    });
    for (auto place = places.rbegin(); place != places.rend(); ++place)
        m_lines.erase(m_lines.begin() + static_cast<Lines::difference_type>(*place));
    if (!places.empty())
        terminateLastLine();
}

/// Behind the last preference there is; else under our section; else before the first foreign
/// section and the comment that belongs to it.
std::size_t IniDocument::positionForNewPreference() const
{
    std::optional<std::size_t> last;
    forEachPreference([&](std::size_t index) { last = index; });
    const auto isSection = [](const Line& line) { return line.kind == Line::Kind::Section; };
    const auto isOwnSection = [&](const Line& line) { return isSection(line) && line.name == kOwnSection; };
    const auto isOther = [](const Line& line) { return line.kind == Line::Kind::Other; };
    const auto isBlank = [](const Line& line) { return trimmed(line.written).empty(); };

    auto place = std::find_if(m_lines.begin(), m_lines.end(), isOwnSection);
    if (last) {
        place = m_lines.begin() + static_cast<Lines::difference_type>(*last) + 1;
    } else if (place != m_lines.end()) {
        ++place;
    } else if (place = std::find_if(m_lines.begin(), m_lines.end(), isSection); place != m_lines.end()) {
        while (place != m_lines.begin() && isOther(*std::prev(place)) && !isBlank(*std::prev(place)))
            --place;
        while (place != m_lines.begin() && isBlank(*std::prev(place)))
            --place;
    }
    return static_cast<std::size_t>(place - m_lines.begin());
}

} // namespace amperly
