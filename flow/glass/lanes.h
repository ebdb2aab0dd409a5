// Lanes: the numbers of sixteen bits that one vector of a processor holds, and what the kernels do
// with all of them at once. These are for any processor, in the compilers' own vectors, which become
// whatever instructions there are. Where a processor has one that compilers don't find, its lanes
// derive from these and replace the operation.
//
// Belongs to kernel_loops.h, whose rules hold here.
#pragma once

#include "flow/glass/tube_motion.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace amperly::glass {
namespace {

static_assert(std::endian::native == std::endian::little, "pixels are taken apart in this order");

template <int kBytes>
struct Lanes {
    static constexpr int kCount = kBytes / 2;
    using Vec [[gnu::vector_size(kBytes)]] = std::uint16_t;
    using Signed [[gnu::vector_size(kBytes)]] = std::int16_t;
    using Words [[gnu::vector_size(kBytes)]] = std::uint32_t;
    using LongWords [[gnu::vector_size(kBytes)]] = std::uint64_t;

    static Vec all(int number) { return Vec{} + static_cast<std::uint16_t>(number); }
    static Vec pairs(std::uint32_t even, std::uint32_t odd)
    {
        return reinterpret_cast<Vec>(Words{} + (even | odd << 16U));
    }
    static Vec load(const void* numbers)
    {
        Vec result;
        std::memcpy(&result, numbers, sizeof result);
        return result;
    }
    /// Numbers of single pixels, so that doubledLow() has those of the first half of the pixels.
    static Vec loadPerPixel(const void* numbers) { return load(numbers); }
    /// The same four numbers over and over.
    static Vec fours(const void* numbers)
    {
        std::uint64_t four = 0;
        std::memcpy(&four, numbers, sizeof four);
        return reinterpret_cast<Vec>(LongWords{} + four);
    }
    static void store(void* target, Vec numbers) { std::memcpy(target, &numbers, sizeof numbers); }

    static Vec add(Vec a, Vec b) { return a + b; }
    static Vec sub(Vec a, Vec b) { return a - b; }
    static Vec lowerProduct(Vec a, Vec b) { return a * b; }
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
    static Vec alphas(Vec a)
    {
        const Words alpha = reinterpret_cast<Words>(a) >> 24;
        return reinterpret_cast<Vec>(alpha | alpha << 16);
    }
    static Vec min(Vec a, Vec b)
    {
        const Signed one = reinterpret_cast<Signed>(a);
        const Signed other = reinterpret_cast<Signed>(b);
        return reinterpret_cast<Vec>(one < other ? one : other);
    }
    static Vec max(Vec a, Vec b)
    {
        const Signed one = reinterpret_cast<Signed>(a);
        const Signed other = reinterpret_cast<Signed>(b);
        return reinterpret_cast<Vec>(one > other ? one : other);
    }
};

} // namespace
} // namespace amperly::glass
