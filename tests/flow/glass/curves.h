// Curves and pictures that the tests of the glass tubes share.
#pragma once

#include "flow/glass/curve.h"
#include "flow/glass/flow_color.h"
#include "flow/glass/glass_canvas.h"
#include "flow/glass/tube_profile.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace amperly::glass {

/// A straight line at an even pace.
inline Bezier line(const FlowPoint& from, const FlowPoint& to)
{
    const FlowPoint third{(to.x - from.x) / 3.0, (to.y - from.y) / 3.0};
    return {from, {from.x + third.x, from.y + third.y}, {to.x - third.x, to.y - third.y}, to};
}

inline Bezier reversed(const Bezier& curve)
{
    return {curve.p3, curve.p2, curve.p1, curve.p0};
}

/// The three tubes of a diagram of so many points: charger to computer along the top, charger to
/// battery, battery to computer.
inline std::array<Bezier, 3> diagramCurves(double width, double height)
{
    constexpr double kHalfNodeWidth = 42.0;
    constexpr double kHalfNodeHeight = 37.0;
    constexpr double kBend = 0.55;
    const FlowPoint charger{42.0, 41.0};
    const FlowPoint computer{width - 42.0, 41.0};
    const FlowPoint battery{width / 2.0, height - 37.0};
    const FlowPoint down{charger.x, charger.y + kHalfNodeHeight};
    const FlowPoint in{battery.x - kHalfNodeWidth, battery.y};
    const FlowPoint out{battery.x + kHalfNodeWidth, battery.y};
    const FlowPoint up{computer.x, computer.y + kHalfNodeHeight};
    return {{{{charger.x + kHalfNodeWidth, charger.y}, {width / 2.0, charger.y}, {width / 2.0, computer.y},
                 {computer.x - kHalfNodeWidth, computer.y}},
        {down, {down.x, down.y + (in.y - down.y) * kBend}, {in.x - (in.x - down.x) * kBend, in.y}, in},
        {out, {out.x + (up.x - out.x) * kBend, out.y}, {up.x, up.y - (up.y - out.y) * kBend}, up}}};
}

inline TubeProfile profileOf(const Bezier& curve, double width, double travelled)
{
    const CurveSamples samples = sampleCurve(curve);
    return tubeProfile(samples, orientedNormals(samples), width, travelled);
}

struct Flow {
    Bezier curve;
    Color color = FlowColor::charger;
    double width = 16.0;
    double travelled = 0.0;
};

/// A picture of `width` × `height` pixels.
struct GlassPicture {
    GlassPicture(int pixelsWide, int pixelsHigh)
        : width(pixelsWide)
        , height(pixelsHigh)
        , pixels(static_cast<std::size_t>(pixelsWide) * static_cast<std::size_t>(pixelsHigh), 0xdeadbeefU)
    {
    }

    [[nodiscard]] GlassPixels target() { return {pixels.data(), width, height, width}; }
    [[nodiscard]] std::uint32_t at(int x, int y) const
    {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)
            + static_cast<std::size_t>(x)];
    }
    friend bool operator==(const GlassPicture&, const GlassPicture&) = default;

    int width;
    int height;
    std::vector<std::uint32_t> pixels;
};

/// The flows on a canvas of 308 × 200 points.
inline GlassPicture drawn(GlassCanvas& canvas, const std::vector<Flow>& flows, double scale = 1.0)
{
    GlassPicture picture(
        static_cast<int>(std::lround(308 * scale)), static_cast<int>(std::lround(200 * scale)));
    canvas.begin(picture.target(), scale);
    for (const Flow& flow : flows)
        drawGlassFlow(canvas, flow.curve, flow.color, flow.width, flow.travelled);
    canvas.finish();
    return picture;
}

inline GlassPicture drawn(const std::vector<Flow>& flows, double scale = 1.0)
{
    GlassCanvas canvas;
    return drawn(canvas, flows, scale);
}

/// All three tubes of the diagram at once.
inline std::vector<Flow> diagramFlows(double width, double travelled)
{
    const std::array<Bezier, 3> curves = diagramCurves(308.0, 200.0);
    return {{curves[0], FlowColor::charger, width, travelled},
        {curves[1], FlowColor::charging, width, travelled + 30.0},
        {curves[2], FlowColor::draining, width, travelled + 55.0}};
}

} // namespace amperly::glass
