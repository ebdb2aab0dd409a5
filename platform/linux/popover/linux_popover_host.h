// The popover on Linux, in whichever kind of window the desktop takes.
#pragma once

#include "platform/linux/clock/timer_slack.h"
#include "platform/linux/popover/reopen_guard.h"
#include "platform/linux/popover/transient_window.h"
#include "platform/popover_host.h"

#include <QPointer>
#include <vector>

namespace amperly {

class LinuxPopoverHost : public PopoverHost {
public:
    /// `slack` must outlive the host.
    explicit LinuxPopoverHost(
        TimerSlack& slack, WindowKind kind = windowKindOfDesktop(), ReopenGuard::Inputs inputs = {});
    ~LinuxPopoverHost() override;

    [[nodiscard]] bool takesClick() override;
    void show(std::unique_ptr<QWidget> content, std::optional<ScreenPoint> anchor) override;

    /// The content may ask for this itself: it is destroyed once the event loop runs.
    void close() override;
    [[nodiscard]] bool isShown() const override { return m_window != nullptr; }
    void onDidClose(std::function<void()> handler) override { m_didClose = std::move(handler); }

private:
    void retire(ClosedBy by);

    TimerSlack& m_slack;
    WindowKind m_kind;
    ReopenGuard m_guard;
    std::function<void()> m_didClose;
    std::optional<TimerSlack::ExactHold> m_hold;
    std::unique_ptr<TransientWindow> m_window;
    std::vector<QPointer<TransientWindow>> m_leaving; ///< closed, about to be destroyed
    QObject m_context;
};

} // namespace amperly
