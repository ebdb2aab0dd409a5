// What a test needs that opens the panel: a display whose frames it makes, a desktop that keeps
// account, and the same fonts everywhere.
#pragma once

#include "flow/flow_diagram.h"
#include "flow/flow_header.h"
#include "flow/flow_panel.h"
#include "platform/simulated/desktop/fixed_display_settings.h"
#include "platform/simulated/desktop/manual_frame_clock.h"
#include "platform/simulated/desktop/recording_desktop.h"
#include "tests/support/number_environment.h"
#include "tests/support/pinned_drawing.h"
#include "tests/support/print_sample.h"

#include <QApplication>
#include <QFontDatabase>
#include <QImage>
#include <QPalette>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

namespace amperly {

inline const NumberEnvironment kNumbers{"en_US.UTF-8"};

class PanelTest : public testing::Test {
protected:
    static inline const PowerSample kCharging{.systemLoad = 14.2,
        .adapterIn = 30.1,
        .battery = 15.9,
        .adapterRating = 67,
        .batteryPercent = 64,
        .externalConnected = true};
    static inline const PowerSample kOnBattery{.systemLoad = 8.6, .battery = -8.6, .batteryPercent = 82};

    PanelTest()
    {
        QApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
        QApplication::setPalette(lightPalette());
    }

    static QPalette lightPalette()
    {
        QPalette palette(QColor(0xf0, 0xf0, 0xf0));
        palette.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6));
        return palette;
    }
    static QPalette darkPalette()
    {
        QPalette palette(QColor(0x2c, 0x2c, 0x2e));
        palette.setColor(QPalette::WindowText, QColor(0xf2, 0xf2, 0xf4));
        palette.setColor(QPalette::Highlight, QColor(0x3d, 0x8e, 0xe6));
        return palette;
    }

    /// Opens the panel on the latest reading.
    void open()
    {
        panel = std::make_unique<FlowPanel>(live,
            PanelServices{.desktop = desktop, .frames = clock, .display = display},
            [this] { ++settingsOpened; });
        panel->show();
        panel->setFocus();
        QApplication::processEvents();
    }

    void openWith(const std::optional<PowerSample>& sample)
    {
        live.setSample(sample);
        open();
    }

    /// A new reading, as the panel sees it when the event loop comes round.
    void read(const std::optional<PowerSample>& sample)
    {
        live.setSample(sample);
        QApplication::processEvents();
    }

    [[nodiscard]] QImage picture(double scale = 1.0) const { return pictureOf(*panel, scale); }

    static QImage pictureOf(QWidget& widget, double scale)
    {
        QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(widget.palette().color(QPalette::Window));
        widget.render(&image, {}, {}, QWidget::DrawChildren);
        image.setDevicePixelRatio(1.0);
        return image;
    }

    PinnedDrawing drawing;
    ManualFrameClock clock{1000.0};
    FixedDisplaySettings display;
    RecordingDesktop desktop;
    LiveModel live;
    int settingsOpened = 0;
    std::unique_ptr<FlowPanel> panel;
};

} // namespace amperly
