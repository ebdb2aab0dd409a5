#include "platform/linux/popover/popup_window.h"

#include "platform/linux/popover/compositing.h"

#include <QCursor>
#include <QMouseEvent>
#include <QTimer>
#include <QWindow>

#include <cmath>

namespace amperly {
namespace {

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
constexpr int kHoldTries = 40;
constexpr int kHoldPauseMilliseconds = 50;

} // namespace

PopupWindow::PopupWindow(std::unique_ptr<QWidget> content, CardEdge edge)
    : TransientWindow(std::move(content), possibleEdge(edge), Qt::Popup | Qt::NoDropShadowWindowHint)
    , m_triesLeft(kHoldTries)
{
    setAttribute(Qt::WA_NoMouseReplay); // the press that closes it is for nothing else
    if (!card().margins().isNull())
        setAttribute(Qt::WA_TranslucentBackground);
}

void PopupWindow::open(std::optional<ScreenPoint> anchor)
{
    const QPoint pointer = QCursor::pos();
    m_place = placeOfClick(pointer, anchor, screenAround(pointer));
    card().adjustSize();
    placeCard();
    show();
    card().content().setFocus();
    hold();
}

void PopupWindow::placeCard()
{
    const QMargins margins = card().margins();
    const QRect sheet = besidePlace(m_place, card().size().shrunkBy(margins), screenAround(m_place));
    setGeometry(sheet.marginsAdded(margins));
    if (margins.isNull())
        setMask(rounded(rect(), Card::kRadius));
}

void PopupWindow::hold()
{
    if (!isVisible() || windowHandle()->setMouseGrabEnabled(true) || --m_triesLeft <= 0)
        return;
    QTimer::singleShot(kHoldPauseMilliseconds, this, [this] { hold(); });
}

void PopupWindow::mousePressEvent(QMouseEvent* event)
{
    const QPoint place = event->position().toPoint();
    if (!card().sheet().contains(card().mapFrom(this, place)))
        dismiss(ClosedBy::OutsidePress);
    event->accept();
}

} // namespace amperly
