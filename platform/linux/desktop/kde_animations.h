// How fast things move on the KDE desktop.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace amperly {

/// The user's factor on the length of animations, of which 0 means none, in the contents of
/// kdeglobals; nothing when it does not say.
[[nodiscard]] std::optional<double> animationFactor(std::string_view globals);

/// The same of the file, which need not be there.
[[nodiscard]] std::optional<double> animationFactorIn(const std::string& path);

} // namespace amperly
