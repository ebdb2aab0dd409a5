// The head of the panel: the headline at the leading edge, the pill at the trailing one.
#pragma once

#include "flow/headline.h"
#include "flow/status_pill.h"

#include <QWidget>

namespace amperly {

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
    void place();

    Headline* m_headline;
    StatusPill* m_pill;
};

} // namespace amperly
