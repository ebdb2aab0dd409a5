#include "platform/linux/popover/layer_window.h"

#include <QEnterEvent>
#include <QMouseEvent>
#include <QWindow>

namespace amperly {
namespace {

/// A pointer that is on the output is announced within a frame or two of the sheet's first.
constexpr int kPatienceMilliseconds = 150;

} // namespace

LayerWindow::LayerWindow(std::unique_ptr<QWidget> content, CardEdge edge)
    : TransientWindow(std::move(content), edge, Qt::Window | Qt::BypassWindowManagerHint)
{
    setAttribute(Qt::WA_TranslucentBackground);
    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatienceMilliseconds);
}

LayerWindow::~LayerWindow() = default;

void LayerWindow::open(std::optional<ScreenPoint> anchor)
{
    card().hide();
    create();
    m_surface = LayerSurface::cover(*windowHandle());
    if (!m_surface) {
        show();
        QTimer::singleShot(0, this, [this] { dismiss(ClosedBy::Request); });
        return;
    }
    m_surface->onResized([this](QSize size) {
        resize(size);
        placeCard();
    });
    m_surface->onClosed([this] { dismiss(ClosedBy::Request); });
    resize(m_surface->size());
    connect(&m_patience, &QTimer::timeout, this,
        [this, anchor] { settleAt(anchor ? QPoint(anchor->x, anchor->y) : usualStatusArea(rect())); });
    show();
}

void LayerWindow::setVisible(bool visible)
{
    // The role goes before the surface that has it.
    if (!visible)
        m_surface.reset();
    TransientWindow::setVisible(visible);
}

void LayerWindow::settleAt(QPoint place)
{
    m_patience.stop();
    if (m_place || !m_surface)
        return;
    m_place = place;
    card().adjustSize();
    placeCard();
    card().show();
    card().content().setFocus();
}

void LayerWindow::placeCard()
{
    if (!m_place || !m_surface)
        return;
    const QMargins margins = card().margins();
    const ScreenArea area = areaBesidePanel(m_surface->size(), m_surface->usableSize(), *m_place);
    card().move(besidePlace(*m_place, card().size().shrunkBy(margins), area).marginsAdded(margins).topLeft());
}

void LayerWindow::paintEvent(QPaintEvent* event)
{
    TransientWindow::paintEvent(event);
    if (!m_place && !m_patience.isActive())
        m_patience.start();
}

void LayerWindow::enterEvent(QEnterEvent* event)
{
    TransientWindow::enterEvent(event);
    settleAt(event->position().toPoint());
}

void LayerWindow::mousePressEvent(QMouseEvent* event)
{
    const QPoint place = event->position().toPoint();
    if (!card().isVisible() || !card().sheet().contains(card().mapFrom(this, place)))
        dismiss(ClosedBy::OutsidePress);
    event->accept();
}

} // namespace amperly
