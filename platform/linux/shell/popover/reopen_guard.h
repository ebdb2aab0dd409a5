// Tells a click that opens the popover, or the menu, from the rest of the click that closed it.
//
// A press on the status item while one of them is open lies outside of it and closes it. The
// desktop's panel then reports the same click, a moment later, as one on the item. To the user
// that was one click, and it only closes.
#pragma once

#include <QPoint>

#include <chrono>
#include <functional>
#include <optional>

namespace amperly {

class ReopenGuard {
public:
    /// Since some starting point; only differences count.
    using Moment = std::chrono::milliseconds;

    /// Tells the time by which a guard goes.
    using Clock = std::function<Moment()>;

    [[nodiscard]] static Moment steadyClock();

    /// Panels report a click within this time, even those that wait for the button's release.
    static constexpr Moment kOneClick{400};

    /// A hand moves the pointer no farther within one click. Logical pixels.
    static constexpr int kOnePlace = 24;

    /// What was open has closed by a press outside of it, with the pointer at `pointer`.
    void closedByPress(Moment now, QPoint pointer);

    /// Whether a request to show, with the pointer at `pointer`, belongs to that press. It can
    /// belong to it only once.
    [[nodiscard]] bool belongsToPress(Moment now, QPoint pointer);

private:
    struct Press {
        Moment moment;
        QPoint pointer;
    };
    std::optional<Press> m_press;
};

} // namespace amperly
