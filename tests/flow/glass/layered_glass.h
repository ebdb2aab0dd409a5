// Glass tubes painted the obvious way: one call of the toolkit's painter for each layer.
#pragma once

#include "flow/glass/curve.h"
#include "flow/glass/flow_color.h"

#include <QImage>

#include <functional>
#include <vector>

namespace amperly::glass {

struct LayeredFlow {
    Bezier curve;
    Color color;
    double width = 0.0;
    double travelled = 0.0;
};

struct LayerBlur {
    /// A layer, all of one colour, blurred with a Gaussian of this standard deviation in pixels.
    std::function<QImage(const QImage& layer, double sigma, const Color& color)> blurred;
    /// How much larger than the canvas a layer is on each side, for light from outside: so many
    /// standard deviations.
    double margin = 0.0;
};

/// Paints the flows in their order over what is on a premultiplied canvas of `scale` pixels a point.
void paintLayers(QImage& canvas, const std::vector<LayeredFlow>& flows, double scale, const LayerBlur& blur);

} // namespace amperly::glass
