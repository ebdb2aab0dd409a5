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
    /// A button that is pressed comes up again within this time, unless somebody holds it down.
    static constexpr double kOneClickSeconds = 0.25;

    /// The popover is closing by itself at `now`, in seconds since any fixed moment.
    void closedByItself(double now) { m_closed = now; }

    /// Whether a click at `now` belongs to what closed the popover. It can belong to it once.
    [[nodiscard]] bool isRestOfIt(double now);

private:
    std::optional<double> m_closed;
};

} // namespace amperly
