// A preferences file may hold anything. Whatever it holds, it comes back byte by byte when
// nothing is changed, and a change touches its own key and nothing else that can be understood.

#include "platform/linux/files/ini_document.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>

namespace {

using amperly::IniDocument;
using amperly::PreferenceDictionary;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// The document's lines; a byte order mark belongs to the file and not to the first of them.
std::multiset<std::string> linesOf(const IniDocument& document)
{
    std::multiset<std::string> lines;
    const std::string bytes = document.bytes();
    const std::size_t markLength = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    for (std::size_t start = markLength; start < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
        lines.insert(bytes.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

/// What must hold for any document that is written and read again.
void requireStable(const IniDocument& document, const PreferenceDictionary& values)
{
    const IniDocument again(document.bytes());
    require(again.bytes() == document.bytes());
    require(again.values() == values);
    require(!again.isDamaged());
}

void requireReadable(const PreferenceDictionary& values)
{
    for (const auto& [key, value] : values) {
        require(std::isfinite(amperly::asReal(value)));
        const bool isNumber = amperly::asInteger(value) != 0;
        require(!amperly::asBoolean(value) || !isNumber || amperly::asInteger(value) == 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The file, with a key and a text to set cut from its end.
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t keyLength = std::min<std::size_t>(size, size > 0 ? data[0] % 8 : 0);
    const std::string key = input.substr(size - keyLength);
    const std::string text = input.substr(size - std::min<std::size_t>(size, 2 * keyLength));

    IniDocument document(input);
    require(document.bytes() == input);
    const PreferenceDictionary before = document.values();
    requireReadable(before);

    document.dropDamage();
    requireStable(document, before);
    const std::multiset<std::string> linesBefore = linesOf(document);

    document.set(key, text);
    PreferenceDictionary expected = before;
    expected.insert_or_assign(key, text);
    requireStable(document, expected);
    // One line more, or one line different.
    std::size_t lost = 0;
    const std::multiset<std::string> linesAfter = linesOf(document);
    for (const std::string& line : std::set<std::string>(linesBefore.begin(), linesBefore.end()))
        lost += linesBefore.count(line) - std::min(linesBefore.count(line), linesAfter.count(line));
    require(lost <= before.count(key));

    document.remove(key);
    expected.erase(key);
    requireStable(document, expected);
    return 0;
}
