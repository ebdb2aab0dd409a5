// Which pixels and which cells of the glow are near a tube, and where each of them is along and
// across it. This depends on the curve alone and stays while a window keeps its size; what moves is
// looked up by it.
#pragma once

#include "flow/glass/curve.h"
#include "flow/glass/fixed_point.h"
#include "flow/glass/glow_field.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace amperly::glass {

/// Neighbours in a row of pixels. Lengths are in 1/256 pixel.
struct TubeBlock {
    std::int16_t distance[kBlockPixels]; ///< across, positive on the upper side
    std::uint16_t arc[kBlockPixels]; ///< steps along
    std::uint8_t gradient[kBlockPixels]; ///< from the start, 0, to the end, 255
    std::uint16_t x; ///< of the first pixel, a multiple of kBlockPixels
    std::uint16_t y;
    std::int16_t nearest; ///< the smallest |distance|
    std::int16_t ends; ///< its index among the layout's ends, -1 if none of the pixels is near one
};

/// How far inside of the nearer end the pixels of a block are.
struct TubeEnds {
    std::int16_t inside[kBlockPixels];
};

/// A node of the glow's finer grid that the tube can cover. Points.
struct GlowSample {
    std::uint16_t column;
    std::uint16_t row;
    std::uint16_t section; ///< the tube's section before it
    float beyond; ///< how much of the way to the next section it is
    float distance; ///< across, without sign
    float inside; ///< coverage by what lies between the tube's ends
};

class TubeLayout {
public:
    /// All that a layout depends on.
    struct Key {
        Bezier curve;
        double scale = 1.0;
        int width = 0; ///< of the canvas in pixels
        int height = 0;
        double widestTube = 0.0; ///< points; no tube drawn by this layout is wider
        GlowGrid grid;
        friend bool operator==(const Key&, const Key&) = default;
    };

    explicit TubeLayout(const Key& key);

    [[nodiscard]] const Key& key() const { return m_key; }
    [[nodiscard]] const CurveSamples& samples() const { return m_samples; }
    [[nodiscard]] const CurveNormals& normals() const { return m_normals; }

    /// Steps along the tube, both ends included, and how long one is in points.
    [[nodiscard]] std::size_t arcSteps() const { return m_arcSteps; }
    [[nodiscard]] double arcStep() const { return m_arcStep; }

    /// The blocks in rows `top` to `bottom` - 1, the upper ones first.
    [[nodiscard]] const TubeBlock* blocksFrom(int top) const { return m_blocks.data() + m_rows[index(top)]; }
    [[nodiscard]] const TubeBlock* blocksUntil(int bottom) const
    {
        return m_blocks.data() + m_rows[index(bottom)];
    }
    [[nodiscard]] const TubeEnds* ends() const { return m_ends.data(); }

    [[nodiscard]] const std::vector<GlowSample>& glowSamples() const { return m_glowSamples; }

    /// The latest frame that it was drawn in; set by the canvas.
    long lastFrame = 0;

private:
    void locatePixels();
    void locateGlow();

    Key m_key;
    CurveSamples m_samples;
    CurveNormals m_normals;
    std::size_t m_arcSteps = 0;
    double m_arcStep = 0.0;
    std::vector<TubeBlock> m_blocks;
    std::vector<TubeEnds> m_ends;
    std::vector<std::uint32_t> m_rows; ///< the first block of each row, and one more
    std::vector<GlowSample> m_glowSamples;
};

} // namespace amperly::glass
