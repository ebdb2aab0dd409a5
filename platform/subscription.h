// How several parties follow one thing: each keeps what it was given when it subscribed, and hears
// of nothing any more once that is gone.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace amperly {

/// Keeps a handler subscribed for as long as it lives. It may outlive what it is subscribed to.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<const void> handler) : m_handler(std::move(handler)) { }
    Subscription(Subscription&&) noexcept = default;
    Subscription& operator=(Subscription&&) noexcept = default;
    ~Subscription() = default;

private:
    std::shared_ptr<const void> m_handler;
};

/// Those who follow one thing, in the order in which they subscribed.
template <typename... Arguments>
class Subscribers {
public:
    using Handler = std::function<void(Arguments...)>;

    [[nodiscard]] Subscription add(Handler handler)
    {
        auto kept = std::make_shared<const Handler>(std::move(handler));
        m_handlers.push_back(kept);
        return Subscription(std::move(kept));
    }

    /// Calls every handler. A handler may subscribe others, who hear of the next announcement, end
    /// any subscription, its own included, and make an announcement itself.
    void announce(Arguments... arguments)
    {
        const std::size_t count = m_handlers.size();
        ++m_announcing;
        for (std::size_t index = 0; index < count; ++index) {
            if (const auto handler = m_handlers[index].lock())
                (*handler)(arguments...);
        }
        // Those who left stay listed until the outermost announcement is through, which still
        // counts them.
        if (--m_announcing == 0)
            std::erase_if(m_handlers, [](const auto& handler) { return handler.expired(); });
    }

private:
    std::vector<std::weak_ptr<const Handler>> m_handlers;
    int m_announcing = 0; ///< announcements under way, one within the other
};

} // namespace amperly
