// A session bus of the test's own, which ends with it.
#pragma once

#include <array>
#include <csignal>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace amperly {

class SessionBus {
public:
    SessionBus()
    {
        std::array<int, 2> pipeEnds{};
        if (pipe(pipeEnds.data()) != 0)
            std::abort();
        m_process = fork();
        if (m_process == 0) {
            const std::string option = "--print-address=" + std::to_string(pipeEnds[1]);
            execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--nopidfile", option.c_str(),
                nullptr);
            _exit(127);
        }
        close(pipeEnds[1]);
        for (char character = 0; read(pipeEnds[0], &character, 1) == 1 && character != '\n';)
            m_address += character;
        close(pipeEnds[0]);
    }
    ~SessionBus()
    {
        kill(m_process, SIGTERM);
        waitpid(m_process, nullptr, 0);
    }
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    /// Empty where the bus could not be started.
    [[nodiscard]] const std::string& address() const { return m_address; }

private:
    pid_t m_process = -1;
    std::string m_address;
};

} // namespace amperly
