#include "platform/linux/xembed/native_point.h"

#include <QGuiApplication>
#include <QScreen>
#include <cmath>
#include <vector>

namespace amperly {

ScreenPoint logicalPoint(ScreenPoint native, std::span<const ScaledScreen> screens)
{
    for (const ScaledScreen& screen : screens) {
        const double x = (native.x - screen.x) / screen.scale;
        const double y = (native.y - screen.y) / screen.scale;
        if (x >= 0 && y >= 0 && x < screen.width && y < screen.height)
            return {screen.x + static_cast<int>(std::floor(x)), screen.y + static_cast<int>(std::floor(y))};
    }
    return native;
}

ScreenPoint logicalPoint(ScreenPoint native)
{
    std::vector<ScaledScreen> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect area = screen->geometry();
        screens.push_back({area.x(), area.y(), area.width(), area.height(), screen->devicePixelRatio()});
    }
    return logicalPoint(native, screens);
}

} // namespace amperly
