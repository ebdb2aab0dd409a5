#include "settings/form_row.h"

#include "settings/form_label.h"
#include "settings/form_look.h"
#include "settings/mnemonic.h"
#include "settings/toggle_switch.h"

#include <QHBoxLayout>
#include <QMouseEvent>

namespace amperly {

namespace {

FormLabel* titleOf(const QString& title, QWidget* control)
{
    auto* const label = new FormLabel(title, TextStyle::Body);
    label->setBuddy(control);
    control->setAccessibleName(withoutMnemonic(title));
    return label;
}

} // namespace

FormRow::FormRow(const QString& title, QWidget* control) : FormRow(titleOf(title, control), control) { }

FormRow::FormRow(QWidget* leading, QWidget* trailing, int trailingRoom)
    : m_switch(dynamic_cast<ToggleSwitch*>(trailing))
{
    setMinimumHeight(kForm.rowHeight);
    auto* const layout = new QHBoxLayout(this);
    // Margins would not be mirrored in a mirrored form; what stands in a row is.
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addSpacing(kForm.inset);
    if (leading != nullptr)
        layout->addWidget(leading);
    layout->addStretch();
    if (trailing != nullptr) {
        layout->addSpacing(kForm.inset);
        layout->addWidget(trailing);
    }
    layout->addSpacing(kForm.inset - trailingRoom);
}

void FormRow::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_switch != nullptr && event->button() == Qt::LeftButton
        && rect().contains(event->position().toPoint()))
        m_switch->click();
    else
        QWidget::mouseReleaseEvent(event);
}

} // namespace amperly
