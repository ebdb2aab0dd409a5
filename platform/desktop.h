// The rest of what the program asks of the desktop and of its own installation.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace amperly {

class Desktop {
public:
    virtual ~Desktop() = default;

    /// Opens an address in the user's browser.
    virtual void openAddress(std::string_view address) = 0;

    /// Writes one line to the system log.
    virtual void log(std::string_view line) = 0;

    /// Called when the user starts the program again while it runs.
    virtual void onReopen(std::function<void()> handler) = 0;

    /// Makes the program the one that has the user's attention, so that a window it shows next
    /// comes to the front.
    virtual void activate() = 0;

    /// Ends the event loop, and with it the program.
    virtual void quit() = 0;

    /// Height in points of the main screen without panels and docks; nothing without a screen.
    [[nodiscard]] virtual std::optional<int> visibleScreenHeight() const = 0;

    /// Whether the running program stands in the system's applications folder, where installed
    /// programs are, as opposed to a build tree or a download.
    [[nodiscard]] virtual bool isInstalled() const = 0;

    /// The version that the installation states of itself; nothing where it states none.
    [[nodiscard]] virtual std::optional<std::string> shortVersion() const = 0;
};

} // namespace amperly
