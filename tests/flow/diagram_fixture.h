// A diagram of its usual size with room around it for its light, and a test that moves its time.
#pragma once

#include "tests/flow/panel_fixture.h"

namespace amperly {

class DiagramTest : public PanelTest {
protected:
    void make(const PowerSample& sample)
    {
        diagram = std::make_unique<FlowDiagram>(sample, display);
        diagram->setContentsMargins(16, 14, 16, 14);
        diagram->resize(340, 228);
        static_cast<void>(shown()); // lays it out
    }

    void play(double seconds)
    {
        for (int frame = 0; frame < static_cast<int>(seconds * 60.0); ++frame)
            diagram->advance(now += 1.0 / 60.0);
    }

    [[nodiscard]] QImage shown(double scale = 1.0) const { return pictureOf(*diagram, scale); }

    /// The colour at a place of the diagram, in points from the corner of its contents.
    [[nodiscard]] QColor colorAt(double x, double y) const
    {
        return shown().pixelColor(static_cast<int>(16 + x), static_cast<int>(14 + y));
    }

    [[nodiscard]] QColor ground() const { return diagram->palette().color(QPalette::Window); }

    std::unique_ptr<FlowDiagram> diagram;
    double now = 50.0;
};

} // namespace amperly
