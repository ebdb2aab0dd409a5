// The blurred layers of all tubes of a frame, outer glows and pulse halos, and the grids that they
// are calculated on. What is blurred has no detail that would need every pixel: it is blurred on
// coarse cells, and brought back to the pixels through the nodes of a grid twice as fine, straight
// between neighbours.
#pragma once

#include "flow/glass/flow_color.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace amperly::glass {

class TubeLayout;
class TubeMotion;

struct GlowGrid {
    /// For a canvas of so many pixels, on which the narrowest tube is `narrowestTube` points wide.
    [[nodiscard]] static GlowGrid forCanvas(int width, int height, double scale, double narrowestTube);

    int step = 1; ///< pixels from a node to the next; a node lies on the canvas's upper left corner
    int margin = 0; ///< nodes before that one, above and to the left: an even number
    int columns = 0; ///< nodes in a row, margins included: an even number
    int rows = 0;
    int canvasColumns = 0; ///< nodes from the canvas's left edge to its right edge or beyond
    int canvasRows = 0;

    /// Each cell holds two nodes by two.
    [[nodiscard]] int cellColumns() const { return columns / 2; }
    [[nodiscard]] int cellRows() const { return rows / 2; }
    [[nodiscard]] int cellMargin() const { return margin / 2; }

    friend bool operator==(const GlowGrid&, const GlowGrid&) = default;
};

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
