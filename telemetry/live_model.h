// The one observable holder of the latest reading. Everything on screen that follows the
// readings subscribes here.
#pragma once

#include "platform/power_sample.h"
#include "platform/subscription.h"

#include <functional>
#include <optional>
#include <utility>

namespace amperly {

class LiveModel {
public:
    LiveModel() = default;
    LiveModel(const LiveModel&) = delete;
    LiveModel& operator=(const LiveModel&) = delete;

    /// The latest reading; nothing before the first one and after one that failed.
    [[nodiscard]] const std::optional<PowerSample>& sample() const { return m_sample; }

    /// Announces the coming change to every subscriber, then stores the value. The same value
    /// again is announced as well, so observers hear of every tick.
    void setSample(const std::optional<PowerSample>& sample)
    {
        m_subscribers.announce();
        m_sample = sample;
    }

    /// Calls `handler` just before each change; it reads the new value afterwards, when it
    /// draws. A handler may set a sample itself.
    [[nodiscard]] Subscription objectWillChange(std::function<void()> handler)
    {
        return m_subscribers.add(std::move(handler));
    }

private:
    std::optional<PowerSample> m_sample;
    Subscribers<> m_subscribers;
};

} // namespace amperly
