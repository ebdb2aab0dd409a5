// The desktop, and the bundle that the program runs from.
#pragma once

#include "platform/desktop.h"

namespace amperly {

class AccessoryApplication;

class AppKitDesktop : public Desktop {
public:
    /// `application` tells of later starts and must outlive the desktop.
    explicit AppKitDesktop(AccessoryApplication& application) : m_application(application) { }

    void openAddress(std::string_view address) override;
    void log(std::string_view line) override;
    void onReopen(std::function<void()> handler) override;
    void activate() override;
    void quit() override;
    [[nodiscard]] std::optional<int> visibleScreenHeight() const override;
    [[nodiscard]] bool isInstalled() const override;
    [[nodiscard]] std::optional<std::string> shortVersion() const override;

private:
    AccessoryApplication& m_application;
};

} // namespace amperly
