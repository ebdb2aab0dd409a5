#include "flow/glass/kernels.h"

#include "flow/glass/kernel_loops.h"

#include <array>
#include <cstring>

namespace amperly::glass {

namespace {

/// Eight numbers. The compilers find instructions for all that is done with them.
struct PortableLanes : Lanes<16> {
    using Wide [[gnu::vector_size(32)]] = std::uint32_t;
    using SignedWide [[gnu::vector_size(32)]] = std::int32_t;
    using Bytes [[gnu::vector_size(8)]] = std::uint8_t;

    static Vec loadBytes(const void* numbers)
    {
        Bytes bytes;
        std::memcpy(&bytes, numbers, sizeof bytes);
        return __builtin_convertvector(bytes, Vec);
    }
    static Vec packed(Vec a, Vec b)
    {
        return __builtin_shufflevector(a, b, 0, 2, 4, 6, 8, 10, 12, 14)
            | __builtin_shufflevector(a, b, 1, 3, 5, 7, 9, 11, 13, 15) << 8;
    }
    static void gather(const TubeColumn* columns, const std::uint16_t* arcs, Vec& half, Vec& pulses)
    {
        const Wide found{columns[arcs[0]], columns[arcs[1]], columns[arcs[2]], columns[arcs[3]],
            columns[arcs[4]], columns[arcs[5]], columns[arcs[6]], columns[arcs[7]]};
        half = __builtin_convertvector(found, Vec);
        pulses = __builtin_convertvector(found >> 16, Vec);
    }
    static Vec addSaturated(Vec a, Vec b)
    {
        const Vec sum = a + b;
        return saturated(sum, a, (a ^ sum) & (b ^ sum));
    }
    static Vec subSaturated(Vec a, Vec b)
    {
        const Vec difference = a - b;
        return saturated(difference, a, (a ^ b) & (a ^ difference));
    }
    static Vec subSaturatedUnsigned(Vec a, Vec b) { return a > b ? a - b : Vec{}; }
    static Vec upperProduct(Vec a, Vec b)
    {
        const Wide product = __builtin_convertvector(a, Wide) * __builtin_convertvector(b, Wide);
        return __builtin_convertvector(product >> 16, Vec);
    }
    static Vec upperProductSigned(Vec a, Vec b)
    {
        const SignedWide product = __builtin_convertvector(reinterpret_cast<Signed>(a), SignedWide)
            * __builtin_convertvector(reinterpret_cast<Signed>(b), SignedWide);
        return __builtin_convertvector(product >> 16, Vec);
    }
    static Vec doubledLow(Vec a) { return __builtin_shufflevector(a, a, 0, 0, 1, 1, 2, 2, 3, 3); }
    static Vec doubledHigh(Vec a) { return __builtin_shufflevector(a, a, 4, 4, 5, 5, 6, 6, 7, 7); }
    static bool allZero(Vec a)
    {
        std::uint64_t halves[2] = {};
        std::memcpy(halves, &a, sizeof halves);
        return (halves[0] | halves[1]) == 0;
    }

private:
    /// `result`, but the limit on the side of `a` where the highest bit of `overflown` is set.
    static Vec saturated(Vec result, Vec a, Vec overflown)
    {
        return (overflown & 0x8000) != 0 ? (a >> 15) + 0x7fff : result;
    }
};

constexpr bool kForX86 = AMPERLY_X86_KERNELS;

} // namespace

const Kernels& portableKernels()
{
    static constexpr Kernels kKernels = kernelsOf<PortableLanes>("portable");
    return kKernels;
}

std::span<const Kernels* const> kernelsHere()
{
    if constexpr (kForX86) {
        static const std::array<const Kernels*, 3> s_all{&avx2Kernels(), &sse2Kernels(), &portableKernels()};
        static const bool s_hasAvx2 = processorHasAvx2();
        return std::span(s_all).subspan(s_hasAvx2 ? 0 : 1);
    } else {
        static const std::array<const Kernels*, 1> s_all{&portableKernels()};
        return s_all;
    }
}

} // namespace amperly::glass
