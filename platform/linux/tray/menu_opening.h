// Knows whether the exported menu is open, from what hosts tell, and announces each opening once.
//
// Hosts differ in what they tell. All ask whether the menu is about to be shown, some of them
// twice; those built on libdbusmenu never say that it has opened or closed; one that ends says
// nothing at all.
//
// Where several items export the menu, it is open at one of them.
#pragma once

#include "platform/menu.h"

#include <QObject>
#include <QTimer>
#include <chrono>

namespace amperly {

class MenuOpening {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// A question so soon after another one is about the same opening.
    static constexpr std::chrono::milliseconds kSameOpening{1000};

    /// A menu that was asked for, but of which nothing was heard since, counts as closed then. Hosts
    /// that never say when it closes have it on the screen for as long as the user looks at it, so
    /// that it is better taken for open for too long: that costs a few messages at a tick, and the
    /// other way round its figures would stand still before the user's eyes.
    static constexpr std::chrono::minutes kUnconfirmed{10};

    /// `menu` must outlive this object.
    explicit MenuOpening(Menu& menu, std::chrono::milliseconds unconfirmed = kUnconfirmed);

    /// A host is about to show the menu that `exporter` exports. A menu that is still open by then was closed
    /// without notice: this is the next opening.
    void aboutToShow(const void* exporter, TimePoint now);

    void opened(const void* exporter); ///< a host says that it shows the menu
    void closed(); ///< a host says that it does not any more, or is gone itself

    /// The user has chosen `entry`: that closes the menu, and the entry's action runs from the
    /// event loop.
    void choose(const MenuEntry& entry);

    [[nodiscard]] bool isOpen() const { return m_state != State::Closed; }

    /// Whether the menu is open, but is another exporter's.
    [[nodiscard]] bool isOpenElsewhere(const void* exporter) const
    {
        return isOpen() && m_exporter != exporter;
    }

    /// Whether the menu will be taken for closed if nothing more is heard.
    [[nodiscard]] bool isUnconfirmed() const { return m_expiry.isActive(); }

private:
    enum class State { Closed, Announced, Confirmed };

    Menu& m_menu;
    State m_state = State::Closed;
    TimePoint m_lastQuestion;
    const void* m_exporter = nullptr;
    QTimer m_expiry;
    QObject m_context;
};

} // namespace amperly
