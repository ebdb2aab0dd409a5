// The transient window of Wayland compositors with a layer shell: a transparent sheet over the
// whole output with the card on it. A press on the sheet beside the card is one outside of it.
//
// No program is told where its status item is. But the sheet lies under the pointer, and the
// compositor says where the pointer enters it.

#include "platform/linux/popover/layer_surface.h"
#include "platform/linux/popover/transient_window.h"

#include <QEnterEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWindow>

namespace amperly {
namespace {

/// A pointer that is on the output is announced within a frame or two of the sheet's first.
constexpr int kPointerTimeoutMilliseconds = 150;

class LayerWindow : public TransientWindow {
public:
    LayerWindow(std::unique_ptr<QWidget> content, CardEdge edge);

    void open(std::optional<ScreenPoint> anchor) override;
    void setVisible(bool visible) override;

protected:
    void placeCard() override;
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void showCardAt(QPoint point);

    std::unique_ptr<LayerSurface> m_surface;
    std::optional<QPoint> m_clicked; ///< nothing until it is known
    QTimer m_pointerTimeout; ///< from the first painting on
};

LayerWindow::LayerWindow(std::unique_ptr<QWidget> content, CardEdge edge)
    : TransientWindow(std::move(content), edge, Qt::Window | Qt::BypassWindowManagerHint)
{
    setAttribute(Qt::WA_TranslucentBackground);
    m_pointerTimeout.setSingleShot(true);
    m_pointerTimeout.setInterval(kPointerTimeoutMilliseconds);
}

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
    connect(&m_pointerTimeout, &QTimer::timeout, this,
        [this, anchor] { showCardAt(anchor ? QPoint(anchor->x, anchor->y) : usualStatusArea(rect())); });
    show();
}

void LayerWindow::setVisible(bool visible)
{
    // The role goes before the surface that has it.
    if (!visible)
        m_surface.reset();
    TransientWindow::setVisible(visible);
}

void LayerWindow::showCardAt(QPoint point)
{
    m_pointerTimeout.stop();
    if (m_clicked || !m_surface)
        return;
    m_clicked = point;
    card().adjustSize();
    placeCard();
    card().show();
    card().content().setFocus();
}

void LayerWindow::placeCard()
{
    if (!m_clicked || !m_surface)
        return;
    const QMargins margins = card().margins();
    const ScreenArea area = areaBesidePanel(m_surface->size(), m_surface->usableSize(), *m_clicked);
    card().move(
        besidePoint(*m_clicked, card().size().shrunkBy(margins), area).marginsAdded(margins).topLeft());
}

void LayerWindow::paintEvent(QPaintEvent* event)
{
    TransientWindow::paintEvent(event);
    if (!m_clicked && !m_pointerTimeout.isActive())
        m_pointerTimeout.start();
}

void LayerWindow::enterEvent(QEnterEvent* event)
{
    TransientWindow::enterEvent(event);
    showCardAt(event->position().toPoint());
}

void LayerWindow::mousePressEvent(QMouseEvent* event)
{
    if (!card().isVisible() || !isOnSheet(event->position().toPoint()))
        dismiss(ClosedBy::OutsidePress);
    event->accept();
}

} // namespace

std::unique_ptr<TransientWindow> makeLayerWindow(std::unique_ptr<QWidget> content, CardEdge edge)
{
    return std::make_unique<LayerWindow>(std::move(content), edge);
}

} // namespace amperly
