// What the user has set for displays in the system's accessibility settings.
#pragma once

#include "platform/display_settings.h"
#include "platform/macos/foundation/notification_observer.h"

#include <memory>

namespace amperly {

class AppKitDisplaySettings : public DisplaySettings {
public:
    [[nodiscard]] bool reducesMotion() const override;
    [[nodiscard]] bool increasesContrast() const override;

    /// Calls `handler` after each change of them, whichever it was.
    void onDidChange(std::function<void()> handler);

private:
    std::unique_ptr<NotificationObserver> m_observer;
};

} // namespace amperly
