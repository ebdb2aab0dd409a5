// A session bus of the test's own, and the waiting that goes with a bus: the event loop runs until
// something holds, or until long after it should.
#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <array>
#include <csignal>
#include <gtest/gtest.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace amperly::test {

/// Runs the event loop until `holds()` does; false if it never came to that.
template <typename Condition>
[[nodiscard]] bool runUntil(Condition holds)
{
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(std::chrono::seconds(20));
    while (!holds()) {
        if (!deadline.isActive())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

class PrivateBus {
public:
    PrivateBus()
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], 3);
        for (const int end : ends) {
            if (end != 3)
                posix_spawn_file_actions_addclose(&actions, end);
        }
        std::array<std::string, 5> words{
            "dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=3"};
        std::array<char*, 6> arguments{};
        for (std::size_t place = 0; place < words.size(); ++place)
            arguments[place] = words[place].data();
        EXPECT_EQ(posix_spawnp(&m_process, "dbus-daemon", &actions, nullptr, arguments.data(), environ), 0);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        for (char character = 0; read(ends[0], &character, 1) == 1 && character != '\n';)
            m_address += character;
        close(ends[0]);
        EXPECT_NE(m_address, "");
    }

    ~PrivateBus() { end(); }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    [[nodiscard]] const std::string& address() const { return m_address; }

    /// Ends the bus under those who are on it.
    void end()
    {
        if (m_process <= 0)
            return;
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    pid_t m_process = 0;
    std::string m_address;
};

} // namespace amperly::test
