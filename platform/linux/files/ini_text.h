// How a text of ours stands in an INI file. Most texts stand there as they are. One that
// would not come back, for its blanks at an end, line breaks, quotes or bytes that are no
// UTF-8, stands in double quotes with backslash escapes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace amperly {

/// What some editors begin a UTF-8 file with.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// `text` as it is written behind a key's equals sign.
[[nodiscard]] std::string encodeIniValue(std::string_view text);

/// `key` as it is written before the equals sign.
[[nodiscard]] std::string encodeIniKey(std::string_view key);

/// The text that `written`, free of blanks at its ends, stands for. What is no complete quoted
/// text stands for itself, as somebody may have typed it.
[[nodiscard]] std::string decodeIniText(std::string_view written);

/// The length of the quoted text at the start of `written`, both quotes included; nothing
/// where none starts, or none ends.
[[nodiscard]] std::optional<std::size_t> quotedLength(std::string_view written);

/// Whether `bytes` are UTF-8 without control characters other than the tabulator.
[[nodiscard]] bool isPlainText(std::string_view bytes);

} // namespace amperly
