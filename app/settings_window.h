// The window around the settings form: titled, resizable, hidden and not destroyed when closed.
#pragma once

#include <QWidget>
#include <optional>

namespace amperly {

class LiveModel;

class SettingsWindow : public QWidget {
public:
    /// `visibleScreenHeight` is that of the main screen without panels, in points; nothing
    /// without a screen. `live` must outlive the window.
    SettingsWindow(LiveModel& live, std::optional<int> visibleScreenHeight);

    /// The height that the window opens with.
    [[nodiscard]] static int initialHeight(std::optional<int> visibleScreenHeight);
};

} // namespace amperly
