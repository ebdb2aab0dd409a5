// The one observable holder of the latest reading. Everything on screen that follows the
// readings subscribes here.
#pragma once

#include "platform/power_sample.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace amperly {

class LiveModel {
public:
    using Handler = std::function<void()>;

    /// Keeps a handler subscribed for as long as it lives; it may outlive the model.
    class Subscription {
    public:
        Subscription() = default;
        ~Subscription() { cancel(); }
        Subscription(Subscription&& other) noexcept = default;
        Subscription& operator=(Subscription&& other) noexcept;
        Subscription(const Subscription&) = delete;
        Subscription& operator=(const Subscription&) = delete;

    private:
        friend class LiveModel;
        struct Entry {
            Handler handler;
        };
        explicit Subscription(std::shared_ptr<Entry> entry) : m_entry(std::move(entry)) { }
        void cancel();

        std::shared_ptr<Entry> m_entry;
    };

    LiveModel() = default;
    LiveModel(const LiveModel&) = delete;
    LiveModel& operator=(const LiveModel&) = delete;

    /// The latest reading; nothing before the first one and after one that failed.
    [[nodiscard]] const std::optional<PowerSample>& sample() const { return m_sample; }

    /// Announces the coming change to every subscriber, then stores the value. The same value
    /// again is announced as well, so observers hear of every tick.
    void setSample(const std::optional<PowerSample>& sample);

    /// Calls `handler` just before each change; it reads the new value afterwards, when it
    /// draws. A handler may subscribe and cancel others, and itself, and set a sample.
    [[nodiscard]] Subscription objectWillChange(Handler handler);

private:
    std::optional<PowerSample> m_sample;
    std::vector<std::weak_ptr<Subscription::Entry>> m_subscribers;
    int m_announcing = 0; ///< announcements under way, one within the other
};

} // namespace amperly
