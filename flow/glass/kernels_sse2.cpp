#include "flow/glass/kernel_loops.h"

#include <emmintrin.h>

namespace amperly::glass {

namespace {

/// Eight numbers, on every 64-bit x86 processor.
struct Sse2Lanes : Lanes<16> {
    static __m128i raw(Vec a) { return reinterpret_cast<__m128i>(a); }
    static Vec vec(__m128i a) { return reinterpret_cast<Vec>(a); }

    static Vec loadBytes(const void* numbers)
    {
        return vec(
            _mm_unpacklo_epi8(_mm_loadl_epi64(static_cast<const __m128i*>(numbers)), _mm_setzero_si128()));
    }
    static Vec packed(Vec a, Vec b) { return vec(_mm_packus_epi16(raw(a), raw(b))); }
    static Vec doubledLow(Vec a) { return vec(_mm_unpacklo_epi16(raw(a), raw(a))); }
    static Vec doubledHigh(Vec a) { return vec(_mm_unpackhi_epi16(raw(a), raw(a))); }
    static bool allZero(Vec a)
    {
        return _mm_movemask_epi8(_mm_cmpeq_epi8(raw(a), _mm_setzero_si128())) == 0xffff;
    }
    static void gather(const TubeColumn* columns, const std::uint16_t* arcs, Vec& half, Vec& pulses)
    {
        const auto column = [&](int i) { return _mm_cvtsi32_si128(static_cast<int>(columns[arcs[i]])); };
        const auto four = [&](int i) {
            return _mm_unpacklo_epi64(_mm_unpacklo_epi32(column(i), column(i + 1)),
                _mm_unpacklo_epi32(column(i + 2), column(i + 3)));
        };
        const __m128i a = four(0);
        const __m128i b = four(4);
        // Packing takes signed numbers: extended by their sign, all of them pass as they are.
        half = vec(_mm_packs_epi32(
            _mm_srai_epi32(_mm_slli_epi32(a, 16), 16), _mm_srai_epi32(_mm_slli_epi32(b, 16), 16)));
        pulses = vec(_mm_packs_epi32(_mm_srai_epi32(a, 16), _mm_srai_epi32(b, 16)));
    }

    static Vec addSaturated(Vec a, Vec b) { return vec(_mm_adds_epi16(raw(a), raw(b))); }
    static Vec subSaturated(Vec a, Vec b) { return vec(_mm_subs_epi16(raw(a), raw(b))); }
    static Vec subSaturatedUnsigned(Vec a, Vec b) { return vec(_mm_subs_epu16(raw(a), raw(b))); }
    static Vec upperProduct(Vec a, Vec b) { return vec(_mm_mulhi_epu16(raw(a), raw(b))); }
    static Vec upperProductSigned(Vec a, Vec b) { return vec(_mm_mulhi_epi16(raw(a), raw(b))); }
};

} // namespace

const Kernels& sse2Kernels()
{
    static constexpr Kernels kKernels = kernelsOf<Sse2Lanes>("SSE2");
    return kKernels;
}

bool processorHasAvx2()
{
    return __builtin_cpu_supports("avx2") != 0;
}

} // namespace amperly::glass
