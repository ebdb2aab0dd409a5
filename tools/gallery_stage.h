// What the gallery shows panels in: desktops light and dark, and a display whose frames it makes.
#pragma once

#include "flow/flow_panel.h"
#include "platform/simulated/desktop/fixed_display_settings.h"
#include "platform/simulated/desktop/manual_frame_clock.h"
#include "platform/simulated/desktop/recording_desktop.h"

#include <QBrush>
#include <QColor>
#include <QImage>
#include <QPalette>
#include <QSizeF>

#include <memory>
#include <optional>
#include <vector>

namespace amperly {

struct Look {
    const char* name;
    QPalette palette;
    QColor desktop; ///< behind the panels
};

/// A light one and a dark one.
[[nodiscard]] std::vector<Look> looks();

/// What the README's pictures stand before, as large as that.
[[nodiscard]] QBrush evening(const QSizeF& size);

class PanelOnDisplay {
public:
    explicit PanelOnDisplay(const std::optional<PowerSample>& sample);

    /// Lets frames pass.
    void play(double seconds, double rate = 60.0) { m_clock.play(seconds, rate); }

    [[nodiscard]] QImage picture(double scale);

private:
    ManualFrameClock m_clock;
    RecordingDesktop m_desktop;
    FixedDisplaySettings m_display;
    LiveModel m_live;
    std::unique_ptr<FlowPanel> m_panel;
};

} // namespace amperly
