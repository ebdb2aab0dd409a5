#include "flow/glass/glint.h"

#include "flow/glass/fixed_point.h"
#include "flow/glass/glass_look.h"

#include <algorithm>
#include <cmath>

namespace amperly::glass {

namespace {

// A round cap covers as much as a straight one this much shorter than its radius would.
constexpr double kCap = 3.14159265358979323846 / 4.0;

/// How much of a pixel at `distance` lies within `reach` to both sides of nothing.
float covered(float distance, float reach)
{
    return std::clamp(reach - distance + 0.5F, 0.0F, 1.0F) - std::clamp(-reach - distance + 0.5F, 0.0F, 1.0F);
}

} // namespace

AlongTube<TubeGlint> tubeGlints(const TubeProfile& profile, double width)
{
    AlongTube<TubeGlint> glints;
    for (std::size_t i = 1; i + 1 < profile.size(); ++i) {
        const double k = profile[i].k;
        const bool isPeak = profile[i - 1].k <= k && profile[i + 1].k < k;
        if (k <= kGlassLook.leastSwellOfGlint || !isPeak)
            continue;
        glints.add({.centre = profile[i].at(kGlassLook.glintPosition),
            .size = std::max(width * kGlassLook.glintSize, kGlassLook.leastGlintSize) * k,
            .k = k});
    }
    return glints;
}

GlintLight::GlintLight(const TubeGlint& glint, int width, int height, double scale)
    : m_x(static_cast<float>(glint.centre.x * scale))
    , m_y(static_cast<float>(glint.centre.y * scale))
    , m_discRadius(static_cast<float>(kGlassLook.glintDiscRadius * glint.size * scale))
    , m_armAcross(static_cast<float>(
          (kGlassLook.glintArmAcross * glint.size + kCap * 0.5 * kGlassLook.glintArmLineWidth) * scale))
    , m_armUp(static_cast<float>(
          (kGlassLook.glintArmUp * glint.size + kCap * 0.5 * kGlassLook.glintArmLineWidth) * scale))
    , m_armHalfWidth(static_cast<float>(0.5 * kGlassLook.glintArmLineWidth * scale))
    , m_dotRadius(static_cast<float>(kGlassLook.glintDotRadius * scale))
    , m_k(static_cast<float>(glint.k))
{
    const float reach = std::max({m_discRadius, m_armAcross, m_armUp, m_dotRadius}) + 1.0F;
    const auto within = [](float position, int most) {
        return static_cast<int>(std::clamp(position, 0.0F, static_cast<float>(most)));
    };
    m_left = within(m_x - reach, width);
    m_right = within(m_x + reach + 1.0F, width);
    m_top = within(m_y - reach, height);
    m_bottom = within(m_y + reach + 1.0F, height);
}

void GlintLight::row(int y, std::uint16_t* opacities) const
{
    constexpr auto kDisc = static_cast<float>(kGlassLook.glintDiscOpacity);
    constexpr auto kArm = static_cast<float>(kGlassLook.glintArmOpacity);
    constexpr auto kDot = static_cast<float>(kGlassLook.glintDotOpacity);
    const float dy = std::abs(static_cast<float>(y) + 0.5F - m_y);
    const float first = static_cast<float>(m_left) + 0.5F - m_x;
    const float armAcross = covered(dy, m_armHalfWidth);
    const float armUp = covered(dy, m_armUp);
    const float perRadius = 1.0F / m_discRadius;
    const int count = m_right - m_left;
    for (int i = 0; i < count; ++i) {
        const float dx = std::abs(first + static_cast<float>(i));
        const float distance = std::sqrt(dx * dx + dy * dy);
        const float disc = std::max(1.0F - distance * perRadius, 0.0F) * kDisc * m_k;
        const float arm = std::max(armAcross * covered(dx, m_armAcross), armUp * covered(dx, m_armHalfWidth))
            * kArm * m_k;
        const float dot = std::clamp(m_dotRadius - distance + 0.5F, 0.0F, 1.0F) * kDot * m_k;
        const float uncovered = (1.0F - disc) * (1.0F - arm) * (1.0F - dot);
        opacities[i]
            = static_cast<std::uint16_t>(static_cast<int>((1.0F - uncovered) * static_cast<float>(kWhole)));
    }
}

} // namespace amperly::glass
