// Where a user's settings belong by the XDG base directory rules.
#pragma once

#include <string>

namespace amperly {

/// Absolute, not ending in a slash; not necessarily there. XDG_CONFIG_HOME where it is an absolute
/// path, else .config in the home folder.
[[nodiscard]] std::string configFolder();

} // namespace amperly
