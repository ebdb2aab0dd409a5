#include "flow/glass/x86_kernels.h"

#include <array>

namespace amperly::glass {

namespace {

constexpr bool kForX86 = AMPERLY_X86_KERNELS;

} // namespace

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
