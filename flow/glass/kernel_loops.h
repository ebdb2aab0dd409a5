// The loops over pixels, for processors that do `L::kCount` numbers of sixteen bits at once. Each
// kernels_….cpp includes this once with lanes of its own.
//
// Everything here belongs to the file that includes it: what is compiled for one processor must not
// be what the linker picks for another. For the same reason nothing here calls the library.
#pragma once

#include "flow/glass/kernels.h"
#include "flow/glass/lanes.h"
#include "flow/glass/tube_layers.h"

namespace amperly::glass {
namespace {

// A pixel's four bytes are worked on as two pairs of 16-bit numbers: blue with red, green with
// alpha. A number for each pixel is doubled to meet its pairs.

template <class L, bool kAtEnd>
bool tubeLight(const TubeRows& rows, const TubeBlock& block, int lane, Glass<L>& glass)
{
    using Vec = typename L::Vec;
    Vec half;
    Vec pulses;
    L::gather(rows.columns, block.arc + lane, half, pulses);
    Vec inside = half;
    if constexpr (kAtEnd)
        inside = L::loadPerPixel(rows.ends[block.ends].inside + lane);
    TubeLayers<L, kAtEnd> layers(L::loadPerPixel(block.distance + lane), half, inside, L::all(rows.halfRim),
        L::all(rows.halfSpecular));
    if (layers.empty())
        return false;

    // Back to front. What lies on the side that no pixel is on may be left out.
    const bool upper = layers.reachesUp();
    const bool lower = layers.reachesDown();
    layers.body(L::loadBytes(block.gradient + lane));
    if (lower) {
        layers.lowerShade();
        layers.lowerInnerShade();
        layers.pulseCore(L::lowBytes(pulses));
    }
    if (upper)
        layers.upperSheen();
    layers.rim();
    if (upper) {
        layers.specularLine();
        layers.highlightBand();
        layers.pulseHighlight(L::highBytes(pulses));
    }
    glass = layers.glass();
    return true;
}

/// Half of as many pixels as there are lanes: `light` and `opacity` are doubled for the pairs.
/// `light` has the tube's, whose part that a later glow leaves is put over what is there.
template <class L>
typename L::Vec blendPair(typename L::Vec under, typename L::Vec light, typename L::Vec opacity,
    typename L::Vec over, typename L::Vec overOpacity, bool covered)
{
    using Vec = typename L::Vec;
    // Without a later glow: under × (1 - opacity) + light. What is there already has that glow in
    // it, so the part of it that the tube hides has to come back, and the light loses what it hides.
    const Vec below = L::template shiftLeft<6>(under);
    Vec sum = L::add(L::sub(below, L::upperProduct(below, opacity)), light);
    if (covered) {
        sum = L::add(sum, L::upperProduct(L::template shiftLeft<6>(over), opacity));
        sum = L::sub(sum, L::upperProduct(light, overOpacity));
    }
    return L::template shiftRight<6>(L::add(sum, L::all(kChannelStep / 2)));
}

/// Blends L::kCount pixels' glass into them. `blueRed` and `greenAlpha` are the tube's colour.
template <class L>
void blend(std::uint32_t* pixels, const std::uint32_t* over, const Glass<L>& glass, typename L::Vec blueRed,
    typename L::Vec greenAlpha)
{
    using Vec = typename L::Vec;
    const Vec full = L::all(kFullChannel);
    const Vec lowBytes = L::all(0xff);
    const Vec tint = L::upperProduct(glass.tint, full);
    const Vec white = L::upperProduct(glass.white, full);
    const Vec opacity = L::add(glass.tint, glass.white);
    const bool covered = over != nullptr;
    for (int part = 0; part < 2; ++part) {
        const auto doubled = [&](Vec each) { return part == 0 ? L::doubledLow(each) : L::doubledHigh(each); };
        const int offset = part * L::kCount / 2;
        const Vec pixel = L::load(pixels + offset);
        const Vec overPixel = covered ? L::load(over + offset) : lowBytes;
        const Vec overAlpha = L::alphas(overPixel); // 8 bits, in both numbers of a pair
        // 255 is all of it: 257 times is 65535.
        const Vec overOpacity = L::add(L::template shiftLeft<8>(overAlpha), overAlpha);
        const auto light
            = [&](Vec color) { return L::add(L::upperProduct(doubled(tint), color), doubled(white)); };
        const Vec blended = blendPair<L>(L::both(pixel, lowBytes), light(blueRed), doubled(opacity),
            L::both(overPixel, lowBytes), overOpacity, covered);
        const Vec blendedUpper = blendPair<L>(L::template shiftRight<8>(pixel), light(greenAlpha),
            doubled(opacity), L::template shiftRight<8>(overPixel), overOpacity, covered);
        L::store(pixels + offset, L::either(blended, L::template shiftLeft<8>(blendedUpper)));
    }
}

template <class L>
[[gnu::flatten]] void paintTube(const TubeRows& rows)
{
    const auto blueRed = L::pairs(rows.blue, rows.red);
    const auto greenAlpha = L::pairs(rows.green, kWhole);
    for (const TubeBlock* block = rows.first; block != rows.last; ++block) {
        if (block->nearest > rows.reach)
            continue;
        const int offset = (block->y - rows.top) * rows.stride + block->x;
        const int overOffset = (block->y - rows.top) * rows.overStride + block->x;
        for (int lane = 0; lane < kBlockPixels; lane += L::kCount) {
            Glass<L> glass;
            const bool any = block->ends < 0 ? tubeLight<L, false>(rows, *block, lane, glass)
                                             : tubeLight<L, true>(rows, *block, lane, glass);
            if (any)
                blend<L>(rows.pixels + offset + lane,
                    rows.over == nullptr ? nullptr : rows.over + overOffset + lane, glass, blueRed,
                    greenAlpha);
        }
    }
}

template <class L>
[[gnu::flatten]] void paintLight(const LightRow& row)
{
    const auto none = L::all(0);
    for (int lane = 0; lane < row.count; lane += L::kCount) {
        const Glass<L> glass{none, L::loadPerPixel(row.opacities + lane)};
        blend<L>(row.pixels + lane, row.over == nullptr ? nullptr : row.over + lane, glass, none, none);
    }
}

template <class L>
[[gnu::flatten]] void storeGlow(const GlowRow& row)
{
    constexpr int kChannels = 4;
    const int values = (row.nodes + 1) * kChannels;
    std::int16_t* const nodes = row.scratch;
    std::int16_t* const steps = row.scratch + values + kRowSlack;

    // The nodes at this height, rounded for good here, and twice the way to each one's neighbour.
    const auto down = L::all(static_cast<std::uint16_t>(row.down));
    const auto rounding = L::all(kChannelStep / 2);
    const auto twice = [](auto difference) { return L::template shiftLeft<1>(difference); };
    for (int i = 0; i < values; i += L::kCount) {
        const auto above = L::load(row.above + i);
        const auto way = L::sub(L::load(row.below + i), above);
        L::store(nodes + i, L::add(L::add(above, L::upperProductSigned(twice(way), down)), rounding));
    }
    for (int i = 0; i < values - kChannels; i += L::kCount)
        L::store(steps + i, twice(L::sub(L::load(nodes + i + kChannels), L::load(nodes + i))));

    // What is written too far is written again, by the next node or by the turn before this one.
    constexpr int kPixels = L::kCount / 2;
    for (int x = (row.step - 1) / kPixels * kPixels; x >= 0; x -= kPixels) {
        const auto across = L::load(row.across + x * kChannels);
        const auto acrossNext = L::load(row.across + x * kChannels + L::kCount);
        std::uint32_t* pixels = row.pixels + x;
        for (int value = 0; value < values - kChannels; value += kChannels, pixels += row.step) {
            const auto base = L::fours(nodes + value);
            const auto way = L::fours(steps + value);
            const auto channels = [&](auto part) {
                return L::template shiftRight<6>(L::add(base, L::upperProductSigned(way, part)));
            };
            L::store(pixels, L::packed(channels(across), channels(acrossNext)));
        }
    }
}

template <class L>
constexpr Kernels kernelsOf(const char* name)
{
    return {name, storeGlow<L>, paintTube<L>, paintLight<L>};
}

} // namespace
} // namespace amperly::glass
