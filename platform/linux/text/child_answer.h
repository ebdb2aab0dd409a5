// Work whose traces in memory should not stay: it runs in a copy of the process, which hands back
// a short text and ends.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace amperly {

/// Runs `work` in a child process and returns what it returns. Nothing when `work` gave nothing,
/// the child died, or there could be no child. The child is waited for; `work` must not use
/// what belongs to other threads of the process.
[[nodiscard]] std::optional<std::string> answerOfChild(
    const std::function<std::optional<std::string>()>& work);

} // namespace amperly
