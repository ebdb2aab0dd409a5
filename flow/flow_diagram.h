// The animated picture at the heart of the panel: charger, computer and battery, and the glass
// tubes through which power flows between them.
//
// The widget's contents rectangle is the diagram; its margins are room for the light that spills
// over. It paints its own ground, so that a frame touches nothing behind it.
#pragma once

#include "flow/diagram_layout.h"
#include "flow/flow_animator.h"
#include "flow/flow_node.h"
#include "flow/glass/glass_canvas.h"

#include <QImage>
#include <QRect>
#include <QWidget>

#include <array>
#include <optional>
#include <string>

namespace amperly {

class FlowDiagram : public QWidget {
public:
    enum class Node { Charger, Computer, Battery };
    static constexpr std::size_t kNodeCount = 3;

    /// `display` must outlive the diagram.
    FlowDiagram(const PowerSample& sample, const DisplaySettings& display, QWidget* parent = nullptr);

    /// A new reading. The flows glide to it with the next frames.
    void setSample(const PowerSample& sample);
    [[nodiscard]] const PowerSample& sample() const { return m_sample; }

    /// One frame, at `now` in seconds: moves everything on and asks to be painted. The diagram
    /// grows in from its first frame on.
    void advance(double now);

    /// Shows the latest reading with everything at rest, for those who want nothing to move. Asks
    /// to be painted if that was not so already.
    void settle();

    /// The same to hear, in a sentence.
    [[nodiscard]] std::string sentence(Node node) const;

    /// Where a node is, in the widget's coordinates.
    [[nodiscard]] QRect nodeRect(Node node) const;

    [[nodiscard]] const FlowAnimator& animator() const { return m_animator; }
    [[nodiscard]] const FlowNode& node(Node node) const { return m_nodes[static_cast<std::size_t>(node)]; }

    /// How far the diagram has grown in: 0 at first, beyond 1 while it overshoots, 1 at rest.
    [[nodiscard]] double appearance() const { return m_appearance; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fill();
    void place();
    [[nodiscard]] QPointF cornerOf(Node node) const;
    [[nodiscard]] QRectF diagramRect() const;
    void paintDiagram(QPainter& painter);
    void paintAppearing(QPainter& painter);
    void paintTubes(QPainter& painter);

    PowerSample m_sample;
    FlowAnimator m_animator;
    std::array<FlowNode, kNodeCount> m_nodes;
    DiagramLayout m_layout; ///< in the widget's coordinates
    std::optional<double> m_firstFrame; ///< seconds
    double m_elapsed = 0.0; ///< since then
    double m_appearance = 0.0;
    bool m_rests = false; ///< the latest reading is settled
    glass::GlassCanvas m_canvas;
    QImage m_tubes; ///< the canvas's pixels
    QImage m_stage; ///< the whole diagram, while it appears
};

} // namespace amperly
