#include "platform/linux/desktop/user_time.h"

#include <QGuiApplication>
#include <qpa/qplatformnativeinterface.h>

namespace amperly {
namespace {

using SetTime = void (*)(QScreen*, quint32);

/// A function that the toolkit offers by name; null where it does not.
SetTime function(QPlatformNativeInterface& native, const char* name)
{
    // By way of a type without parameters, which says that the one offered is not the real one.
    return reinterpret_cast<SetTime>(
        reinterpret_cast<void (*)()>(native.nativeResourceFunctionForScreen(name)));
}

} // namespace

void takeUserTime()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return;
    QScreen* const screen = QGuiApplication::primaryScreen();
    QPlatformNativeInterface* const native = QGuiApplication::platformNativeInterface();
    const SetTime setUserTime = function(*native, "setappusertime");
    const SetTime setTime = function(*native, "setapptime");
    if (screen == nullptr || setUserTime == nullptr || setTime == nullptr)
        return;
    // The server's own clock, by a round trip.
    const auto now = static_cast<quint32>(
        reinterpret_cast<quintptr>(native->nativeResourceForScreen("gettimestamp", screen)));
    setTime(screen, now);
    setUserTime(screen, now);
}

} // namespace amperly
