// The builds of the kernels for 64-bit x86 processors; there are none in builds for others.
#pragma once

#include "flow/glass/kernels.h"

namespace amperly::glass {

[[nodiscard]] const Kernels& sse2Kernels(); ///< any of them can
[[nodiscard]] const Kernels& avx2Kernels();
[[nodiscard]] bool processorHasAvx2();

} // namespace amperly::glass
