// Patience with what failed: each failure in a row doubles the number of turns to sit out.
// Some drivers write a line to the kernel's log for every failed read.
#pragma once

#include <algorithm>
#include <cstdint>

namespace amperly {

class Backoff {
public:
    /// To be asked once a turn: whether this turn may try.
    [[nodiscard]] bool isDue()
    {
        if (m_wait == 0)
            return true;
        --m_wait;
        return false;
    }

    void failed()
    {
        m_wait = m_next;
        m_next = std::min<std::uint16_t>(static_cast<std::uint16_t>(m_next * 2), kLongestWait);
    }

    void succeeded() { *this = Backoff(); }

private:
    static constexpr std::uint16_t kLongestWait = 256; ///< turns: some nine minutes at two seconds each

    std::uint16_t m_wait = 0;
    std::uint16_t m_next = 1;
};

} // namespace amperly
