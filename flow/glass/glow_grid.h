// The grids that the blurred layers are reckoned on. What is blurred has no detail that would need
// every pixel: it is blurred on coarse cells, and brought back to the pixels through the nodes of a
// grid twice as fine, straight between neighbours.
#pragma once

#include <cstddef>

namespace amperly::glass {

/// Of an element, from a number that is known not to be negative.
[[nodiscard]] constexpr std::size_t index(int number)
{
    return static_cast<std::size_t>(number);
}

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

} // namespace amperly::glass
