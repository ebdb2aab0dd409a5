#include "platform/linux/x11/x11_connection.h"

#include <QGuiApplication>

namespace amperly {

xcb_connection_t* x11Connection()
{
    const auto* const x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

} // namespace amperly
