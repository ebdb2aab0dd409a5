// The kernel's own announcements of devices that come and go. Reading them takes one system
// call while nothing happens, and no daemon has to run.
#pragma once

namespace amperly {

class KernelEvents {
public:
    KernelEvents() = default;
    ~KernelEvents();
    KernelEvents(const KernelEvents&) = delete;
    KernelEvents& operator=(const KernelEvents&) = delete;

    /// Whether a power supply or a power meter came or went since the last call. The first call
    /// starts listening; where that is not allowed (some sandboxes) the answer is always false.
    [[nodiscard]] bool devicesChanged();

private:
    enum class State { NotStarted, Listening, Unavailable };

    void listen();

    State m_state = State::NotStarted;
    int m_socket = -1;
};

} // namespace amperly
