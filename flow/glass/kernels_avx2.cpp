#include "flow/glass/kernel_loops.h"

#include <immintrin.h>

namespace amperly::glass {

namespace {

/// Sixteen numbers, on x86 processors with AVX2.
///
/// Its registers are two halves that most instructions treat apart. Numbers of single pixels are kept
/// so that each half has four of the first eight pixels and four of the last eight: doubled, they are
/// then in the order of the pixels.
struct Avx2Lanes : Lanes<32> {
    static __m256i raw(Vec a) { return reinterpret_cast<__m256i>(a); }
    static Vec vec(__m256i a) { return reinterpret_cast<Vec>(a); }

    static Vec split(__m256i inOrder) { return vec(_mm256_permute4x64_epi64(inOrder, 0b11'01'10'00)); }

    static Vec loadPerPixel(const void* numbers) { return split(raw(load(numbers))); }
    static Vec loadBytes(const void* numbers)
    {
        return split(_mm256_cvtepu8_epi16(_mm_loadu_si128(static_cast<const __m128i*>(numbers))));
    }
    static Vec packed(Vec a, Vec b) { return split(_mm256_packus_epi16(raw(a), raw(b))); }
    static Vec doubledLow(Vec a) { return vec(_mm256_unpacklo_epi16(raw(a), raw(a))); }
    static Vec doubledHigh(Vec a) { return vec(_mm256_unpackhi_epi16(raw(a), raw(a))); }
    static bool allZero(Vec a) { return _mm256_testz_si256(raw(a), raw(a)) != 0; }

    static void gather(const TubeColumn* columns, const std::uint16_t* arcs, Vec& half, Vec& pulses)
    {
        const auto eight = [&](int i) {
            const __m128i steps = _mm_loadu_si128(reinterpret_cast<const __m128i*>(arcs + i));
            return _mm256_i32gather_epi32(
                reinterpret_cast<const int*>(columns), _mm256_cvtepu16_epi32(steps), 4);
        };
        const __m256i a = eight(0);
        const __m256i b = eight(8);
        const __m256i low = _mm256_set1_epi32(0xffff);
        half = vec(_mm256_packus_epi32(_mm256_and_si256(a, low), _mm256_and_si256(b, low)));
        pulses = vec(_mm256_packus_epi32(_mm256_srli_epi32(a, 16), _mm256_srli_epi32(b, 16)));
    }

    static Vec addSaturated(Vec a, Vec b) { return vec(_mm256_adds_epi16(raw(a), raw(b))); }
    static Vec subSaturated(Vec a, Vec b) { return vec(_mm256_subs_epi16(raw(a), raw(b))); }
    static Vec subSaturatedUnsigned(Vec a, Vec b) { return vec(_mm256_subs_epu16(raw(a), raw(b))); }
    static Vec upperProduct(Vec a, Vec b) { return vec(_mm256_mulhi_epu16(raw(a), raw(b))); }
    static Vec upperProductSigned(Vec a, Vec b) { return vec(_mm256_mulhi_epi16(raw(a), raw(b))); }
};

} // namespace

const Kernels& avx2Kernels()
{
    static constexpr Kernels kKernels = kernelsOf<Avx2Lanes>("AVX2");
    return kKernels;
}

} // namespace amperly::glass
