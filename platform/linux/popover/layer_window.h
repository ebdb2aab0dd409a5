// The transient window of Wayland compositors with a layer shell: a transparent sheet over the
// whole output with the card on it. A press on the sheet beside the card is one outside of it.
//
// No program is told where its status item is. But the sheet lies under the pointer, and the
// compositor says where the pointer enters it.
#pragma once

#include "platform/linux/popover/layer_surface.h"
#include "platform/linux/popover/transient_window.h"

#include <QTimer>

namespace amperly {

class LayerWindow : public TransientWindow {
public:
    LayerWindow(std::unique_ptr<QWidget> content, CardEdge edge);
    ~LayerWindow() override;

    void open(std::optional<ScreenPoint> anchor) override;
    void setVisible(bool visible) override;

protected:
    void placeCard() override;
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void settleAt(QPoint place);

    std::unique_ptr<LayerSurface> m_surface;
    std::optional<QPoint> m_place; ///< nothing until it is known
    QTimer m_patience; ///< with the pointer, from the first painting on
};

} // namespace amperly
