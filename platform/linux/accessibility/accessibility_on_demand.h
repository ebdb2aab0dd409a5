// Connects the program to assistive technology when it has something on screen for the first
// time, and not before: the bridge brings a bus connection and a thread of its own. What the
// status item says is spoken by the panel and does not need it.
#pragma once

#include <QObject>

namespace amperly {

class AccessibilityOnDemand : public QObject {
public:
    /// Needs the application object.
    AccessibilityOnDemand();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace amperly
