#include "platform/linux/accessibility/accessible_application.h"

#include <QGuiApplication>
#include <QWindow>

#include <vector>

namespace amperly {

namespace {

std::vector<QAccessibleInterface*> windows()
{
    std::vector<QAccessibleInterface*> found;
    for (const QWindow* const window : QGuiApplication::topLevelWindows()) {
        if (window->type() == Qt::Popup && !window->isVisible())
            continue;
        if (QAccessibleInterface* const root = window->accessibleRoot())
            found.push_back(root);
    }
    return found;
}

QAccessibleInterface* applicationOf(const QString&, QObject* object)
{
    return object == qApp ? new AccessibleApplication : nullptr;
}

} // namespace

void AccessibleApplication::install()
{
    QAccessible::installFactory(applicationOf);
}

int AccessibleApplication::childCount() const
{
    return static_cast<int>(windows().size());
}

QAccessibleInterface* AccessibleApplication::child(int index) const
{
    const std::vector<QAccessibleInterface*> all = windows();
    const auto place = static_cast<std::size_t>(index);
    return index >= 0 && place < all.size() ? all[place] : nullptr;
}

int AccessibleApplication::indexOfChild(const QAccessibleInterface* child) const
{
    const std::vector<QAccessibleInterface*> all = windows();
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (child != nullptr && all[index]->object() == child->object())
            return static_cast<int>(index);
    }
    return -1;
}

} // namespace amperly
