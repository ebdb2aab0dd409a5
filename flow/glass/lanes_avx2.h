// Lanes for x86 processors with AVX2: sixteen numbers.
//
// Its registers are two halves that most instructions treat apart. Numbers of single pixels are kept
// so that each half has four of the first eight pixels and four of the last eight: doubled, they are
// then in the order of the pixels.
#pragma once

#include "flow/glass/tube_motion.h"

#include <cstdint>
#include <immintrin.h>

namespace amperly::glass {
namespace {

struct Avx2Lanes {
    static constexpr int kCount = 16;
    using Vec = __m256i;

    static Vec split(Vec inOrder) { return _mm256_permute4x64_epi64(inOrder, 0b11'01'10'00); }

    static Vec all(int number) { return _mm256_set1_epi16(static_cast<std::int16_t>(number)); }
    static Vec pairs(int even, int odd)
    {
        return _mm256_set1_epi32(
            static_cast<int>(static_cast<unsigned>(even) | static_cast<unsigned>(odd) << 16U));
    }
    static Vec loadAnywhere(const void* numbers)
    {
        return _mm256_loadu_si256(static_cast<const __m256i*>(numbers));
    }
    static Vec load(const void* numbers) { return split(loadAnywhere(numbers)); }
    static Vec loadBytes(const void* numbers)
    {
        return split(_mm256_cvtepu8_epi16(_mm_loadu_si128(static_cast<const __m128i*>(numbers))));
    }
    static Vec fours(const void* numbers)
    {
        return _mm256_broadcastq_epi64(_mm_loadl_epi64(static_cast<const __m128i*>(numbers)));
    }
    static void store(void* target, Vec numbers)
    {
        _mm256_storeu_si256(static_cast<__m256i*>(target), numbers);
    }
    static Vec loadPixels(const std::uint32_t* pixels) { return loadAnywhere(pixels); }
    static void storePixels(std::uint32_t* pixels, Vec numbers) { store(pixels, numbers); }
    static Vec packed(Vec a, Vec b) { return split(_mm256_packus_epi16(a, b)); }

    static void gather(const TubeColumn* columns, const std::uint16_t* arcs, Vec& half, Vec& pulses)
    {
        const auto eight = [&](int i) {
            const __m128i steps = _mm_loadu_si128(reinterpret_cast<const __m128i*>(arcs + i));
            return _mm256_i32gather_epi32(
                reinterpret_cast<const int*>(columns), _mm256_cvtepu16_epi32(steps), 4);
        };
        const Vec a = eight(0);
        const Vec b = eight(8);
        const Vec low = _mm256_set1_epi32(0xffff);
        half = _mm256_packus_epi32(_mm256_and_si256(a, low), _mm256_and_si256(b, low));
        pulses = _mm256_packus_epi32(_mm256_srli_epi32(a, 16), _mm256_srli_epi32(b, 16));
    }

    static Vec add(Vec a, Vec b) { return _mm256_add_epi16(a, b); }
    static Vec sub(Vec a, Vec b) { return _mm256_sub_epi16(a, b); }
    static Vec addSaturated(Vec a, Vec b) { return _mm256_adds_epi16(a, b); }
    static Vec subSaturated(Vec a, Vec b) { return _mm256_subs_epi16(a, b); }
    static Vec subSaturatedUnsigned(Vec a, Vec b) { return _mm256_subs_epu16(a, b); }
    static Vec min(Vec a, Vec b) { return _mm256_min_epi16(a, b); }
    static Vec max(Vec a, Vec b) { return _mm256_max_epi16(a, b); }
    static Vec lowerProduct(Vec a, Vec b) { return _mm256_mullo_epi16(a, b); }
    static Vec upperProduct(Vec a, Vec b) { return _mm256_mulhi_epu16(a, b); }
    static Vec upperProductSigned(Vec a, Vec b) { return _mm256_mulhi_epi16(a, b); }
    template <int kBits>
    static Vec shiftLeft(Vec a)
    {
        return _mm256_slli_epi16(a, kBits);
    }
    template <int kBits>
    static Vec shiftRight(Vec a)
    {
        return _mm256_srli_epi16(a, kBits);
    }
    static Vec both(Vec a, Vec b) { return _mm256_and_si256(a, b); }
    static Vec either(Vec a, Vec b) { return _mm256_or_si256(a, b); }
    static Vec lowBytes(Vec a) { return _mm256_and_si256(a, _mm256_set1_epi16(0xff)); }
    static Vec highBytes(Vec a) { return _mm256_srli_epi16(a, 8); }
    static Vec alphas(Vec a)
    {
        const Vec alpha = _mm256_srli_epi32(a, 24);
        return _mm256_or_si256(alpha, _mm256_slli_epi32(alpha, 16));
    }
    static Vec doubledLow(Vec a) { return _mm256_unpacklo_epi16(a, a); }
    static Vec doubledHigh(Vec a) { return _mm256_unpackhi_epi16(a, a); }
    static bool allZero(Vec a) { return _mm256_testz_si256(a, a) != 0; }
};

} // namespace
} // namespace amperly::glass
