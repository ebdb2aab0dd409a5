#include "flow/glass/kernel_loops.h"
#include "flow/glass/lanes_avx2.h"
#include "flow/glass/x86_kernels.h"

namespace amperly::glass {

const Kernels& avx2Kernels()
{
    static constexpr Kernels kKernels = kernelsOf<Avx2Lanes>("AVX2");
    return kKernels;
}

} // namespace amperly::glass
