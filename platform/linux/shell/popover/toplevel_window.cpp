#include "platform/linux/shell/popover/toplevel_window.h"

#include <QEvent>

namespace amperly {

ToplevelWindow::ToplevelWindow(std::unique_ptr<QWidget> content, CardEdge edge)
    : TransientWindow(std::move(content), edge, Qt::Window)
{
    setAttribute(Qt::WA_TranslucentBackground);
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
