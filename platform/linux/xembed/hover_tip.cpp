#include "platform/linux/xembed/hover_tip.h"

#include <QTextDocument>
#include <QToolTip>

namespace amperly {

HoverTip::HoverTip(std::chrono::milliseconds delay)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(delay);
    QObject::connect(&m_delay, &QTimer::timeout, &m_delay, [this] { showNow(); });
}

void HoverTip::setText(std::optional<std::string_view> text)
{
    const std::string_view next = text.value_or(std::string_view());
    if (m_text == next)
        return;
    m_text = next;
    if (m_shown)
        showNow();
}

void HoverTip::enter(ScreenPoint point)
{
    m_point = point;
    m_delay.start();
}

void HoverTip::leave()
{
    m_delay.stop();
    if (m_shown)
        QToolTip::hideText();
    m_shown = false;
}

void HoverTip::showNow()
{
    if (m_shown && !QToolTip::isVisible()) {
        // It has been read for long enough and gone by itself.
        m_shown = false;
        return;
    }
    const QString text = QString::fromStdString(m_text);
    QToolTip::showText({m_point.x, m_point.y}, Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text);
    m_shown = !text.isEmpty();
}

} // namespace amperly
