#include "flow/glass/tube_layout.h"

#include "flow/glass/glass_look.h"
#include "flow/glass/tube_place.h"

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

/// The part of the way from the gradient's start to its end at a point.
class BodyGradient {
public:
    explicit BodyGradient(const Bezier& curve)
        : m_from(curve.p0)
        , m_dx(curve.p3.x - curve.p0.x)
        , m_dy(curve.p3.y - curve.p0.y)
        , m_square(m_dx * m_dx + m_dy * m_dy)
    {
    }

    [[nodiscard]] std::uint8_t at(const FlowPoint& point) const
    {
        if (m_square == 0.0) // a loop: all of it is behind the end
            return std::numeric_limits<std::uint8_t>::max();
        const double part = ((point.x - m_from.x) * m_dx + (point.y - m_from.y) * m_dy) / m_square;
        return static_cast<std::uint8_t>(std::lround(std::clamp(part, 0.0, 1.0) * 255.0));
    }

private:
    FlowPoint m_from;
    double m_dx;
    double m_dy;
    double m_square;
};

/// How far a tube of this width reaches from its centre line where a pulse widens it, in points.
double furthestEdge(double width)
{
    return width * 0.5 * (1.0 + kGlassLook.swelling) + kGlassLook.rimLineWidth * 0.5;
}

} // namespace

TubeLayout::TubeLayout(const Place& place)
    : m_place(place), m_samples(sampleCurve(place.curve)), m_normals(orientedNormals(m_samples))
{
    m_arcStep = std::max(kArcStep, m_samples.length() / kMostArcSteps);
    m_arcSteps = static_cast<std::size_t>(std::lround(m_samples.length() / m_arcStep)) + 1;
    placePixels();
    placeGlow();
}

void TubeLayout::placePixels()
{
    const double point = 1.0 / m_place.scale; // of a pixel
    const double reach = furthestEdge(m_place.widestTube) + point;
    const double endReach = kGlassLook.rimLineWidth * 0.5 + point;
    const BodyGradient gradient(m_place.curve);
    TubePlaces places(m_samples, m_normals);

    m_rows.reserve(static_cast<std::size_t>(m_place.height) + 1);
    for (int y = 0; y < m_place.height; ++y) {
        m_rows.push_back(static_cast<std::uint32_t>(m_blocks.size()));
        for (int x = 0; x < m_place.width; x += kBlockPixels) {
            const FlowPoint centre{(x + 0.5 * kBlockPixels) * point, (y + 0.5) * point};
            if (!places.narrow(centre, 0.5 * kBlockPixels * point, reach))
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
                if (x + i >= m_place.width) // past the row's end
                    continue;
                const FlowPoint pixel{(x + i + 0.5) * point, (y + 0.5) * point};
                const TubePlace found = places.place(pixel);
                block.arc[lane] = static_cast<std::uint16_t>(std::min<std::size_t>(
                    static_cast<std::size_t>(std::lround(found.arc / m_arcStep)), m_arcSteps - 1));
                block.gradient[lane] = gradient.at(pixel);
                ends.inside[lane] = inPixelParts(found.inside * m_place.scale);
                if (std::abs(found.distance) > reach || found.inside < -endReach)
                    continue;
                block.distance[lane] = inPixelParts(found.distance * m_place.scale);
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

void TubeLayout::placeGlow()
{
    const GlowGrid& grid = m_place.grid;
    const double step = grid.step / m_place.scale;
    const double reach = furthestEdge(m_place.widestTube) * kGlassLook.pulseHalo.upper + step;
    TubePlaces places(m_samples, m_normals);
    for (int row = 1; row + 1 < grid.rows; ++row) {
        for (int column = 1; column + 1 < grid.columns; ++column) {
            const FlowPoint node{(column - grid.margin) * step, (row - grid.margin) * step};
            if (!places.narrow(node, 0.0, reach))
                continue;
            const TubePlace found = places.place(node);
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
