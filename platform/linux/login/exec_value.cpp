#include "platform/linux/login/exec_value.h"

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

} // namespace amperly
