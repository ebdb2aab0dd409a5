// Whether the program starts when the user logs in.
#pragma once

#include <optional>
#include <string>

namespace amperly {

enum class LoginItemStatus { NotRegistered, Enabled, RequiresApproval, NotFound };

class LoginItem {
public:
    /// What went wrong, in words for the user; nothing when all went well.
    using Failure = std::optional<std::string>;

    virtual ~LoginItem() = default;

    [[nodiscard]] virtual LoginItemStatus status() const = 0;
    [[nodiscard]] virtual Failure registerItem() = 0;

    /// What a first launch does without being asked: the same, except that it leaves alone what the
    /// user has decided about this program before.
    [[nodiscard]] virtual Failure registerUnasked() { return registerItem(); }

    [[nodiscard]] virtual Failure unregisterItem() = 0;

    /// Opens the place where the desktop itself lists what starts at login.
    virtual void openSystemSettings() = 0;
};

} // namespace amperly
