// The transient window of X11: a popup that holds pointer and keyboard while it is open, so that
// a press anywhere else is known and closes it.

#include "platform/linux/popover/transient_window.h"

#include "platform/linux/x11/x11_connection.h"

#include <QCursor>
#include <QMouseEvent>
#include <QTimer>
#include <QWindow>

#include <cmath>

namespace amperly {
namespace {

/// Whether windows can be translucent: on X11, whether a compositing manager runs at this moment.
bool isComposited()
{
    xcb_connection_t* const connection = x11Connection();
    if (connection == nullptr)
        return true;
    return selectionOwner(connection, internAtom(connection, "_NET_WM_CM_S0")) != XCB_WINDOW_NONE;
}

CardEdge possibleEdge(CardEdge edge)
{
    return edge == CardEdge::Shadowed && !isComposited() ? CardEdge::Plain : edge;
}

/// `outer` without its corners, alike on all four.
QRegion rounded(const QRect& outer, int radius)
{
    QRegion region(outer.adjusted(0, radius, 0, -radius));
    for (int row = 0; row < radius; ++row) {
        const double rise = radius - row - 0.5; // from the arc's centre to the row's middle
        const int inset = radius - static_cast<int>(std::lround(std::sqrt(radius * radius - rise * rise)));
        const QRect top(outer.left() + inset, outer.top() + row, outer.width() - 2 * inset, 1);
        region += top;
        region += top.translated(0, outer.height() - 1 - 2 * row);
    }
    return region;
}

// A panel that reports a click at the press holds the pointer until the release, and for so long
// nobody else can.
constexpr int kGrabTries = 40;
constexpr int kGrabPauseMilliseconds = 50;

class PopupWindow : public TransientWindow {
public:
    /// A card that would be shadowed is plain where nothing can be translucent.
    PopupWindow(std::unique_ptr<QWidget> content, CardEdge edge);

    void open(std::optional<ScreenPoint> anchor) override;

protected:
    void placeCard() override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void grabPointer();

    QPoint m_clicked;
    int m_triesLeft = kGrabTries;
};

PopupWindow::PopupWindow(std::unique_ptr<QWidget> content, CardEdge edge)
    : TransientWindow(std::move(content), possibleEdge(edge), Qt::Popup | Qt::NoDropShadowWindowHint)
{
    setAttribute(Qt::WA_NoMouseReplay); // the press that closes it is for nothing else
    if (!card().margins().isNull())
        setAttribute(Qt::WA_TranslucentBackground);
}

void PopupWindow::open(std::optional<ScreenPoint> anchor)
{
    const QPoint pointer = QCursor::pos();
    m_clicked = clickedPoint(pointer, anchor, screenAround(pointer));
    card().adjustSize();
    placeCard();
    show();
    card().content().setFocus();
    grabPointer();
}

void PopupWindow::placeCard()
{
    const QMargins margins = card().margins();
    const QRect sheet = besidePoint(m_clicked, card().size().shrunkBy(margins), screenAround(m_clicked));
    setGeometry(sheet.marginsAdded(margins));
    if (margins.isNull())
        setMask(rounded(rect(), Card::kRadius));
}

void PopupWindow::grabPointer()
{
    if (!isVisible() || windowHandle()->setMouseGrabEnabled(true) || --m_triesLeft <= 0)
        return;
    QTimer::singleShot(kGrabPauseMilliseconds, this, [this] { grabPointer(); });
}

void PopupWindow::mousePressEvent(QMouseEvent* event)
{
    if (!isOnSheet(event->position().toPoint()))
        dismiss(ClosedBy::OutsidePress);
    event->accept();
}

} // namespace

std::unique_ptr<TransientWindow> makePopupWindow(std::unique_ptr<QWidget> content, CardEdge edge)
{
    return std::make_unique<PopupWindow>(std::move(content), edge);
}

} // namespace amperly
