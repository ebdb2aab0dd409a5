#include "flow/glass/tube_motion.h"

#include "flow/glass/glass_look.h"

#include <algorithm>
#include <cmath>

namespace amperly::glass {

namespace {

/// How much each section of a band has of its full opacity. Bands are narrow: they are coloured across
/// as in their middle.
void swellBand(const TubeProfile& profile, const SwellBand& band, std::array<float, kCurveSampleCount>& swell)
{
    const double middle = 0.5 * (band.lower + band.upper);
    swell.fill(0.0F);
    for (const SwellRun& run : swellRuns(profile)) {
        for (std::size_t i = run.first; i <= run.last; ++i)
            swell[i] = static_cast<float>(swellOfGradient(profile, run, profile[i].at(middle)));
    }
}

std::uint32_t wholeNumber(float positive)
{
    constexpr float kHalf = 0.5F; // library functions that round are calls
    return static_cast<std::uint32_t>(static_cast<int>(positive + kHalf));
}

} // namespace

void TubeMotion::update(const TubeLayout& layout, double width, double travelled)
{
    m_profile = tubeProfile(layout.samples(), layout.normals(), width, travelled);
    m_glints = tubeGlints(m_profile, width);
    swellBand(m_profile, kGlassLook.pulseHalo, m_halo);
    swellBand(m_profile, kGlassLook.pulseCore, m_core);
    swellBand(m_profile, kGlassLook.pulseHighlight, m_highlight);

    const auto widest = std::max_element(m_profile.begin(), m_profile.end(),
        [](const TubeSection& a, const TubeSection& b) { return a.half < b.half; });
    const double edge = (widest->half + 0.5 * kGlassLook.rimLineWidth) * layout.key().scale + 0.5;
    m_reach = static_cast<int>(std::ceil(edge * kPixel)) + 1;
    fillColumns(layout);
}

void TubeMotion::fillColumns(const TubeLayout& layout)
{
    m_columns.resize(layout.arcSteps());
    const auto perPoint = static_cast<float>(layout.key().scale * kPixel);
    const auto perStep = static_cast<float>(layout.arcStep());
    constexpr auto kCore = static_cast<float>(kGlassLook.pulseCore.opacity * kOpaque);
    constexpr auto kHighlight = static_cast<float>(kGlassLook.pulseHighlight.opacity * kOpaque);
    constexpr float kLeastLength = 1e-6F;
    std::size_t step = 0;
    for (std::size_t i = 0; i + 1 < kCurveSampleCount; ++i) {
        const auto from = static_cast<float>(layout.samples().lengths[i]);
        const auto to = static_cast<float>(layout.samples().lengths[i + 1]);
        // Rounding may leave a step behind the last section.
        const bool last = i + 2 == kCurveSampleCount;
        const std::size_t end = last ? m_columns.size()
                                     : std::min(static_cast<std::size_t>(to / perStep) + 1, m_columns.size());
        const float perLength = 1.0F / std::max(to - from, kLeastLength);
        const TubeSection& section = m_profile[i];
        const TubeSection& next = m_profile[i + 1];
        const auto half = static_cast<float>(section.half) * perPoint;
        const auto halfRise = static_cast<float>(next.half - section.half) * perPoint;
        const float core = m_core[i] * kCore;
        const float coreRise = (m_core[i + 1] - m_core[i]) * kCore;
        const float highlight = m_highlight[i] * kHighlight;
        const float highlightRise = (m_highlight[i + 1] - m_highlight[i]) * kHighlight;
        for (; step < end; ++step) {
            const float beyond
                = std::clamp((static_cast<float>(step) * perStep - from) * perLength, 0.0F, 1.0F);
            m_columns[step] = tubeColumn(wholeNumber(half + halfRise * beyond),
                wholeNumber(core + coreRise * beyond), wholeNumber(highlight + highlightRise * beyond));
        }
    }
}

} // namespace amperly::glass
