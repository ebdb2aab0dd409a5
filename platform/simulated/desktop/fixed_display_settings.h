// A user who wants nothing of displays but what the caller says.
#pragma once

#include "platform/display_settings.h"

namespace amperly {

class FixedDisplaySettings : public DisplaySettings {
public:
    [[nodiscard]] bool reducesMotion() const override { return m_motionReduced; }
    [[nodiscard]] bool increasesContrast() const override { return m_contrastIncreased; }

    void setReducesMotion(bool reduces) { m_motionReduced = reduces; }
    void setIncreasesContrast(bool increases) { m_contrastIncreased = increases; }

private:
    bool m_motionReduced = false;
    bool m_contrastIncreased = false;
};

} // namespace amperly
