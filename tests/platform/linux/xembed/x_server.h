// An X server without a screen, for one test program.
#pragma once

#include <memory>
#include <string>
#include <sys/types.h>

namespace amperly::test {

class XServer {
public:
    /// Starts one on a display of its own choice; null where there is none to start.
    [[nodiscard]] static std::unique_ptr<XServer> start();

    ~XServer();

    [[nodiscard]] const std::string& display() const { return m_display; } ///< ":7"

private:
    XServer(pid_t process, std::string display);

    pid_t m_process;
    std::string m_display;
};

} // namespace amperly::test
