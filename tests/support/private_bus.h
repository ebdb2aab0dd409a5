// A session bus of the test's own.
#pragma once

#include "tests/support/server_process.h"

#include <gtest/gtest.h>

#include <string>

namespace amperly {

class PrivateBus {
public:
    PrivateBus() { EXPECT_NE(address(), "") << "dbus-daemon is needed"; }

    [[nodiscard]] const std::string& address() const { return m_daemon.announcement(); }

    /// Ends the bus under those who are on it, without a word to them.
    void end() { m_daemon.end(SIGKILL); }

private:
    ServerProcess m_daemon{{"dbus-daemon", "--session", "--nofork", "--nopidfile",
        "--print-address=" + std::to_string(ServerProcess::kAnnouncementDescriptor)}};
};

} // namespace amperly
