// Tells a click that opens the popover, or the menu, from the later part of the click that closed it.
//
// A press on the status item while one of them is open lies outside of it and closes it. The
// desktop's panel then reports the same click, a moment later, as one on the item. To the user
// that was one click, and it only closes.
//
// Some panels report a click at the button's release, which may be a while off. Where the pointer
// can be asked for its buttons, the click lasts until that.
#pragma once

#include <QPoint>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

namespace amperly {

class ReopenGuard {
public:
    /// Since some starting point; only differences count.
    using Moment = std::chrono::milliseconds;

    [[nodiscard]] static Moment steadyClock();

    /// Whether a button of the pointer is down, wherever it is. False where nobody tells: a
    /// compositor on Wayland does so only to the window that was pressed, and that is gone.
    [[nodiscard]] static bool isPointerPressed();

    /// What a guard goes by.
    struct Inputs {
        std::function<Moment()> clock = steadyClock;
        std::function<bool()> isPressed = isPointerPressed;
    };

    explicit ReopenGuard(Inputs inputs);

    /// Panels report a click within this time of the press, or of the release once that is seen.
    static constexpr Moment kClickTime{400};

    /// A button that is down is asked for this often.
    static constexpr Moment kPollInterval{50};

    /// A hand moves the pointer no farther within one click. Logical pixels.
    static constexpr int kClickDistance = 24;

    /// What was open has closed by a press outside of it, with the pointer at `pointer`.
    void closedByPress(QPoint pointer);

    /// Whether the button was down when it was last asked for.
    [[nodiscard]] bool isHeld() const { return m_poll.isActive(); }

    /// Whether a request to show, with the pointer at `pointer`, belongs to that press. It can
    /// belong to it only once.
    [[nodiscard]] bool belongsToPress(QPoint pointer);

private:
    struct Press {
        Moment moment;
        QPoint pointer;
    };

    void poll();

    Inputs m_inputs;
    std::optional<Press> m_press;
    QTimer m_poll;
};

} // namespace amperly
