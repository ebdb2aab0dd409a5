// A server of the test's own, such as a bus or a display, which ends with it.
#pragma once

#include <csignal>
#include <string>
#include <sys/types.h>
#include <vector>

namespace amperly {

class ServerProcess {
public:
    /// The descriptor on which the server is to write a line once it listens.
    static constexpr int kAnnouncementDescriptor = 10;

    /// Starts `command`, which is looked for in PATH, and waits for its line.
    explicit ServerProcess(std::vector<std::string> command);
    ~ServerProcess() { end(SIGTERM); }
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    /// The line without its end; empty where the server could not be started.
    [[nodiscard]] const std::string& announcement() const { return m_announcement; }

    /// Ends the server under those who are connected to it. SIGKILL: before it can tell them.
    void end(int signal);

private:
    pid_t m_process = 0;
    std::string m_announcement;
};

} // namespace amperly
