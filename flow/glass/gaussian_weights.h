// The weights that blur a row of cells.
#pragma once

#include <array>
#include <cstddef>

namespace amperly::glass {

/// A Gaussian for samples: its variance is exactly what is asked for, however small, and so blurs
/// of different grids can be added up. Its weights are exp(-v) I_n(v), with the modified Bessel
/// functions of the first kind.
class GaussianWeights {
public:
    static constexpr std::size_t kMostReach = 32;

    /// `variance` in cells², not negative.
    explicit GaussianWeights(double variance);

    /// How many cells to either side have a weight that matters.
    [[nodiscard]] std::size_t reach() const { return m_reach; }

    /// The weight of the two cells this far away, or of the cell itself. All weights together are 1.
    [[nodiscard]] float operator[](std::size_t distance) const { return m_weights[distance]; }

private:
    std::array<float, kMostReach + 1> m_weights{};
    std::size_t m_reach = 0;
};

} // namespace amperly::glass
