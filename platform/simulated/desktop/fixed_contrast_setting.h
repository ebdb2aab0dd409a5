// A user who has said, once and for all, whether things are to stand out more.
#pragma once

#include "platform/contrast_setting.h"

namespace amperly {

class FixedContrastSetting : public ContrastSetting {
public:
    explicit FixedContrastSetting(bool increased) : m_increased(increased) { }
    [[nodiscard]] bool increasesContrast() const override { return m_increased; }

private:
    bool m_increased;
};

} // namespace amperly
