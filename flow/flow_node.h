// One node of the power flow diagram: a rounded sheet of tinted glass with a symbol, a value and
// a title. While power flows through it, a glow around it swells and fades.
//
// What does not move is drawn once for each scale; from frame to frame only the glow's opacity and,
// for a moment, a rolling value change.
#pragma once

#include "flow/panel_content.h"
#include "flow/rolling_text.h"

#include <QImage>
#include <QPalette>

class QPainter;

namespace amperly {

class DisplaySettings;

class FlowNode {
public:
    /// `display` must outlive the node.
    FlowNode(const NodeContent& content, const DisplaySettings& display);

    /// A new value rolls in with the next frames.
    void setContent(const NodeContent& content);
    [[nodiscard]] const NodeContent& content() const { return m_content; }

    /// One frame, at `now` in seconds.
    void advance(double now);

    /// Shows the value without rolling.
    void settle();

    /// Fonts and colours of the desktop have changed.
    void restyle();

    /// Opacity of the glow at `elapsed` seconds after the diagram appeared.
    [[nodiscard]] double glowOpacity(double elapsed) const;

    /// Paints glow and node with the node's upper left corner at `corner`. `glow` is the glow's
    /// opacity.
    void paint(QPainter& painter, const QPointF& corner, const QPalette& palette, double glow);

private:
    /// Draws what has changed since the last time.
    void draw(const QPalette& palette, double scale);
    void drawSheet(QPainter& painter, const QPalette& palette) const;
    void drawSymbol(QPainter& painter, const QPalette& palette) const;
    void drawTitle(QPainter& painter, const QPalette& palette) const;
    [[nodiscard]] QPointF valueCorner() const;

    NodeContent m_content;
    const DisplaySettings& m_display;
    RollingText m_value;
    // Empty when they are to be drawn anew.
    double m_scale = 0.0;
    QImage m_glow;
    QImage m_body; ///< all but the value
    QImage m_whole; ///< with the value
};

} // namespace amperly
