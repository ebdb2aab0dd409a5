// Glass tubes painted the slow way, with blurs that are true Gaussians on every pixel. What ships
// has to look like this.
#pragma once

#include "tests/flow/glass/layered_glass.h"

#include <QImage>

#include <vector>

namespace amperly::glass {

/// The flows in their order on `width` × `height` points, `scale` pixels each; 8 bits a channel,
/// premultiplied.
[[nodiscard]] QImage paintReference(
    const std::vector<LayeredFlow>& flows, int width, int height, double scale);

} // namespace amperly::glass
