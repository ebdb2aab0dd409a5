#include "settings/form_accessibility.h"

#include "settings/form_section.h"
#include "settings/segmented_control.h"
#include "settings/status_preview.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace amperly {

namespace {

QAccessibleInterface* describe(const QString&, QObject* object)
{
    auto* const widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr)
        return nullptr;
    if (dynamic_cast<FormSection*>(widget) != nullptr || dynamic_cast<SegmentedControl*>(widget) != nullptr)
        return new QAccessibleWidget(widget, QAccessible::Grouping);
    if (dynamic_cast<StatusPreview*>(widget) != nullptr)
        return new QAccessibleWidget(widget, QAccessible::Graphic);
    return nullptr;
}

} // namespace

void describeFormToScreenReaders()
{
    static const bool installed = [] {
        QAccessible::installFactory(describe);
        return true;
    }();
    static_cast<void>(installed);
}

} // namespace amperly
