// Counts what this program takes from the heap, by whichever library and by whichever name:
// operator new and Qt's containers end in malloc() as well, which heap_count.cpp replaces.
#pragma once

namespace amperly {

/// Calls of malloc(), calloc(), realloc() and aligned_alloc() since the program started.
[[nodiscard]] long heapRequests();

} // namespace amperly
