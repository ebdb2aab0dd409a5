// How often this test program has asked for memory so far.
#pragma once

#include <cstddef>

namespace amperly {

[[nodiscard]] std::size_t allocationCount();

} // namespace amperly
