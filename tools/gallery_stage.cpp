#include "tools/gallery_stage.h"

#include <QApplication>
#include <QStyle>

namespace amperly {
namespace {

/// As dark desktops set the toolkit's own style up.
QPalette darkPalette()
{
    QPalette palette;
    const QColor window(0x2c, 0x2c, 0x2e);
    const QColor text(0xf2, 0xf2, 0xf4);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Button, QPalette::Base})
        palette.setColor(role, window);
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x8e, 0xe6));
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb0, 0xf5));
    return palette;
}

} // namespace

std::vector<Look> looks()
{
    return {{"light", QApplication::style()->standardPalette(), QColor(0xc9, 0xd2, 0xdd)},
        {"dark", darkPalette(), QColor(0x17, 0x18, 0x1c)}};
}

PanelOnDisplay::PanelOnDisplay(const std::optional<PowerSample>& sample)
{
    m_live.setSample(sample);
    m_panel = std::make_unique<FlowPanel>(m_live, [] {});
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
