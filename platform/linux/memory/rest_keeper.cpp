#include "platform/linux/memory/rest_keeper.h"

#include "platform/linux/memory/memory_return.h"
#include "platform/linux/memory/visible_windows.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace amperly {

RestKeeper::RestKeeper(std::function<void()> giveBack)
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(kSettlingMilliseconds);
    connect(&m_settling, &QTimer::timeout, this, [giveBack = std::move(giveBack)] {
        if (!anyWindowVisible())
            giveBack();
    });
    m_settling.start();
    qApp->installEventFilter(this);
}

RestKeeper::~RestKeeper() = default;

bool RestKeeper::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide && watched->isWindowType())
        m_settling.start();
    return false;
}

void RestKeeper::returnMemory()
{
    returnUnusedMemory();
}

} // namespace amperly
