#include "platform/linux/xembed/hover_tip.h"

#include <QTextDocument>
#include <QToolTip>

namespace amperly {

HoverTip::HoverTip(std::chrono::milliseconds delay)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(delay);
    QObject::connect(&m_rest, &QTimer::timeout, &m_rest, [this] { showNow(); });
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

void HoverTip::enter(ScreenPoint place)
{
    m_place = place;
    m_rest.start();
}

void HoverTip::leave()
{
    m_rest.stop();
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
    QToolTip::showText({m_place.x, m_place.y}, Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text);
    m_shown = !text.isEmpty();
}

} // namespace amperly
