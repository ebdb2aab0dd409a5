// Lanes for any processor: eight numbers in a vector of the compilers' own, which they turn into
// whatever instructions there are.
#pragma once

#include "flow/glass/tube_motion.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace amperly::glass {
namespace {

static_assert(std::endian::native == std::endian::little, "pixels are taken apart in this order");

struct PortableLanes {
    static constexpr int kCount = 8;
    using Vec [[gnu::vector_size(16)]] = std::uint16_t;
    using Signed [[gnu::vector_size(16)]] = std::int16_t;
    using Wide [[gnu::vector_size(32)]] = std::uint32_t;
    using SignedWide [[gnu::vector_size(32)]] = std::int32_t;
    using Bytes [[gnu::vector_size(8)]] = std::uint8_t;

    static Vec all(int number) { return Vec{} + static_cast<std::uint16_t>(number); }
    static Vec pairs(std::uint16_t even, std::uint16_t odd)
    {
        return Vec{even, odd, even, odd, even, odd, even, odd};
    }
    static Vec loadAnywhere(const void* numbers)
    {
        Vec result;
        std::memcpy(&result, numbers, sizeof result);
        return result;
    }
    static Vec load(const void* numbers) { return loadAnywhere(numbers); }
    static Vec loadBytes(const void* numbers)
    {
        Bytes bytes;
        std::memcpy(&bytes, numbers, sizeof bytes);
        return __builtin_convertvector(bytes, Vec);
    }
    static Vec fours(const void* numbers)
    {
        std::uint64_t four = 0;
        std::memcpy(&four, numbers, sizeof four);
        const std::uint64_t twice[] = {four, four};
        return loadAnywhere(twice);
    }
    static void store(void* target, Vec numbers) { std::memcpy(target, &numbers, sizeof numbers); }
    static Vec loadPixels(const std::uint32_t* pixels) { return loadAnywhere(pixels); }
    static void storePixels(std::uint32_t* pixels, Vec numbers) { store(pixels, numbers); }
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

    static Vec add(Vec a, Vec b) { return a + b; }
    static Vec sub(Vec a, Vec b) { return a - b; }
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
    static Vec min(Vec a, Vec b) { return reinterpret_cast<Signed>(a) < reinterpret_cast<Signed>(b) ? a : b; }
    static Vec max(Vec a, Vec b) { return reinterpret_cast<Signed>(a) > reinterpret_cast<Signed>(b) ? a : b; }
    static Vec lowerProduct(Vec a, Vec b) { return a * b; }
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
    template <int kBits>
    static Vec shiftLeft(Vec a)
    {
        return a << kBits;
    }
    template <int kBits>
    static Vec shiftRight(Vec a)
    {
        return a >> kBits;
    }
    static Vec both(Vec a, Vec b) { return a & b; }
    static Vec either(Vec a, Vec b) { return a | b; }
    static Vec lowBytes(Vec a) { return a & 0xff; }
    static Vec highBytes(Vec a) { return a >> 8; }
    /// Each pixel's alpha, in both of its numbers.
    static Vec alphas(Vec a) { return __builtin_shufflevector(a, a, 1, 1, 3, 3, 5, 5, 7, 7) >> 8; }
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

} // namespace
} // namespace amperly::glass
