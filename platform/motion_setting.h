// Whether the user wants things on the screen to move.
#pragma once

namespace amperly {

class MotionSetting {
public:
    virtual ~MotionSetting() = default;

    /// True where the desktop's animations are switched off. Cheap enough to be asked whenever a
    /// window opens.
    [[nodiscard]] virtual bool reducesMotion() const = 0;
};

} // namespace amperly
