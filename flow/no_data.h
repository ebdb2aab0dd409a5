// What stands in the panel while there is no reading.
#pragma once

#include "flow/spoken_text.h"

namespace amperly {

class DisplaySettings;

class NoData : public SpokenText {
public:
    /// `display` must outlive the widget.
    explicit NoData(const DisplaySettings& display, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const DisplaySettings& m_display;
};

} // namespace amperly
