// The tool tip of a window that the toolkit does not know: shown when the pointer has stayed on
// it for a while, kept up to date as long as it is seen.
#pragma once

#include "platform/status_item.h"

#include <QString>
#include <QTimer>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace amperly {

class HoverTip {
public:
    explicit HoverTip(std::chrono::milliseconds delay);

    /// UTF-8, plain; absent or empty: no tool tip. Costs nothing while none is seen.
    void setText(std::optional<std::string_view> text);

    void enter(ScreenPoint point); ///< the pointer came, at `point` in logical coordinates
    void leave(); ///< the pointer went, or has better things to do

private:
    void showNow();

    std::string m_text;
    ScreenPoint m_point;
    bool m_shown = false;
    QTimer m_delay;
};

} // namespace amperly
