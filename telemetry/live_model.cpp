#include "telemetry/live_model.h"

#include <utility>

namespace amperly {

LiveModel::Subscription& LiveModel::Subscription::operator=(Subscription&& other) noexcept
{
    if (this != &other) {
        cancel();
        m_entry = std::move(other.m_entry);
    }
    return *this;
}

void LiveModel::Subscription::cancel()
{
    // The model may be calling this very handler: only the ownership goes now.
    m_entry.reset();
}

void LiveModel::setSample(const std::optional<PowerSample>& sample)
{
    // Those who subscribe while the change is announced hear of the next one.
    const std::size_t count = m_subscribers.size();
    ++m_announcing;
    for (std::size_t index = 0; index < count; ++index) {
        if (const auto entry = m_subscribers[index].lock())
            entry->handler();
    }
    // A handler may set a sample itself. Those who left stay listed until the outermost
    // announcement is through, which still counts them.
    if (--m_announcing == 0)
        std::erase_if(m_subscribers, [](const auto& subscriber) { return subscriber.expired(); });
    m_sample = sample;
}

LiveModel::Subscription LiveModel::objectWillChange(Handler handler)
{
    auto entry = std::make_shared<Subscription::Entry>(Subscription::Entry{std::move(handler)});
    m_subscribers.push_back(entry);
    return Subscription(std::move(entry));
}

} // namespace amperly
