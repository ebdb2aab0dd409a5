#include "platform/linux/memory/visible_windows.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace amperly {

bool anyWindowVisible()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(
        windows.begin(), windows.end(), [](const QWindow* window) { return window->isVisible(); });
}

} // namespace amperly
