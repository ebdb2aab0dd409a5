#include "platform/linux/popover/toplevel_window.h"

#include "platform/linux/popover/close_button.h"

#include <QEvent>

namespace amperly {

ToplevelWindow::ToplevelWindow(std::unique_ptr<QWidget> content, CardEdge edge)
    : TransientWindow(std::move(content), edge, Qt::Window)
{
    setAttribute(Qt::WA_TranslucentBackground);
    if (edge != CardEdge::Shadowed)
        return;
    m_close = new CloseButton(this);
    connect(m_close, &CloseButton::clicked, this, [this] { dismiss(ClosedBy::Request); });
}

void ToplevelWindow::open(std::optional<ScreenPoint>)
{
    card().adjustSize();
    placeCard();
    show();
    activateWindow();
    card().content().setFocus();
}

void ToplevelWindow::placeCard()
{
    setFixedSize(card().size());
    if (m_close != nullptr)
        m_close->setGeometry(CloseButton::placeOn(card().sheet(), layoutDirection()));
}

void ToplevelWindow::changeEvent(QEvent* event)
{
    TransientWindow::changeEvent(event);
    if (event->type() != QEvent::ActivationChange)
        return;
    if (isActiveWindow())
        m_hadFocus = true;
    else if (m_hadFocus && isVisible())
        dismiss(ClosedBy::OutsidePress);
}

} // namespace amperly
