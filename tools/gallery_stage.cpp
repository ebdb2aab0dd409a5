#include "tools/gallery_stage.h"

#include "tools/desktop_palettes.h"

#include <QApplication>
#include <QLinearGradient>

namespace amperly {

std::vector<Look> looks()
{
    return {{"light", lightPalette(), QColor(0xc9, 0xd2, 0xdd)},
        {"dark", darkPalette(), QColor(0x17, 0x18, 0x1c)}};
}

QBrush evening(const QSizeF& size)
{
    QLinearGradient sky(0.0, 0.0, size.width(), size.height());
    sky.setColorAt(0.0, QColor(0x2b, 0x4a, 0x78));
    sky.setColorAt(1.0, QColor(0x8f, 0x6f, 0xa8));
    return sky;
}

PanelOnDisplay::PanelOnDisplay(const std::optional<PowerSample>& sample)
{
    m_live.setSample(sample);
    m_panel = std::make_unique<FlowPanel>(
        m_live, PanelServices{.desktop = m_desktop, .frames = m_clock, .display = m_display}, [] {});
    m_panel->show();
    m_panel->setFocus(); // as the popover does
    m_panel->adjustSize();
    QApplication::processEvents();
}

QImage PanelOnDisplay::picture(double scale)
{
    QImage image((QSizeF(m_panel->size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(m_panel->palette().color(QPalette::Window));
    m_panel->render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

} // namespace amperly
