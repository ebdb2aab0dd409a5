#include "settings/settings_view.h"

#include "render/status_renderer.h"

#include <QLabel>
#include <QMetaObject>
#include <QVBoxLayout>

namespace amperly {

SettingsView::SettingsView(LiveModel& live) : m_live(live), m_reading(new QLabel)
{
    m_reading->setAlignment(Qt::AlignCenter);
    m_reading->setWordWrap(true);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_reading);

    // The change is announced before it is made: look at it when the event loop comes round.
    m_subscription = m_live.objectWillChange([this] {
        QMetaObject::invokeMethod(
            this, [this] { refresh(); }, Qt::QueuedConnection);
    });
    refresh();
}

void SettingsView::refresh()
{
    // A hidden window costs nothing.
    if (isVisible() || m_reading->text().isEmpty())
        m_reading->setText(QString::fromStdString(StatusRenderer::accessibilityText(m_live.sample())));
}

} // namespace amperly
