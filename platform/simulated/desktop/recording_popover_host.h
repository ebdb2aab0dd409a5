// A popover host without a desktop around it: it shows its content as a plain window, keeps
// account, and is dismissed by the caller.
#pragma once

#include "platform/popover_host.h"

#include <QPointer>
#include <vector>

namespace amperly {

class RecordingPopoverHost : public PopoverHost {
public:
    RecordingPopoverHost();
    ~RecordingPopoverHost() override;

    [[nodiscard]] bool takesClick() override { return m_takesClicks; }
    void show(std::unique_ptr<QWidget> content, std::optional<ScreenPoint> anchor) override;
    void close() override;
    [[nodiscard]] bool isShown() const override { return m_content != nullptr; }
    void onDidClose(std::function<void()> handler) override;

    /// Clicks are the rest of what closed the popover, or are on their own again.
    void setTakesClicks(bool takes) { m_takesClicks = takes; }

    /// The user clicks elsewhere or presses Esc.
    void dismiss() { close(); }

    [[nodiscard]] QWidget* content() const { return m_content.get(); } ///< null while none is shown
    [[nodiscard]] std::optional<ScreenPoint> anchor() const { return m_anchor; } ///< of the last one shown
    [[nodiscard]] int showings() const { return m_showings; }

private:
    std::unique_ptr<QWidget> m_content;
    std::vector<QPointer<QWidget>> m_leaving;
    std::optional<ScreenPoint> m_anchor;
    std::function<void()> m_didClose;
    int m_showings = 0;
    bool m_takesClicks = true;
};

} // namespace amperly
