#include "platform/linux/files/ini_text.h"

#include "platform/linux/trimmed.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace amperly {

namespace {

// ICU's macro narrows within itself.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"

/// The length of the text at the start of `bytes`: UTF-8, with no control character but the tabulator.
std::size_t plainLength(std::string_view bytes)
{
    std::size_t length = 0;
    for (std::size_t next = 0; next < bytes.size(); length = next) {
        UChar32 character = 0; // negative where there is no well-formed sequence
        U8_NEXT(bytes.data(), next, bytes.size(), character);
        if ((character < 0x20 && character != '\t') || character == 0x7F)
            break;
    }
    return length;
}

#pragma GCC diagnostic pop

std::string escaped(char character)
{
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    switch (character) {
    case '"':
    case '\\':
        return {'\\', character};
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default: {
        const auto byte = static_cast<unsigned char>(character);
        return {'\\', 'x', kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
    }
    }
}

std::string quoted(std::string_view text)
{
    std::string written = "\"";
    while (!text.empty()) {
        const std::size_t asItIs = plainLength(text.substr(0, text.find_first_of("\"\\\t")));
        written += text.substr(0, asItIs);
        text.remove_prefix(asItIs);
        if (text.empty())
            break;
        written += escaped(text.front());
        text.remove_prefix(1);
    }
    return written += '"';
}

/// Takes one escape, whose backslash is already gone, from the start of `rest`.
char takeEscape(std::string_view& rest)
{
    const char letter = rest.front();
    rest.remove_prefix(1);
    std::uint8_t byte = 0;
    switch (letter) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 'x': {
        const std::string_view digits = rest.substr(0, 2);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (error != std::errc() || digits.size() != 2 || end != digits.data() + 2)
            return letter;
        rest.remove_prefix(2);
        return static_cast<char>(byte);
    }
    default:
        return letter;
    }
}

bool standsForItself(std::string_view text)
{
    return isPlainText(text) && trimmed(text).size() == text.size()
        && text.find_first_of("\"\\\t") == text.npos;
}

} // namespace

std::string encodeIniValue(std::string_view text)
{
    return standsForItself(text) ? std::string(text) : quoted(text);
}

std::string encodeIniKey(std::string_view key)
{
    const bool looksLikeSomethingElse = key.empty() || std::string_view("#;[").find(key.front()) != key.npos
        || key.find('=') != key.npos || key.starts_with(kByteOrderMark);
    return looksLikeSomethingElse ? quoted(key) : encodeIniValue(key);
}

std::string decodeIniText(std::string_view written)
{
    if (quotedLength(written) != written.size())
        return std::string(written);
    std::string text;
    std::string_view rest = written.substr(1, written.size() - 2);
    while (!rest.empty()) {
        const char character = rest.front();
        rest.remove_prefix(1);
        text += character == '\\' ? takeEscape(rest) : character;
    }
    return text;
}

std::optional<std::size_t> quotedLength(std::string_view written)
{
    if (!written.starts_with('"'))
        return std::nullopt;
    for (std::size_t index = 1; index < written.size(); ++index) {
        if (written[index] == '\\')
            ++index;
        else if (written[index] == '"')
            return index + 1;
    }
    return std::nullopt;
}

bool isPlainText(std::string_view bytes)
{
    return plainLength(bytes) == bytes.size();
}

} // namespace amperly
