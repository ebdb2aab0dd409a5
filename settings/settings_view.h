// The content of the settings window.
#pragma once

#include "telemetry/live_model.h"

#include <QWidget>

class QLabel;

namespace amperly {

class SettingsView : public QWidget {
public:
    /// Follows `live`, which must outlive the view.
    explicit SettingsView(LiveModel& live);

private:
    void refresh();

    LiveModel& m_live;
    QLabel* m_reading;
    LiveModel::Subscription m_subscription;
};

} // namespace amperly
