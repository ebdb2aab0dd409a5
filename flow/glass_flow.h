// A flow of power drawn as a glass tube: it follows a curve, and swellings that travel along it
// show which way the power goes. No toolkit and no clock in here: pixels come in as memory, motion
// as the distance travelled.
#pragma once

#include "flow/bezier.h"
#include "flow/flow_color.h"

#include <cstdint>
#include <memory>

namespace amperly {

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
/// A canvas kept for the next frame draws faster than a new one and takes nothing from the heap,
/// but draws the same: it remembers only what follows from the places of the curves.
class GlassCanvas {
public:
    GlassCanvas();
    ~GlassCanvas();
    GlassCanvas(GlassCanvas&&) noexcept;
    GlassCanvas& operator=(GlassCanvas&&) noexcept;
    GlassCanvas(const GlassCanvas&) = delete;
    GlassCanvas& operator=(const GlassCanvas&) = delete;

    /// Starts a frame with nothing in it. `scale` is how many pixels a point has, above 0 and not
    /// necessarily whole. The pixels are borrowed until finish(), and whatever they hold is lost.
    void begin(const GlassPixels& target, double scale);

    /// Completes the pixels. Until then they may hold anything.
    void finish();

private:
    friend void drawGlassFlow(GlassCanvas&, const Bezier&, const Color&, double, double);
    class Frame;
    std::unique_ptr<Frame> m_frame;
};

/// Draws one flow over those drawn before it in this frame. `width` is the full width in points of
/// the tube where no swelling is; `travelled` is how far the swellings have moved since the
/// beginning, in points. A curve no longer than a point draws nothing, nor does one of 1e9 points
/// or more, or of places that are no numbers.
void drawGlassFlow(
    GlassCanvas& context, const Bezier& curve, const Color& color, double width, double travelled);

} // namespace amperly
