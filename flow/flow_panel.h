// What the popover shows: the computer's draw in large figures and the way to the settings.
#pragma once

#include "telemetry/live_model.h"

#include <QWidget>
#include <functional>

class QLabel;

namespace amperly {

class FlowPanel : public QWidget {
public:
    /// Follows `live`, which must outlive the panel. `openSettings` is called when the user asks
    /// for the settings window.
    FlowPanel(LiveModel& live, std::function<void()> openSettings);

private:
    void refresh();

    LiveModel& m_live;
    QLabel* m_caption;
    QLabel* m_headline;
    LiveModel::Subscription m_subscription;
};

} // namespace amperly
