// Flows of power drawn as glass tubes: each follows a curve, and swellings that travel along it show
// which way the power goes. No toolkit and no clock in here: pixels come in as memory, motion as the
// distance travelled.
//
// Of a tube's twelve layers
//   1 the outer glow and 2 the pulse halo come from a GlowField,
//   3 to 11, the body up to the pulse highlight, from TubeLayers, inside the kernels,
//   12 the glints from GlintLight.
#pragma once

#include "flow/glass/curve.h"
#include "flow/glass/flow_color.h"
#include "flow/glass/glint.h"
#include "flow/glass/glow_field.h"
#include "flow/glass/kernels.h"
#include "flow/glass/tube_layout.h"
#include "flow/glass/tube_motion.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace amperly::glass {

/// Premultiplied pixels, each 0xAARRGGBB in the machine's byte order, in rows that lie `stride`
/// pixels apart. Borrowed: they belong to who made them.
struct GlassPixels {
    std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0;
};

/// The offscreen group that all flows of one frame are drawn into. It is not opaque and mixes
/// colours as their sRGB values, not as linear light.
///
/// The tubes of a frame are collected first: their glows are blurred and stored together, and then
/// rows are finished one band after the other, while they are near the processor.
///
/// A canvas kept for the next frame draws faster than a new one and takes nothing from the heap,
/// but draws the same: it remembers only what depends on the curves alone.
class GlassCanvas {
public:
    explicit GlassCanvas(const Kernels& kernels = *kernelsHere().front());

    /// Starts a frame with nothing in it. `scale` is how many pixels a point has, above 0 and not
    /// necessarily whole. The pixels are borrowed until finish(), and whatever they hold is lost.
    void begin(const GlassPixels& target, double scale);

    /// Completes the pixels. Until then they may hold anything.
    void finish();

private:
    friend void drawGlassFlow(GlassCanvas&, const Bezier&, const Color&, double, double);

    struct Tube {
        Bezier curve;
        Color color;
        double width = 0.0;
        double travelled = 0.0;
        TubeLayout* layout = nullptr;
        TubeMotion motion;
        std::vector<GlintLight> lights;
    };

    /// Rows `top` to `bottom` - 1 of the canvas, wherever they are worked on.
    struct Rows {
        std::uint32_t* pixels = nullptr; ///< of row `top`
        int stride = 0;
        int top = 0;
        int bottom = 0;
    };

    void prepare();
    [[nodiscard]] TubeLayout* layoutFor(const TubeLayout::Key& key);
    void prepareBand();
    void paintBand(int band);
    void storeGlow(std::size_t first, int band, int left, int right, const Rows& rows);
    void paintTube(std::size_t number, int band, const Rows& rows);
    void paintGlint(const GlintLight& light, const std::uint32_t* over, const Rows& rows);

    const Kernels& m_kernels;
    GlassPixels m_target;
    double m_scale = 1.0;
    long m_frame = 0;
    std::vector<Tube> m_tubes; ///< those of the frame first, then what others need
    std::size_t m_count = 0;
    std::vector<std::unique_ptr<TubeLayout>> m_layouts;
    GlowGrid m_grid;
    GlowField m_glow;

    int m_stride = 0; ///< of rows with kRowSlack pixels behind their ends, which the following two have
    std::vector<std::uint32_t> m_band; ///< as many rows as there are pixels between nodes
    std::vector<std::uint32_t> m_over; ///< the later tubes' glows on them
    std::vector<std::int16_t> m_across;
    std::vector<std::int16_t> m_nodeScratch;
    std::vector<std::uint16_t> m_light;
};

/// Draws one flow over those drawn before it in this frame. `width` is the full width in points of
/// the tube where no swelling is; `travelled` is how far the swellings have moved since the
/// beginning, in points. A curve no longer than a point draws nothing, nor does one of 1e9 points
/// or more, nor one whose points are no finite numbers.
void drawGlassFlow(
    GlassCanvas& context, const Bezier& curve, const Color& color, double width, double travelled);

} // namespace amperly::glass
