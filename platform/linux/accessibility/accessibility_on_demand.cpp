#include "platform/linux/accessibility/accessibility_on_demand.h"

#include "platform/linux/accessibility/accessible_application.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QEvent>

namespace amperly {

AccessibilityOnDemand::AccessibilityOnDemand()
{
    qApp->installEventFilter(this);
}

bool AccessibilityOnDemand::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->isWindowType()) {
        qApp->removeEventFilter(this);
        AccessibleApplication::install();
        QAccessible::setRootObject(qApp);
    }
    return false;
}

} // namespace amperly
