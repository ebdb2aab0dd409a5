// What the user wants of whatever a screen shows, beyond the toolkit's palette.
#pragma once

namespace amperly {

class DisplaySettings {
public:
    virtual ~DisplaySettings() = default;

    /// True where the desktop's animations are switched off. Cheap enough to be asked whenever a
    /// window opens.
    [[nodiscard]] virtual bool reducesMotion() const = 0;

    /// True where captions and lines are to be drawn stronger than usual. Cheap enough to be asked
    /// for every colour.
    [[nodiscard]] virtual bool increasesContrast() const = 0;
};

} // namespace amperly
