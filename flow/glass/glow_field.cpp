#include "flow/glass/glow_field.h"

#include "flow/glass/fixed_point.h"
#include "flow/glass/gaussian_weights.h"
#include "flow/glass/glass_look.h"
#include "flow/glass/kernels.h"
#include "flow/glass/tube_layout.h"
#include "flow/glass/tube_motion.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace amperly::glass {

namespace {

// Points from a node to the next. Cells of twice this leave the narrowest blur of a tube of 9
// points, 6.3 points, without a visible trace; narrower tubes need narrower cells.
constexpr double kNodeStep = 4.0;
constexpr double kNarrowestForNodeStep = 9.0;
constexpr double kLeastShareOfNodeStep = 1.0 / 3.0;

// Light from outside of the canvas falls in from so far. Points.
constexpr double kMargin = 48.0;

constexpr int roundedUpToEven(int count)
{
    return count + count % 2;
}

constexpr std::size_t kColorChannels = 4;

/// Four channels at once, which every processor of interest adds and multiplies in one go.
using Channels [[gnu::vector_size(16)]] = float;
using ChannelCodes [[gnu::vector_size(16)]] = std::int32_t;

// What the grids blur by themselves, as variances in squares of a node's step.
constexpr double kVarianceOfCoverageRamp = 1.0 / 12.0; // a box of one step
constexpr double kVarianceOfGathering = 0.75; // weights 1 3 3 1, from nodes to cells
constexpr double kVarianceOfRefining = 0.75; // the same back
constexpr double kVarianceOfStraightLines = 1.0 / 6.0; // between nodes, on average
constexpr double kVarianceOfGrids
    = kVarianceOfCoverageRamp + kVarianceOfGathering + kVarianceOfRefining + kVarianceOfStraightLines;
constexpr double kSquareOfCell = 4.0; // in the same unit

/// target += weight × source, over so many.
void addWeighted(float* target, const float* source, float weight, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        target[i] += weight * source[i];
}

/// Three parts of `near` and one of `far`, of so many numbers.
void threeToOne(std::uint16_t* target, const std::uint16_t* near, const std::uint16_t* far, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        target[i] = static_cast<std::uint16_t>((3 * near[i] + far[i] + 2) >> 2);
}

/// The channels of an opaque colour, in the order in which nodes keep them.
Channels channelsOf(const Color& color)
{
    return Channels{static_cast<float>(color.blue), static_cast<float>(color.green),
               static_cast<float>(color.red), 1.0F}
    * static_cast<float>(kFullChannel);
}

} // namespace

GlowGrid GlowGrid::forCanvas(int width, int height, double scale, double narrowestTube)
{
    const double share = std::clamp(narrowestTube / kNarrowestForNodeStep, kLeastShareOfNodeStep, 1.0);
    GlowGrid grid;
    grid.step = std::max(1, static_cast<int>(std::lround(kNodeStep * share * scale)));
    grid.margin = roundedUpToEven(static_cast<int>(std::ceil(kMargin * scale / grid.step)));
    grid.canvasColumns = (width + grid.step - 1) / grid.step + 1;
    grid.canvasRows = (height + grid.step - 1) / grid.step + 1;
    grid.columns = roundedUpToEven(grid.canvasColumns + 2 * grid.margin);
    grid.rows = roundedUpToEven(grid.canvasRows + 2 * grid.margin);
    return grid;
}

std::size_t GlowField::cellAt(int column, int row) const
{
    return index(row * m_grid.cellColumns() + column);
}

void GlowField::begin(const GlowGrid& grid, double scale, std::size_t tubes)
{
    m_grid = grid;
    m_scale = scale;
    m_tubes = tubes;
    m_colors.clear();
    m_colors.reserve(tubes);
    m_region.left = grid.cellMargin() - 1;
    m_region.top = grid.cellMargin() - 1;
    m_region.columns = index((grid.canvasColumns + 1) / 2 + 2);
    m_region.rows = index((grid.canvasRows + 1) / 2 + 2);

    const std::size_t cells = m_region.columns * m_region.rows;
    const std::size_t nodes = index(grid.canvasColumns) * index(grid.canvasRows);
    m_opacities.resize(tubes * cells);
    m_cells.resize(tubes * cells * kColorChannels);
    m_refinedDown.resize(m_region.columns * kColorChannels);
    m_refinedLeft.resize(m_refinedDown.size());
    m_refinedRight.resize(m_refinedDown.size());
    m_nodes.resize(tubes * nodes * kColorChannels + index(kRowSlack));
}

void GlowField::add(const TubeLayout& layout, const TubeMotion& motion, const Color& color, double width)
{
    const std::size_t cells = index(m_grid.cellColumns()) * index(m_grid.cellRows());
    m_glow.assign(cells, 0.0F);
    m_halo.assign(cells, 0.0F);
    spread(layout, motion);
    blur(m_glow, width * kGlassLook.outerGlowRadius);
    blur(m_halo, width * kGlassLook.pulseHaloRadius);

    // The halo lies over the glow, in the same colour.
    float* opacity = m_opacities.data() + m_colors.size() * m_region.columns * m_region.rows;
    for (std::size_t row = 0; row < m_region.rows; ++row, opacity += m_region.columns) {
        const std::size_t first = cellAt(m_region.left, m_region.top + static_cast<int>(row));
        for (std::size_t i = 0; i < m_region.columns; ++i) {
            const float glow = m_glow[first + i] * static_cast<float>(kGlassLook.outerGlowOpacity);
            const float halo = m_halo[first + i] * static_cast<float>(kGlassLook.pulseHalo.opacity);
            opacity[i] = halo + glow * (1.0F - halo);
        }
    }
    m_colors.push_back(color);
}

void GlowField::spread(const TubeLayout& layout, const TubeMotion& motion)
{
    const auto perStep = static_cast<float>(m_scale / m_grid.step);
    const int width = m_grid.cellColumns();
    m_firstRow = m_grid.cellRows();
    m_lastRow = -1;
    for (const GlowSample& node : layout.glowSamples()) {
        const TubeSection& section = motion.profile()[node.section];
        const TubeSection& next = motion.profile()[node.section + 1U];
        const float half
            = static_cast<float>(section.half) + static_cast<float>(next.half - section.half) * node.beyond;
        const auto coverage = [&](float edge) {
            return std::clamp((edge - node.distance) * perStep + 0.5F, 0.0F, 1.0F) * node.inside;
        };
        const float haloCoverage = coverage(half * static_cast<float>(kGlassLook.pulseHalo.upper));
        if (haloCoverage == 0.0F)
            continue;
        const float swell = motion.halo()[node.section]
            + (motion.halo()[node.section + 1U] - motion.halo()[node.section]) * node.beyond;
        const float halo = haloCoverage * swell;
        const float glow = coverage(half);

        // The cell it lies in takes three of four parts in each direction, the neighbour on its
        // side the fourth. A cell has two nodes by two.
        const int cellX = node.column / 2;
        const int cellY = node.row / 2;
        const int neighbourX = node.column % 2 == 0 ? -1 : 1;
        const int neighbourY = (node.row % 2 == 0 ? -1 : 1) * width;
        const int here = cellY * width + cellX;
        const auto give = [&](std::vector<float>& cells, float amount) {
            cells[index(here)] += amount * (9.0F / 64.0F);
            cells[index(here + neighbourX)] += amount * (3.0F / 64.0F);
            cells[index(here + neighbourY)] += amount * (3.0F / 64.0F);
            cells[index(here + neighbourX + neighbourY)] += amount * (1.0F / 64.0F);
        };
        give(m_glow, glow);
        if (halo > 0.0F)
            give(m_halo, halo);
        m_firstRow = std::min(m_firstRow, cellY - 1);
        m_lastRow = std::max(m_lastRow, cellY + 1);
    }
    m_firstRow = std::max(m_firstRow, 0);
    m_lastRow = std::min(m_lastRow, m_grid.cellRows() - 1);
}

void GlowField::blur(std::vector<float>& cells, double radius)
{
    const double steps = radius * m_scale / m_grid.step;
    const GaussianWeights weights(std::max(steps * steps - kVarianceOfGrids, 0.0) / kSquareOfCell);
    const int reach = static_cast<int>(weights.reach());
    const int width = m_grid.cellColumns();
    const int left = m_region.left;
    const int end = left + static_cast<int>(m_region.columns);

    m_blurredAcross.assign(cells.size(), 0.0F);
    for (int row = m_firstRow; row <= m_lastRow; ++row) {
        float* const target = m_blurredAcross.data() + cellAt(0, row);
        const float* const source = cells.data() + cellAt(0, row);
        for (int distance = -reach; distance <= reach; ++distance) {
            const int from = std::max(left, -distance);
            const int to = std::min(end, width - distance);
            if (from < to)
                addWeighted(target + from, source + from + distance, weights[index(std::abs(distance))],
                    index(to - from));
        }
    }
    std::fill(cells.begin(), cells.end(), 0.0F);
    for (int row = m_region.top; row < m_region.top + static_cast<int>(m_region.rows); ++row) {
        for (int source = std::max(row - reach, m_firstRow); source <= std::min(row + reach, m_lastRow);
             ++source) {
            addWeighted(cells.data() + cellAt(left, row), m_blurredAcross.data() + cellAt(left, source),
                weights[index(std::abs(source - row))], m_region.columns);
        }
    }
}

void GlowField::finish()
{
    composeCells();
    refineCells();
}

void GlowField::composeCells()
{
    const std::size_t cells = m_region.columns * m_region.rows;
    for (std::size_t cell = 0; cell < cells; ++cell) {
        // From the last tube to the first, each below those that came after it.
        Channels sum{};
        float uncovered = 1.0F;
        for (std::size_t tube = m_tubes; tube-- > 0;) {
            const float opacity = m_opacities[tube * cells + cell];
            sum += channelsOf(m_colors[tube]) * (opacity * uncovered);
            uncovered *= 1.0F - opacity;
            const ChannelCodes codes = __builtin_convertvector(sum + 0.5F, ChannelCodes);
            std::uint16_t* const target = m_cells.data() + (tube * cells + cell) * kColorChannels;
            for (std::size_t channel = 0; channel < kColorChannels; ++channel)
                target[channel] = static_cast<std::uint16_t>(codes[channel]);
        }
    }
}

void GlowField::refineCells()
{
    const std::size_t row = m_refinedDown.size();
    const std::size_t columns = index(m_grid.canvasColumns);
    std::int16_t* target = m_nodes.data();
    for (std::size_t sum = 0; sum < m_tubes; ++sum) {
        const std::uint16_t* const cells = m_cells.data() + sum * row * m_region.rows;
        for (int node = 0; node < m_grid.canvasRows; ++node, target += columns * kColorChannels) {
            // The region begins one cell before the canvas's first node, which is the first of its cell.
            const std::uint16_t* const near = cells + index(node / 2 + 1) * row;
            const std::uint16_t* const far = node % 2 == 0 ? near - row : near + row;
            threeToOne(m_refinedDown.data(), near, far, row);
            const std::uint16_t* const inner = m_refinedDown.data() + kColorChannels;
            threeToOne(m_refinedLeft.data(), inner, inner - kColorChannels, row - 2 * kColorChannels);
            threeToOne(m_refinedRight.data(), inner, inner + kColorChannels, row - 2 * kColorChannels);
            for (std::size_t column = 0; column < columns; ++column) {
                const auto& half = column % 2 == 0 ? m_refinedLeft : m_refinedRight;
                std::memcpy(target + column * kColorChannels, half.data() + column / 2 * kColorChannels,
                    kColorChannels * sizeof(*target));
            }
        }
    }
}

const std::int16_t* GlowField::nodes(std::size_t first, int row) const
{
    return m_nodes.data()
        + (first * index(m_grid.canvasRows) + index(row)) * index(m_grid.canvasColumns) * kColorChannels;
}

} // namespace amperly::glass
