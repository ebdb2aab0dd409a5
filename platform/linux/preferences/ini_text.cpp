#include "platform/linux/preferences/ini_text.h"

#include "platform/linux/trimmed.h"

#include <charconv>
#include <cstdint>

namespace amperly {

namespace {

bool isControl(unsigned char byte)
{
    return byte < 0x20 || byte == 0x7F;
}

/// The length of the well-formed UTF-8 sequence at the start of `bytes`, 0 where there is
/// none. Overlong forms, surrogates and what lies beyond U+10FFFF are not well-formed.
std::size_t sequenceLength(std::string_view bytes)
{
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
    const unsigned char first = byteAt(0);
    if (first < 0x80)
        return 1;
    std::size_t length = 0;
    unsigned char lowest = 0x80; // of the second byte
    unsigned char highest = 0xBF;
    if (first >= 0xC2 && first <= 0xDF) {
        length = 2;
    } else if (first >= 0xE0 && first <= 0xEF) {
        length = 3;
        lowest = first == 0xE0 ? 0xA0 : 0x80;
        highest = first == 0xED ? 0x9F : 0xBF;
    } else if (first >= 0xF0 && first <= 0xF4) {
        length = 4;
        lowest = first == 0xF0 ? 0x90 : 0x80;
        highest = first == 0xF4 ? 0x8F : 0xBF;
    }
    if (length == 0 || bytes.size() < length || byteAt(1) < lowest || byteAt(1) > highest)
        return 0;
    for (std::size_t index = 2; index < length; ++index) {
        if ((byteAt(index) & 0xC0) != 0x80)
            return 0;
    }
    return length;
}

std::string hexEscape(unsigned char byte)
{
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    return {'\\', 'x', kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
}

std::string quoted(std::string_view text)
{
    std::string written = "\"";
    while (!text.empty()) {
        const char character = text.front();
        std::size_t length = 1;
        if (character == '"' || character == '\\')
            (written += '\\') += character;
        else if (character == '\n')
            written += "\\n";
        else if (character == '\r')
            written += "\\r";
        else if (character == '\t')
            written += "\\t";
        else if (length = sequenceLength(text);
                 length == 0 || isControl(static_cast<unsigned char>(character))) {
            length = 1;
            written += hexEscape(static_cast<unsigned char>(character));
        } else {
            written += text.substr(0, length);
        }
        text.remove_prefix(length);
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
    while (!bytes.empty()) {
        const std::size_t length = sequenceLength(bytes);
        if (length == 0 || (isControl(static_cast<unsigned char>(bytes.front())) && bytes.front() != '\t'))
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

} // namespace amperly
