#include "flow/node_glow.h"

#include "flow/diagram_layout.h"
#include "flow/node_look.h"
#include "render/look/pixel_painting.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace amperly {

namespace {

constexpr double kReach = kNodeLook.glowReach;

/// The rounded rectangle as a stack of sharp ones: few enough to be blurred exactly, one by one.
constexpr int kSlices = 7;

/// How much light the blurred edge at 0 lets through at `distance` on its bright side.
double blurredEdge(double distance)
{
    return 0.5 * std::erfc(-distance / (kNodeLook.glowSigma * std::sqrt(2.0)));
}

double blurredSpan(double at, double from, double to)
{
    return blurredEdge(at - from) - blurredEdge(at - to);
}

/// For each slice of the shape's rows from the top: how far its sides are set in.
double inset(double rowsFromEdge)
{
    const double down = kNodeLook.corner - rowsFromEdge;
    return kNodeLook.corner - std::sqrt(std::max(0.0, kNodeLook.corner * kNodeLook.corner - down * down));
}

/// The light at one point of the node's own coordinates.
double light(double x, double y)
{
    double sum
        = blurredSpan(y, kNodeLook.corner, kNodeHeight - kNodeLook.corner) * blurredSpan(x, 0.0, kNodeWidth);
    constexpr double kSlice = kNodeLook.corner / kSlices;
    for (int slice = 0; slice < kSlices; ++slice) {
        const double top = slice * kSlice;
        const double side = inset(top + kSlice / 2.0);
        const double rows = blurredSpan(y, top, top + kSlice)
            + blurredSpan(y, kNodeHeight - top - kSlice, kNodeHeight - top);
        sum += rows * blurredSpan(x, side, kNodeWidth - side);
    }
    return sum;
}

/// The light at every whole point, to be interpolated: it varies slowly.
class CoarseLight {
public:
    CoarseLight()
        : m_columns(static_cast<int>(std::ceil(kNodeWidth + 2.0 * kReach)) + 2)
        , m_rows(static_cast<int>(std::ceil(kNodeHeight + 2.0 * kReach)) + 2)
    {
        // What is left at the reach is taken off everywhere, so that nothing ends with an edge.
        const double rest = light(-kReach, kNodeHeight / 2.0);
        m_light.reserve(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows));
        for (int row = 0; row < m_rows; ++row) {
            for (int column = 0; column < m_columns; ++column)
                m_light.push_back(
                    std::max(0.0, (light(column - kReach, row - kReach) - rest) / (1.0 - rest)));
        }
    }

    /// At a point, in points from the picture's corner.
    [[nodiscard]] double at(double x, double y) const
    {
        const int column = std::clamp(static_cast<int>(x), 0, m_columns - 2);
        const int row = std::clamp(static_cast<int>(y), 0, m_rows - 2);
        const double right = x - column;
        const double down = y - row;
        const double upper = value(column, row) * (1.0 - right) + value(column + 1, row) * right;
        const double lower = value(column, row + 1) * (1.0 - right) + value(column + 1, row + 1) * right;
        return upper * (1.0 - down) + lower * down;
    }

private:
    [[nodiscard]] double value(int column, int row) const
    {
        return m_light[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns)
            + static_cast<std::size_t>(column)];
    }

    int m_columns;
    int m_rows;
    std::vector<double> m_light;
};

} // namespace

QImage nodeGlow(const QColor& color, double scale)
{
    static const CoarseLight coarse;
    QImage picture = clearPicture({kNodeWidth + 2.0 * kReach, kNodeHeight + 2.0 * kReach}, scale);
    for (int y = 0; y < picture.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const double level = coarse.at((x + 0.5) / scale, (y + 0.5) / scale);
            const auto part = [level](float component) {
                return static_cast<int>(std::lround(static_cast<double>(component) * level * 255.0));
            };
            row[x] = qRgba(part(color.redF()), part(color.greenF()), part(color.blueF()),
                static_cast<int>(std::lround(level * 255.0)));
        }
    }
    return picture;
}

} // namespace amperly
