// What the popover shows: the computer's draw and what charger and battery do in words, the power
// flow diagram, and buttons for settings, donation page and quitting.
//
// It keeps nothing of its own: everything follows the latest reading.
#pragma once

#include "flow/flow_animator.h"
#include "platform/frame_clock.h"
#include "telemetry/live_model.h"

#include <QWidget>
#include <functional>

class QVBoxLayout;

namespace amperly {

class Desktop;
class DisplaySettings;
class FlowDiagram;
class FlowHeader;

/// What the panel needs of the desktop; all of it must outlive the panel.
struct PanelServices {
    Desktop& desktop;
    FrameClock& frames;
    const DisplaySettings& display;
};

class FlowPanel : public QWidget {
public:
    /// Watts. An adapter input below this counts as the charger delivering nothing.
    static constexpr double chargerActiveWatts = kChargerActiveWatts;

    /// Follows `live`, which must outlive the panel. `openSettings` is called when the user asks
    /// for the settings window.
    FlowPanel(LiveModel& live, const PanelServices& services, std::function<void()> openSettings);
    ~FlowPanel() override;

    // Null while there is no reading.
    [[nodiscard]] FlowHeader* header() const { return m_header; }
    [[nodiscard]] FlowDiagram* diagram() const { return m_diagram; }

    /// Null while there is a reading.
    [[nodiscard]] QWidget* noData() const { return m_noData; }

    /// The line above the footer.
    [[nodiscard]] QWidget& divider() const { return *m_divider; }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void addFooter(std::function<void()> openSettings);
    void refresh();
    void showReading(const PowerSample& sample);
    void showNoData();
    void clear();
    void followFrames();
    void advance(double now);

    LiveModel& m_live;
    const PanelServices m_services;
    QVBoxLayout* m_column;
    QVBoxLayout* m_readings;
    QWidget* m_divider;
    FlowHeader* m_header = nullptr;
    FlowDiagram* m_diagram = nullptr;
    QWidget* m_noData = nullptr;
    bool m_moves;
    std::unique_ptr<FrameClock::Run> m_run;
    Subscription m_subscription;
};

} // namespace amperly
