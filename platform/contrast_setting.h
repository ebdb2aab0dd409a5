// Whether the user wants what is on the screen to stand out more.
#pragma once

namespace amperly {

class ContrastSetting {
public:
    virtual ~ContrastSetting() = default;

    /// True where captions and lines are to be drawn stronger than usual. Cheap enough to be asked
    /// for every colour.
    [[nodiscard]] virtual bool increasesContrast() const = 0;
};

} // namespace amperly
