#include "flow/glass/kernel_loops.h"
#include "flow/glass/lanes_portable.h"

namespace amperly::glass {

const Kernels& portableKernels()
{
    static constexpr Kernels kKernels = kernelsOf<PortableLanes>("portable");
    return kKernels;
}

} // namespace amperly::glass
