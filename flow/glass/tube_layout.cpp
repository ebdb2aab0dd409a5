#include "flow/glass/tube_layout.h"

#include "flow/glass/glass_look.h"
#include "flow/glass/tube_coordinates.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace amperly::glass {

namespace {

// Of a point: over so little even a swelling's flank does not widen by a tenth of a pixel. Longer
// tubes than 16-bit steps can count take longer steps.
constexpr double kArcStep = 0.125;
constexpr double kMostArcSteps = 60000.0;

// Further away than any edge: no layer covers such a pixel.
constexpr std::int16_t kFar = std::numeric_limits<std::int16_t>::max();

std::int16_t inPixelParts(double pixels)
{
    constexpr double kFurthest = kFurthestPixels;
    return static_cast<std::int16_t>(std::lround(std::clamp(pixels, -kFurthest, kFurthest) * kPixel));
}

/// How far a tube of this width reaches from its centre line where a pulse widens it, in points.
double furthestEdge(double width)
{
    return width * 0.5 * (1.0 + kGlassLook.swelling) + kGlassLook.rimLineWidth * 0.5;
}

} // namespace

TubeLayout::TubeLayout(const Key& key)
    : m_key(key), m_samples(sampleCurve(key.curve)), m_normals(orientedNormals(m_samples))
{
    m_arcStep = std::max(kArcStep, m_samples.length() / kMostArcSteps);
    m_arcSteps = static_cast<std::size_t>(std::lround(m_samples.length() / m_arcStep)) + 1;
    locatePixels();
    locateGlow();
}

void TubeLayout::locatePixels()
{
    const double point = 1.0 / m_key.scale; // of a pixel
    const double reach = furthestEdge(m_key.widestTube) + point;
    const double endReach = kGlassLook.rimLineWidth * 0.5 + point;
    TubeLocator locator(m_samples, m_normals);

    m_rows.reserve(static_cast<std::size_t>(m_key.height) + 1);
    for (int y = 0; y < m_key.height; ++y) {
        m_rows.push_back(static_cast<std::uint32_t>(m_blocks.size()));
        for (int x = 0; x < m_key.width; x += kBlockPixels) {
            const FlowPoint centre{(x + 0.5 * kBlockPixels) * point, (y + 0.5) * point};
            if (!locator.narrow(centre, 0.5 * kBlockPixels * point, reach))
                continue;
            TubeBlock block{};
            block.x = static_cast<std::uint16_t>(x);
            block.y = static_cast<std::uint16_t>(y);
            block.nearest = kFar;
            block.ends = -1;
            TubeEnds ends{};
            bool nearEnd = false;
            for (int i = 0; i < kBlockPixels; ++i) {
                const auto lane = static_cast<std::size_t>(i);
                block.distance[lane] = kFar;
                if (x + i >= m_key.width) // past the row's end
                    continue;
                const FlowPoint pixel{(x + i + 0.5) * point, (y + 0.5) * point};
                const TubeCoordinates found = locator.locate(pixel);
                block.arc[lane] = static_cast<std::uint16_t>(std::min<std::size_t>(
                    static_cast<std::size_t>(std::lround(found.arc / m_arcStep)), m_arcSteps - 1));
                block.gradient[lane] = static_cast<std::uint8_t>(
                    std::lround(gradientLocation(m_key.curve.p0, m_key.curve.p3, pixel) * 255.0));
                ends.inside[lane] = inPixelParts(found.inside * m_key.scale);
                if (std::abs(found.distance) > reach || found.inside < -endReach)
                    continue;
                block.distance[lane] = inPixelParts(found.distance * m_key.scale);
                block.nearest
                    = std::min(block.nearest, static_cast<std::int16_t>(std::abs(block.distance[lane])));
                nearEnd = nearEnd || found.inside < endReach;
            }
            if (block.nearest == kFar)
                continue;
            if (nearEnd) {
                block.ends = static_cast<std::int16_t>(m_ends.size());
                m_ends.push_back(ends);
            }
            m_blocks.push_back(block);
        }
    }
    m_rows.push_back(static_cast<std::uint32_t>(m_blocks.size()));
}

void TubeLayout::locateGlow()
{
    const GlowGrid& grid = m_key.grid;
    const double step = grid.step / m_key.scale;
    const double reach = furthestEdge(m_key.widestTube) * kGlassLook.pulseHalo.upper + step;
    TubeLocator locator(m_samples, m_normals);
    for (int row = 1; row + 1 < grid.rows; ++row) {
        for (int column = 1; column + 1 < grid.columns; ++column) {
            const FlowPoint node{(column - grid.margin) * step, (row - grid.margin) * step};
            if (!locator.narrow(node, 0.0, reach))
                continue;
            const TubeCoordinates found = locator.locate(node);
            const double inside = std::clamp(found.inside / step + 0.5, 0.0, 1.0);
            if (inside == 0.0 || std::abs(found.distance) > reach)
                continue;
            m_glowSamples.push_back({
                .column = static_cast<std::uint16_t>(column),
                .row = static_cast<std::uint16_t>(row),
                .section = static_cast<std::uint16_t>(found.sample),
                .beyond = static_cast<float>(found.beyond),
                .distance = static_cast<float>(std::abs(found.distance)),
                .inside = static_cast<float>(inside),
            });
        }
    }
}

} // namespace amperly::glass
