// Starting at login, as the system's own service for applications has it. The user can take it
// back in the system settings, or may have to approve it there first.
#pragma once

#include "platform/login_item.h"

namespace amperly {

class MainAppLoginItem : public LoginItem {
public:
    [[nodiscard]] LoginItemStatus status() const override;
    [[nodiscard]] Failure registerItem() override;
    [[nodiscard]] Failure unregisterItem() override;
    void openSystemSettings() override;
};

} // namespace amperly
