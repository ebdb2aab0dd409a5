#include "app/settings_window.h"

#include "platform/desktop.h"
#include "settings/settings_view.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

namespace amperly {

namespace {

// Points.
constexpr int kWidth = 420;
constexpr int kTallest = 880;
constexpr int kHeightWithoutScreen = 740;
constexpr int kRoomLeftOnScreen = 60;

} // namespace

int SettingsWindow::initialHeight(std::optional<int> visibleScreenHeight)
{
    if (!visibleScreenHeight)
        return kHeightWithoutScreen;
    return std::min(*visibleScreenHeight - kRoomLeftOnScreen, kTallest);
}

SettingsWindow::SettingsWindow(LiveModel& live, LoginItem& loginItem, Desktop& desktop)
{
    setWindowTitle(QStringLiteral("Amperly Settings"));
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint
        | Qt::WindowCloseButtonHint);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new SettingsView(live, loginItem, desktop));

    resize(kWidth, initialHeight(desktop.visibleScreenHeight()));
    if (const QScreen* const screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
}

} // namespace amperly
