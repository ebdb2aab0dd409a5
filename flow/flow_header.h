// The head of the panel: the computer's draw at the leading edge, the pill at the trailing one.
#pragma once

#include "flow/rolling_text.h"
#include "flow/spoken_text.h"
#include "flow/status_pill.h"
#include "platform/power_sample.h"

#include <QWidget>

namespace amperly {

class DisplaySettings;

/// The computer's draw in large figures, under a caption.
class Headline : public SpokenText {
public:
    /// `display` must outlive the widget.
    explicit Headline(const DisplaySettings& display, QWidget* parent = nullptr);

    /// A new reading. Its figure rolls in with the next frames; the first is there at once.
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

class FlowHeader : public QWidget {
public:
    /// `display` must outlive the widget.
    explicit FlowHeader(const DisplaySettings& display, QWidget* parent = nullptr);

    void setSample(const PowerSample& sample);
    void advance(double now) { m_headline->advance(now); }
    void settle() { m_headline->settle(); }

    [[nodiscard]] const Headline& headline() const { return *m_headline; }
    [[nodiscard]] const StatusPill& statusPill() const { return *m_pill; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void arrange();

    Headline* m_headline;
    StatusPill* m_pill;
};

} // namespace amperly
