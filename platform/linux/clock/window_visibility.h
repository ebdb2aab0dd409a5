// Whether anybody can see a window, where the windowing system lets programs find out.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace amperly {

class WindowVisibility {
public:
    virtual ~WindowVisibility() = default;

    [[nodiscard]] virtual bool isCovered() const = 0;

    /// Asks anew at each call: nobody announces it.
    [[nodiscard]] virtual bool isScreenOff() const = 0;
};

/// On X11, where the server tells when `window` is wholly covered, and whether the screen has been
/// switched off; null on other windowing systems. `changed` is called when the window has been covered
/// or uncovered.
[[nodiscard]] std::unique_ptr<WindowVisibility> x11WindowVisibility(
    std::uint32_t window, std::function<void()> changed);

} // namespace amperly
