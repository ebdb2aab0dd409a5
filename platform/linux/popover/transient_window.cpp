#include "platform/linux/popover/transient_window.h"

#include "platform/linux/popover/layer_surface.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>

#include <utility>

namespace amperly {

TransientWindow::TransientWindow(std::unique_ptr<QWidget> content, CardEdge edge, Qt::WindowFlags flags)
    : QWidget(nullptr, flags | Qt::FramelessWindowHint), m_card(new Card(std::move(content), edge, this))
{
    m_card->installEventFilter(this);
}

TransientWindow::~TransientWindow()
{
    m_closed = nullptr;
    delete m_card; // before the toolkit tells anybody of the window's end
}

void TransientWindow::dismiss(ClosedBy by)
{
    m_closedBy = by;
    close();
}

bool TransientWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_card && event->type() == QEvent::Resize && isVisible())
        placeCard();
    return QWidget::eventFilter(watched, event);
}

void TransientWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel))
        dismiss(ClosedBy::Request);
    else
        QWidget::keyPressEvent(event);
}

void TransientWindow::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous() && m_closed)
        std::exchange(m_closed, nullptr)(m_closedBy);
}

WindowKind windowKindOfDesktop()
{
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        return WindowKind::Popup;
    return LayerSurface::isAvailable() ? WindowKind::Layer : WindowKind::Toplevel;
}

void allowLayerWindows()
{
    qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
}

std::unique_ptr<TransientWindow> makeTransientWindow(
    WindowKind kind, std::unique_ptr<QWidget> content, CardEdge edge)
{
    switch (kind) {
    case WindowKind::Layer:
        return makeLayerWindow(std::move(content), edge);
    case WindowKind::Toplevel:
        return makeToplevelWindow(std::move(content), edge);
    case WindowKind::Popup:
        break;
    }
    return makePopupWindow(std::move(content), edge);
}

ScreenArea screenAround(QPoint point)
{
    const QScreen* screen = QGuiApplication::screenAt(point);
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return {};
    return {screen->geometry(), screen->availableGeometry()};
}

} // namespace amperly
