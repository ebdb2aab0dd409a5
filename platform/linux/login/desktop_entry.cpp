#include "platform/linux/login/desktop_entry.h"

#include "platform/linux/trimmed.h"

namespace amperly {

namespace {

/// A string value of the format, its escapes undone.
std::string unescaped(std::string_view value)
{
    std::string plain;
    for (std::size_t at = 0; at < value.size(); ++at) {
        if (value[at] != '\\' || at + 1 == value.size()) {
            plain += value[at];
            continue;
        }
        switch (const char escaped = value[++at]) {
        case 's':
            plain += ' ';
            break;
        case 't':
            plain += '\t';
            break;
        case 'n':
            plain += '\n';
            break;
        case 'r':
            plain += '\r';
            break;
        case '\\':
            plain += '\\';
            break;
        default:
            (plain += '\\') += escaped;
        }
    }
    return plain;
}

} // namespace

std::string execValue(std::string_view programPath)
{
    constexpr std::string_view kReserved = " \t\n\"'\\><~|&;$*?#()`";
    if (programPath.find_first_of(kReserved) == std::string_view::npos
        && programPath.find('%') == std::string_view::npos)
        return std::string(programPath);

    std::string quoted = "\"";
    for (const char character : programPath) {
        // Within quotes these four are escaped by a backslash, which as part of a string value is
        // itself written as two. A percent sign would begin a field code; two stand for one.
        if (character == '"' || character == '`' || character == '$')
            quoted += "\\\\";
        else if (character == '\\')
            quoted += "\\\\\\";
        else if (character == '%')
            quoted += '%';
        quoted += character;
    }
    return quoted + '"';
}

std::optional<std::string> execProgram(std::string_view value)
{
    const std::string command = unescaped(value);
    const bool isQuoted = command.starts_with('"');
    std::string program;
    for (std::size_t at = isQuoted ? 1 : 0; at < command.size(); ++at) {
        if (command[at] == (isQuoted ? '"' : ' '))
            break;
        const bool isEscape = (isQuoted && command[at] == '\\')
            || (command[at] == '%' && command.substr(at).starts_with("%%"));
        if (isEscape && at + 1 < command.size())
            ++at;
        program += command[at];
    }
    if (program.empty())
        return std::nullopt;
    return program;
}

std::optional<std::string_view> desktopEntryValue(std::string_view contents, std::string_view key)
{
    bool inGroup = false;
    while (!contents.empty()) {
        const std::size_t end = contents.find('\n');
        const std::string_view line = trimmed(contents.substr(0, end));
        contents = end == std::string_view::npos ? std::string_view() : contents.substr(end + 1);

        if (line.starts_with('[')) {
            inGroup = line == "[Desktop Entry]";
            continue;
        }
        const std::size_t equals = line.find('=');
        if (inGroup && !line.starts_with('#') && equals != std::string_view::npos
            && trimmed(line.substr(0, equals)) == key)
            return trimmed(line.substr(equals + 1));
    }
    return std::nullopt;
}

} // namespace amperly
