// The window around the settings form: titled, resizable, hidden and not destroyed when closed.
#pragma once

#include <QWidget>
#include <optional>

namespace amperly {

class Desktop;
class LiveModel;
class LoginItem;

class SettingsWindow : public QWidget {
public:
    /// All of them must outlive the window.
    SettingsWindow(LiveModel& live, LoginItem& loginItem, Desktop& desktop);

    /// The height that the window opens with, in points. `visibleScreenHeight` is that of the main
    /// screen without panels; nothing without a screen.
    [[nodiscard]] static int initialHeight(std::optional<int> visibleScreenHeight);
};

} // namespace amperly
