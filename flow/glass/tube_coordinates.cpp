#include "flow/glass/tube_coordinates.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace amperly::glass {

namespace {

double squaredDistance(const FlowPoint& a, const FlowPoint& b)
{
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    return dx * dx + dy * dy;
}

} // namespace

TubeLocator::TubeLocator(const CurveSamples& samples, const CurveNormals& normals)
    : m_samples(samples)
    , m_normals(normals)
    , m_least(samples.points.front())
    , m_most(samples.points.front())
    , m_side(upperSide(unitNormals(samples)))
{
    for (const FlowPoint& point : samples.points) {
        m_least = {std::min(m_least.x, point.x), std::min(m_least.y, point.y)};
        m_most = {std::max(m_most.x, point.x), std::max(m_most.y, point.y)};
    }
    for (std::size_t i = 1; i < kCurveSampleCount; ++i)
        m_halfSection = std::max(m_halfSection, 0.5 * (samples.lengths[i] - samples.lengths[i - 1]));
}

bool TubeLocator::narrow(const FlowPoint& centre, double radius, double reach)
{
    const double outside
        = std::max({m_least.x - centre.x, centre.x - m_most.x, m_least.y - centre.y, centre.y - m_most.y});
    if (outside > reach + radius)
        return false;
    std::array<double, kCurveSampleCount> squares{};
    for (std::size_t i = 0; i < kCurveSampleCount; ++i)
        squares[i] = squaredDistance(centre, m_samples.points[i]);
    const double nearest = std::sqrt(*std::min_element(squares.begin(), squares.end()));
    // The curve may pass right between two samples.
    if (nearest > std::hypot(reach + radius, m_halfSection))
        return false;
    // A trace more, so that rounding leaves the nearest one in.
    const double furthest = nearest + 2.0 * radius + 1e-6;
    const auto mayBeNearest = [&](double square) { return square <= furthest * furthest; };
    const auto first = std::find_if(squares.begin(), squares.end(), mayBeNearest);
    const auto last = std::find_if(squares.rbegin(), squares.rend(), mayBeNearest);
    m_firstCandidate = static_cast<std::size_t>(first - squares.begin());
    m_lastCandidate = static_cast<std::size_t>(squares.rend() - last) - 1;
    return true;
}

double TubeLocator::ahead(const FlowPoint& point, std::size_t sample) const
{
    const FlowPoint& n = m_normals[sample];
    const FlowPoint& p = m_samples.points[sample];
    return ((point.x - p.x) * n.y - (point.y - p.y) * n.x) * m_side;
}

TubeCoordinates TubeLocator::locate(const FlowPoint& point) const
{
    std::size_t nearest = m_firstCandidate;
    double least = squaredDistance(point, m_samples.points[nearest]);
    for (std::size_t i = nearest + 1; i <= m_lastCandidate; ++i) {
        const double square = squaredDistance(point, m_samples.points[i]);
        if (square < least) {
            least = square;
            nearest = i;
        }
    }

    // The normals on both sides of the foot fan out, so the foot is where the tangential distance
    // to the line between them is nothing.
    constexpr std::size_t kLast = kCurveSampleCount - 1;
    const bool before = nearest == kLast || (nearest > 0 && ahead(point, nearest) < 0.0);
    const std::size_t sample = before ? nearest - 1 : nearest;
    const double fromHere = ahead(point, sample);
    const double toNext = -ahead(point, sample + 1);
    const double both = fromHere + toNext;
    const double beyond = both > 0.0 ? std::clamp(fromHere / both, 0.0, 1.0) : 0.0;

    const auto between = [&](double from, double to) { return from + (to - from) * beyond; };
    const FlowPoint& p0 = m_samples.points[sample];
    const FlowPoint& p1 = m_samples.points[sample + 1];
    const FlowPoint& n0 = m_normals[sample];
    const FlowPoint& n1 = m_normals[sample + 1];
    const FlowPoint foot{between(p0.x, p1.x), between(p0.y, p1.y)};
    const FlowPoint normal{between(n0.x, n1.x), between(n0.y, n1.y)};

    TubeCoordinates coordinates{.sample = sample, .beyond = beyond};
    coordinates.arc = between(m_samples.lengths[sample], m_samples.lengths[sample + 1]);
    coordinates.distance = (point.x - foot.x) * normal.x + (point.y - foot.y) * normal.y;
    coordinates.inside = std::min(coordinates.arc, m_samples.length() - coordinates.arc);
    if (sample == 0 && fromHere < 0.0)
        coordinates.inside = fromHere;
    else if (sample + 1 == kLast && toNext < 0.0)
        coordinates.inside = toNext;
    return coordinates;
}

} // namespace amperly::glass
