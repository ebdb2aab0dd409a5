// A thin line between two parts of a window, one point high and on whole pixels.
#pragma once

#include <QWidget>

namespace amperly {

class DisplaySettings;

class Hairline : public QWidget {
public:
    /// `display` must outlive the widget.
    explicit Hairline(const DisplaySettings& display, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const DisplaySettings& m_display;
};

} // namespace amperly
