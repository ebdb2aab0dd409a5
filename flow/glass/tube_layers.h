// The sharp layers of a tube, from its body to the highlights, as arithmetic on the distances of
// pixels from its centre line. A table of finished colours would have to be made anew whenever a
// tube's width changes, which is in most frames; this costs the same in all of them.
//
// Belongs to kernel_loops.h, whose rules hold here.
#pragma once

#include "flow/glass/fixed_point.h"
#include "flow/glass/glass_look.h"

#include <cstdint>

namespace amperly::glass {
namespace {

/// How much light of the tube's own colour and how much white comes from a pixel so far. Both are
/// premultiplied, 65536 being all; together they are its opacity.
template <class L>
struct Glass {
    typename L::Vec tint;
    typename L::Vec white;

    void coverWithTint(typename L::Vec opacity)
    {
        tint = L::add(tint, L::sub(opacity, L::upperProduct(tint, opacity)));
        white = L::sub(white, L::upperProduct(white, opacity));
    }
    void coverWithWhite(typename L::Vec opacity)
    {
        tint = L::sub(tint, L::upperProduct(tint, opacity));
        white = L::add(white, L::sub(opacity, L::upperProduct(white, opacity)));
    }
    void coverWithMix(typename L::Vec opacity, std::uint16_t whiteness)
    {
        const auto mixedIn = L::upperProduct(opacity, L::all(whiteness));
        tint = L::add(L::sub(tint, L::upperProduct(tint, opacity)), L::sub(opacity, mixedIn));
        white = L::add(L::sub(white, L::upperProduct(white, opacity)), mixedIn);
    }
};

/// The sharp layers of a tube, for so many pixels at once. Edges are straight where a pixel meets
/// them, so a pixel's coverage follows from its distance alone.
template <class L, bool kAtEnd>
class TubeLayers {
public:
    using Vec = typename L::Vec;

    TubeLayers(Vec distance, Vec half, Vec inside, Vec halfRim, Vec halfSpecular)
        : m_half(half), m_halfRim(halfRim), m_halfSpecular(halfSpecular), m_full(L::all(kPixel))
    {
        // The far edges of the pixel, to the upper side and to the lower.
        const Vec halfPixel = L::all(kPixel / 2);
        const Vec zero = L::all(0);
        m_up = L::max(L::addSaturated(distance, halfPixel), zero);
        m_down = L::max(L::subSaturated(halfPixel, distance), zero);
        const Vec rimEdge = L::add(half, halfRim);
        m_outer = L::sub(L::sub(m_full, beyond(m_up, rimEdge)), beyond(m_down, rimEdge));
        if constexpr (kAtEnd) {
            const auto along = [&](Vec reach) {
                return L::min(
                    L::max(L::addSaturated(L::addSaturated(inside, halfPixel), reach), zero), m_full);
            };
            m_along = along(zero);
            m_alongInner = along(L::sub(zero, halfRim));
            m_outer = product(m_outer, along(halfRim));
        }
    }

    [[nodiscard]] bool empty() const { return L::allZero(m_outer); }
    [[nodiscard]] bool reachesUp() const { return !L::allZero(m_up); }
    [[nodiscard]] bool reachesDown() const { return !L::allZero(m_down); }

    void body(Vec gradient)
    {
        // The opacity in steps finer than those of opacityCode(), as far as 16 bits go: what the start
        // has beyond a whole step, the gradient's rise, and a half to round by.
        constexpr int kFiner = 11;
        constexpr double kStart = kGlassLook.bodyOpacityAtStart * kOpaque;
        constexpr double kRise = (kGlassLook.bodyOpacityAtEnd - kGlassLook.bodyOpacityAtStart) * kOpaque;
        constexpr int kWholeStart = static_cast<int>(kStart);
        constexpr int kBeyond = static_cast<int>((kStart - kWholeStart + 0.5) * (1 << kFiner));
        constexpr int kRisePerStep = nearestWhole(kRise / 255.0 * (1 << kFiner));
        static_assert(kRisePerStep * 255 + kBeyond <= 65535);
        const Vec rise = L::add(L::lowerProduct(gradient, L::all(kRisePerStep)), L::all(kBeyond));
        const Vec opacity = L::add(L::all(kWholeStart), L::template shiftRight<kFiner>(rise));
        const Vec covered = L::sub(L::sub(m_full, beyond(m_up, m_half)), beyond(m_down, m_half));
        m_glass.tint = L::lowerProduct(clipped(covered), opacity);
        m_glass.white = L::all(0);
    }
    void lowerShade()
    {
        constexpr Ribbon kShade = kGlassLook.lowerShade;
        m_glass.coverWithTint(ribbon(
            m_down, partCode(-kShade.upper), partCode(-kShade.lower), L::all(opacityCode(kShade.opacity))));
    }
    void lowerInnerShade()
    {
        constexpr Ribbon kShade = kGlassLook.lowerInnerShade;
        m_glass.coverWithTint(ribbon(
            m_down, partCode(-kShade.upper), partCode(-kShade.lower), L::all(opacityCode(kShade.opacity))));
    }
    void pulseCore(Vec opacity)
    {
        constexpr SwellBand kCore = kGlassLook.pulseCore;
        m_glass.coverWithMix(ribbon(m_down, partCode(-kCore.upper), partCode(-kCore.lower), opacity),
            partCode(kGlassLook.pulseCoreWhite));
    }
    void upperSheen()
    {
        constexpr Ribbon kSheen = kGlassLook.upperSheen;
        m_glass.coverWithWhite(ribbon(
            m_up, partCode(kSheen.lower), partCode(kSheen.upper), L::all(opacityCode(kSheen.opacity))));
    }
    void rim()
    {
        const Vec innerEdge = L::subSaturatedUnsigned(m_half, m_halfRim);
        Vec inner = L::sub(L::sub(m_full, beyond(m_up, innerEdge)), beyond(m_down, innerEdge));
        if constexpr (kAtEnd)
            inner = product(inner, m_alongInner);
        m_glass.coverWithTint(
            L::lowerProduct(L::sub(m_outer, inner), L::all(opacityCode(kGlassLook.rimOpacity))));
    }
    void specularLine()
    {
        const Vec line = position(partCode(kGlassLook.specularPosition));
        const Vec covered = L::sub(beyond(m_up, L::subSaturatedUnsigned(line, m_halfSpecular)),
            beyond(m_up, L::add(line, m_halfSpecular)));
        m_glass.coverWithWhite(
            L::lowerProduct(clipped(covered), L::all(opacityCode(kGlassLook.specularOpacity))));
    }
    void highlightBand()
    {
        constexpr Ribbon kBand = kGlassLook.highlightBand;
        m_glass.coverWithWhite(
            ribbon(m_up, partCode(kBand.lower), partCode(kBand.upper), L::all(opacityCode(kBand.opacity))));
    }
    void pulseHighlight(Vec opacity)
    {
        constexpr SwellBand kHighlight = kGlassLook.pulseHighlight;
        m_glass.coverWithWhite(ribbon(m_up, partCode(kHighlight.lower), partCode(kHighlight.upper), opacity));
    }

    [[nodiscard]] const Glass<L>& glass() const { return m_glass; }

private:
    /// Of each pixel, how much lies beyond an edge; `side` is its own far edge.
    [[nodiscard]] Vec beyond(Vec side, Vec edge) const
    {
        return L::min(L::subSaturatedUnsigned(side, edge), m_full);
    }
    /// Where a part of the half width is.
    [[nodiscard]] Vec position(std::uint16_t part) const
    {
        return part == kWhole ? m_half : L::upperProduct(m_half, L::all(part));
    }
    [[nodiscard]] static Vec product(Vec covered, Vec along)
    {
        return L::upperProduct(L::template shiftLeft<4>(covered), L::template shiftLeft<4>(along));
    }
    [[nodiscard]] Vec clipped(Vec covered) const
    {
        if constexpr (kAtEnd)
            return product(covered, m_along);
        else
            return covered;
    }
    /// What a ribbon between two parts of the half width on one side hides of each pixel.
    [[nodiscard]] Vec ribbon(Vec side, std::uint16_t from, std::uint16_t to, Vec opacity) const
    {
        const Vec covered = L::sub(beyond(side, position(from)), beyond(side, position(to)));
        return L::lowerProduct(clipped(covered), opacity);
    }

    Vec m_half;
    Vec m_halfRim;
    Vec m_halfSpecular;
    Vec m_full;
    Vec m_up;
    Vec m_down;
    Vec m_outer; ///< coverage by the body and its rim
    Vec m_along; ///< coverage by what lies between the tube's ends
    Vec m_alongInner; ///< the same, inside of the rim
    Glass<L> m_glass;
};

} // namespace
} // namespace amperly::glass
