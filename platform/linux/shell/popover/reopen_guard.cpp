#include "platform/linux/shell/popover/reopen_guard.h"

#include <utility>

namespace amperly {

ReopenGuard::Moment ReopenGuard::steadyClock()
{
    return std::chrono::duration_cast<Moment>(std::chrono::steady_clock::now().time_since_epoch());
}

void ReopenGuard::closedByPress(Moment now, QPoint pointer)
{
    m_press = Press{now, pointer};
}

bool ReopenGuard::belongsToPress(Moment now, QPoint pointer)
{
    const std::optional<Press> press = std::exchange(m_press, std::nullopt);
    return press && now - press->moment < kOneClick
        && (pointer - press->pointer).manhattanLength() <= kOnePlace;
}

} // namespace amperly
