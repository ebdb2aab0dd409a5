// The blurred layers of all tubes of a frame: outer glows and pulse halos.
#pragma once

#include "flow/glass/flow_color.h"
#include "flow/glass/gaussian_weights.h"
#include "flow/glass/glow_grid.h"
#include "flow/glass/tube_layout.h"
#include "flow/glass/tube_motion.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace amperly::glass {

/// Where a tube lies over an earlier tube's body, its glow lies over that body too. So besides all
/// glows together there are sums that leave out the glows of the first tubes.
class GlowField {
public:
    /// Starts a frame of `tubes` tubes.
    void begin(const GlowGrid& grid, double scale, std::size_t tubes);

    /// Blurs the glow of the frame's next tube, `width` points wide.
    void add(const TubeLayout& layout, const TubeMotion& motion, const Color& color, double width);

    /// Puts together what was added.
    void finish();

    /// The nodes of one row over the canvas, the canvas's upper edge being row 0: premultiplied blue,
    /// green, red and alpha of each, 255 being kFullChannel. `first` is the first tube whose glow is
    /// in it.
    [[nodiscard]] const std::int16_t* nodes(std::size_t first, int row) const;

private:
    /// The cells that the canvas's nodes are reckoned from: the canvas's own and one more on each side.
    struct Region {
        int left = 0;
        int top = 0;
        std::size_t columns = 0;
        std::size_t rows = 0;
    };

    [[nodiscard]] std::size_t cellAt(int column, int row) const;
    void spread(const TubeLayout& layout, const TubeMotion& motion);
    void blur(std::vector<float>& cells, double radius);
    void composeCells();
    void refineCells();

    GlowGrid m_grid;
    Region m_region;
    double m_scale = 1.0;
    std::size_t m_tubes = 0;
    std::vector<Color> m_colors; ///< of those added so far
    int m_firstRow = 0; ///< the cells that the tube being added can cover
    int m_lastRow = 0;
    std::vector<float> m_glow; ///< coverages of the tube being added, one for each cell of the grid
    std::vector<float> m_halo;
    std::vector<float> m_blurredAcross;
    std::vector<float> m_opacities; ///< of the region's cells, tube by tube
    std::vector<std::uint16_t> m_cells; ///< four channels for each of them, sum by sum
    std::vector<std::uint16_t> m_refinedDown; ///< one row of them
    std::vector<std::uint16_t> m_refinedLeft;
    std::vector<std::uint16_t> m_refinedRight;
    std::vector<std::int16_t> m_nodes; ///< of the canvas, sum by sum
};

} // namespace amperly::glass
