// An X server of the test's own without a window manager, and the toolkit's application on it.
#pragma once

#include "tests/support/server_process.h"

#include <QApplication>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace amperly {

class PrivateDisplay {
public:
    PrivateDisplay()
        : m_server(std::vector<std::string>{"Xvfb", "-displayfd",
            std::to_string(ServerProcess::kAnnouncementDescriptor), "-screen", "0", "400x300x24", "-nolisten",
            "tcp"})
    {
        if (m_server.announcement().empty())
            return;
        qputenv("DISPLAY", name().c_str());
        qputenv("QT_QPA_PLATFORM", "xcb");
        // Nor on the bus of whoever runs the tests: without an address the toolkit's accessibility would look
        // for one.
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
        static int argumentCount = 1;
        static char program[] = "test";
        static char* arguments[] = {program, nullptr};
        m_application = std::make_unique<QApplication>(argumentCount, arguments);
    }

    /// False where there is no such server on this machine.
    [[nodiscard]] bool isThere() const { return m_application != nullptr; }

    /// As DISPLAY has it: the server announces its number.
    [[nodiscard]] std::string name() const { return ':' + m_server.announcement(); }

private:
    ServerProcess m_server;
    std::unique_ptr<QApplication> m_application; ///< leaves before the server
};

/// A display that all tests of a suite share; they are skipped where there is none.
class PrivateDisplayTest : public testing::Test {
public:
    static void SetUpTestSuite() { s_display = std::make_unique<PrivateDisplay>(); }
    static void TearDownTestSuite() { s_display.reset(); }

protected:
    void SetUp() override
    {
        if (!s_display->isThere())
            GTEST_SKIP() << "There is no Xvfb here to show anything on.";
    }

    static inline std::unique_ptr<PrivateDisplay> s_display;
};

} // namespace amperly
