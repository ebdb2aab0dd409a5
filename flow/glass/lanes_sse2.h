// Lanes for every 64-bit x86 processor: eight numbers.
#pragma once

#include "flow/glass/tube_motion.h"

#include <cstdint>
#include <emmintrin.h>

namespace amperly::glass {
namespace {

struct Sse2Lanes {
    static constexpr int kCount = 8;
    using Vec = __m128i;

    static Vec all(int number) { return _mm_set1_epi16(static_cast<std::int16_t>(number)); }
    static Vec pairs(int even, int odd)
    {
        return _mm_set1_epi32(
            static_cast<int>(static_cast<unsigned>(even) | static_cast<unsigned>(odd) << 16U));
    }
    static Vec loadAnywhere(const void* numbers)
    {
        return _mm_loadu_si128(static_cast<const __m128i*>(numbers));
    }
    static Vec load(const void* numbers) { return loadAnywhere(numbers); }
    static Vec loadBytes(const void* numbers)
    {
        return _mm_unpacklo_epi8(_mm_loadl_epi64(static_cast<const __m128i*>(numbers)), _mm_setzero_si128());
    }
    static Vec fours(const void* numbers)
    {
        const Vec four = _mm_loadl_epi64(static_cast<const __m128i*>(numbers));
        return _mm_unpacklo_epi64(four, four);
    }
    static void store(void* target, Vec numbers) { _mm_storeu_si128(static_cast<__m128i*>(target), numbers); }
    static Vec loadPixels(const std::uint32_t* pixels) { return loadAnywhere(pixels); }
    static void storePixels(std::uint32_t* pixels, Vec numbers) { store(pixels, numbers); }
    static Vec packed(Vec a, Vec b) { return _mm_packus_epi16(a, b); }

    static void gather(const TubeColumn* columns, const std::uint16_t* arcs, Vec& half, Vec& pulses)
    {
        const auto column = [&](int i) { return _mm_cvtsi32_si128(static_cast<int>(columns[arcs[i]])); };
        const auto four = [&](int i) {
            return _mm_unpacklo_epi64(_mm_unpacklo_epi32(column(i), column(i + 1)),
                _mm_unpacklo_epi32(column(i + 2), column(i + 3)));
        };
        const Vec a = four(0);
        const Vec b = four(4);
        // Packing takes signed numbers: extended by their sign, all of them pass as they are.
        half = _mm_packs_epi32(
            _mm_srai_epi32(_mm_slli_epi32(a, 16), 16), _mm_srai_epi32(_mm_slli_epi32(b, 16), 16));
        pulses = _mm_packs_epi32(_mm_srai_epi32(a, 16), _mm_srai_epi32(b, 16));
    }

    static Vec add(Vec a, Vec b) { return _mm_add_epi16(a, b); }
    static Vec sub(Vec a, Vec b) { return _mm_sub_epi16(a, b); }
    static Vec addSaturated(Vec a, Vec b) { return _mm_adds_epi16(a, b); }
    static Vec subSaturated(Vec a, Vec b) { return _mm_subs_epi16(a, b); }
    static Vec subSaturatedUnsigned(Vec a, Vec b) { return _mm_subs_epu16(a, b); }
    static Vec min(Vec a, Vec b) { return _mm_min_epi16(a, b); }
    static Vec max(Vec a, Vec b) { return _mm_max_epi16(a, b); }
    static Vec lowerProduct(Vec a, Vec b) { return _mm_mullo_epi16(a, b); }
    static Vec upperProduct(Vec a, Vec b) { return _mm_mulhi_epu16(a, b); }
    static Vec upperProductSigned(Vec a, Vec b) { return _mm_mulhi_epi16(a, b); }
    template <int kBits>
    static Vec shiftLeft(Vec a)
    {
        return _mm_slli_epi16(a, kBits);
    }
    template <int kBits>
    static Vec shiftRight(Vec a)
    {
        return _mm_srli_epi16(a, kBits);
    }
    static Vec both(Vec a, Vec b) { return _mm_and_si128(a, b); }
    static Vec either(Vec a, Vec b) { return _mm_or_si128(a, b); }
    static Vec lowBytes(Vec a) { return _mm_and_si128(a, _mm_set1_epi16(0xff)); }
    static Vec highBytes(Vec a) { return _mm_srli_epi16(a, 8); }
    static Vec alphas(Vec a)
    {
        const Vec alpha = _mm_srli_epi32(a, 24);
        return _mm_or_si128(alpha, _mm_slli_epi32(alpha, 16));
    }
    static Vec doubledLow(Vec a) { return _mm_unpacklo_epi16(a, a); }
    static Vec doubledHigh(Vec a) { return _mm_unpackhi_epi16(a, a); }
    static bool allZero(Vec a) { return _mm_movemask_epi8(_mm_cmpeq_epi8(a, _mm_setzero_si128())) == 0xffff; }
};

} // namespace
} // namespace amperly::glass
