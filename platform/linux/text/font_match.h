// One question to fontconfig.
#pragma once

#include "platform/ui_font.h"

#include <optional>
#include <string>
#include <string_view>

namespace amperly {

/// The face that fits `family` and `weight` best among those that have all of `characters`, or
/// as many of them as any has. Nothing where no fonts are installed. Takes some milliseconds and
/// leaves memory behind.
[[nodiscard]] std::optional<FontFace> matchFont(
    const std::string& family, FontWeight weight, std::u32string_view characters);

} // namespace amperly
