// The computer's draw in large figures, under a caption.
#pragma once

#include "flow/rolling_text.h"
#include "flow/spoken_text.h"
#include "platform/power_sample.h"

namespace amperly {

class DisplaySettings;

class Headline : public SpokenText {
public:
    /// `display` must outlive the widget.
    explicit Headline(const DisplaySettings& display, QWidget* parent = nullptr);

    /// A new reading. Its figure rolls in with the next frames; the first stands there at once.
    void setSample(const PowerSample& sample);

    /// One frame, at `now` in seconds; asks to be painted if that shows.
    void advance(double now);

    /// Shows the latest reading as it is.
    void settle();

    [[nodiscard]] const RollingText& figure() const { return m_figure; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] double captionHeight() const;

    const DisplaySettings& m_display;
    RollingText m_figure;
};

} // namespace amperly
