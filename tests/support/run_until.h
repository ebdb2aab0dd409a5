// Waiting in the event loop, for what other programs and the clock bring about.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

namespace amperly {

/// Runs the event loop until `holds()` does; false if it did not come to that until long after it
/// should have.
template <typename Condition>
[[nodiscard]] bool runUntil(Condition holds)
{
    using namespace std::chrono_literals;
    QTimer glance; // some of it happens without an event in this program
    glance.start(20ms);
    const QDeadlineTimer deadline(20s);
    while (!holds()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace amperly
