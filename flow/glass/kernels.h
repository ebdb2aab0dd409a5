// The loops over pixels, and which of their builds this processor runs. Every build gives the same
// picture, to the bit.
#pragma once

#include "flow/glass/fixed_point.h"
#include "flow/glass/tube_layout.h"
#include "flow/glass/tube_motion.h"

#include <cstdint>
#include <span>

namespace amperly::glass {

/// Every row of pixels that a kernel reads or writes is followed by memory for this many more.
inline constexpr int kRowSlack = 32;

/// A part of a row of pixels, made from the glow's nodes above and below it.
struct GlowRow {
    const std::int16_t* above; ///< four channels a node, from the part's first node on
    const std::int16_t* below;
    std::int16_t down; ///< how far the row is from `above` to `below`, 32768 being all of the way
    const std::int16_t* across; ///< the same for a pixel from its node to the next, four times for each
    int step; ///< pixels from a node to the next
    int nodes; ///< the part has one node more
    std::int16_t* scratch; ///< for two rows of nodes, and kRowSlack values behind each
    std::uint32_t* pixels; ///< to be written
};

/// Rows of one tube's body.
struct TubeRows {
    const TubeBlock* first;
    const TubeBlock* last; ///< one past it
    const TubeEnds* ends;
    const TubeColumn* columns;
    int reach; ///< see TubeMotion
    std::uint16_t halfRim; ///< half of the lines' widths, in 1/256 pixel
    std::uint16_t halfSpecular;
    std::uint16_t red; ///< the tube's colour, kWhole being 1
    std::uint16_t green;
    std::uint16_t blue;
    std::uint32_t* pixels; ///< of row `top`
    int stride; ///< pixels from a row to the next
    const std::uint32_t* over; ///< the glows of later tubes, from row `top` on; null if there are none
    int overStride;
    int top;
};

/// White light on a part of a row of pixels.
struct LightRow {
    std::uint32_t* pixels;
    const std::uint32_t* over; ///< as in TubeRows
    const std::uint16_t* opacities; ///< 65536 being all, one for each pixel
    int count; ///< a multiple of kBlockPixels
};

struct Kernels {
    const char* name;
    void (*storeGlow)(const GlowRow&);
    void (*paintTube)(const TubeRows&);
    void (*paintLight)(const LightRow&);
};

/// Any processor.
[[nodiscard]] const Kernels& portableKernels();

// Those for 64-bit x86 processors, which builds for others don't have.
[[nodiscard]] const Kernels& sse2Kernels(); ///< any of them can
[[nodiscard]] const Kernels& avx2Kernels();
[[nodiscard]] bool processorHasAvx2();

/// What this processor can run, the fastest first. The portable ones are among them.
[[nodiscard]] std::span<const Kernels* const> kernelsHere();

} // namespace amperly::glass
