#include "platform/simulated/desktop/recording_popover_host.h"

#include <QWidget>

namespace amperly {

RecordingPopoverHost::RecordingPopoverHost() = default;

RecordingPopoverHost::~RecordingPopoverHost()
{
    for (const QPointer<QWidget>& content : m_leaving)
        delete content;
}

void RecordingPopoverHost::show(std::unique_ptr<QWidget> content, std::optional<ScreenPoint> anchor)
{
    close();
    ++m_showings;
    m_anchor = anchor;
    m_content = std::move(content);
    m_content->show();
    m_content->activateWindow();
}

void RecordingPopoverHost::close()
{
    if (m_content == nullptr)
        return;
    // The content may be the one who asks, from within one of its buttons, so it is let go here
    // and destroyed as soon as the event loop runs.
    QWidget* const leaving = m_content.release();
    leaving->hide();
    leaving->deleteLater();
    std::erase_if(m_leaving, [](const QPointer<QWidget>& content) { return content.isNull(); });
    m_leaving.emplace_back(leaving);
    if (m_didClose)
        m_didClose();
}

void RecordingPopoverHost::onDidClose(std::function<void()> handler)
{
    m_didClose = std::move(handler);
}

} // namespace amperly
