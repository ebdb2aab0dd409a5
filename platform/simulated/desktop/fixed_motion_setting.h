// A user who has said, once and for all, whether things may move.
#pragma once

#include "platform/motion_setting.h"

namespace amperly {

class FixedMotionSetting : public MotionSetting {
public:
    explicit FixedMotionSetting(bool reduced) : m_reduced(reduced) { }
    [[nodiscard]] bool reducesMotion() const override { return m_reduced; }

private:
    bool m_reduced;
};

} // namespace amperly
