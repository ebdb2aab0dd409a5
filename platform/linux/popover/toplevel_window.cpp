// The transient window of Wayland compositors that let a program neither place a window nor see
// a click outside of it: an ordinary window without a frame, which closes when it loses the focus.
// It lies where the compositor puts it, which may be far from the item, so it shows how to close it.

#include "platform/linux/popover/close_button.h"
#include "platform/linux/popover/transient_window.h"

#include <QEvent>

namespace amperly {
namespace {

class ToplevelWindow : public TransientWindow {
public:
    ToplevelWindow(std::unique_ptr<QWidget> content, CardEdge edge);

    /// The compositor decides where.
    void open(std::optional<ScreenPoint> anchor) override;

protected:
    void placeCard() override;
    void changeEvent(QEvent* event) override;

private:
    CloseButton* m_close = nullptr; ///< none on a menu, which every entry closes
    bool m_hadFocus = false;
};

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
        m_close->setGeometry(CloseButton::positionOn(card().sheet(), layoutDirection()));
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

} // namespace

std::unique_ptr<TransientWindow> makeToplevelWindow(std::unique_ptr<QWidget> content, CardEdge edge)
{
    return std::make_unique<ToplevelWindow>(std::move(content), edge);
}

} // namespace amperly
