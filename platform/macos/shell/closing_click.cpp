#include "platform/macos/shell/closing_click.h"

#include <utility>

namespace amperly {

bool ClosingClick::isRestOfIt(double now)
{
    const std::optional<double> closed = std::exchange(m_closed, std::nullopt);
    return closed && now - *closed < kLongestClickSeconds;
}

} // namespace amperly
