// What the session's environment says by the rules of freedesktop.org (XDG): where a user's
// settings belong, and which desktop this is.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace amperly {

/// Absolute, not ending in a slash; not necessarily there. XDG_CONFIG_HOME where it is an absolute
/// path, else .config in the home folder.
[[nodiscard]] std::string configFolder();

class CurrentDesktop {
public:
    CurrentDesktop() = default;

    /// Of the names between colons that XDG_CURRENT_DESKTOP has, the most particular one first.
    explicit CurrentDesktop(std::string_view list);

    /// As this session has it; without names where it does not say.
    [[nodiscard]] static CurrentDesktop ofSession();

    [[nodiscard]] bool is(std::string_view name) const;
    [[nodiscard]] const std::vector<std::string>& names() const { return m_names; }

private:
    std::vector<std::string> m_names;
};

} // namespace amperly
