// Plain text for places that read markup.
#pragma once

#include <string>
#include <string_view>

namespace amperly {

/// `text` such that markup shows it as it is. Nothing else is done to it: tags, even line breaks,
/// make some hosts show an empty tool tip.
[[nodiscard]] std::string asMarkup(std::string_view text);

} // namespace amperly
