// Which way is across a curve, and which of the two sides the light falls on.
#pragma once

#include "flow/glass/curve_samples.h"

namespace amperly::glass {

using CurveNormals = std::array<FlowPoint, kCurveSampleCount>;

/// Unit normals, the tangents turned from x towards y. Where points coincide they are shorter.
[[nodiscard]] CurveNormals unitNormals(const CurveSamples& samples);

/// 1 or -1: what the normals have to be multiplied with to point to the upper side on the screen,
/// and to the left side of a tube that stands. The curve's middle decides for all of it.
[[nodiscard]] double upperSide(const CurveNormals& normals);

/// Unit normals that point to the upper side.
[[nodiscard]] CurveNormals orientedNormals(const CurveSamples& samples);

} // namespace amperly::glass
