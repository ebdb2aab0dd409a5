// What the user has set for displays in the system's accessibility settings.
#pragma once

#include "platform/contrast_setting.h"
#include "platform/motion_setting.h"

namespace amperly {

class DisplaySettings : public MotionSetting, public ContrastSetting {
public:
    [[nodiscard]] bool reducesMotion() const override;
    [[nodiscard]] bool increasesContrast() const override;
};

} // namespace amperly
