// Tells a click that opens the popover from the rest of the click that closed it.
//
// A press on the status item while the popover is open lies outside of the popover and closes
// it. When the button comes up, the item reports that same click. To the user it was one click,
// and it only closes.
#pragma once

#include <optional>

namespace amperly {

class ClosingClick {
public:
    /// Nobody holds a button down for longer and still means a click. A press that is taken off the
    /// item ends without one, and must not swallow the next.
    static constexpr double kLongestClickSeconds = 2.0;

    /// A press on the item is closing the popover at `now`, in seconds since any fixed moment.
    void closedByPress(double now) { m_closed = now; }

    /// Whether a click at `now` belongs to what closed the popover. It can belong to it once.
    [[nodiscard]] bool isRestOfIt(double now);

private:
    std::optional<double> m_closed;
};

} // namespace amperly
