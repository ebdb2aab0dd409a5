#include "flow/glass/kernel_loops.h"
#include "flow/glass/lanes_sse2.h"
#include "flow/glass/x86_kernels.h"

namespace amperly::glass {

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
