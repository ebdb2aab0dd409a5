// A timer that fires again and again on the event loop's thread, also while a menu is open.
#pragma once

#include <functional>
#include <memory>

namespace amperly {

/// A running timer; its end stops it.
class RepeatingTimer {
public:
    virtual ~RepeatingTimer() = default;

    [[nodiscard]] virtual double intervalSeconds() const = 0;

    /// By how much a tick may come late, so that the machine can wake once for several things.
    [[nodiscard]] virtual double toleranceSeconds() const = 0;
};

class TimerSource {
public:
    virtual ~TimerSource() = default;

    /// Starts a timer whose first tick comes one interval from now.
    [[nodiscard]] virtual std::unique_ptr<RepeatingTimer> start(
        double intervalSeconds, double toleranceSeconds, std::function<void()> action)
        = 0;
};

} // namespace amperly
