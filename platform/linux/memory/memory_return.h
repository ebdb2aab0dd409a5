// Gives memory back that start-up or a closed window has left behind. A program that is read
// from a library once and then sleeps all day need not keep those pages.
//
// Two things are given back: free heap, and pages of mapped files that nothing has written to.
// The second kind stays in the kernel's page cache and is mapped in again when it is touched.
#pragma once

#include <cstddef>

namespace amperly {

/// Gives back what can be given back and returns the size of the file mappings let go, in
/// bytes. Takes a millisecond or two; meant for moments of rest, not for every tick.
std::size_t returnUnusedMemory();

/// From now on what is large, a window's picture say, is mapped by itself and goes back to the
/// system when it is freed. Call it first of all. Left alone, the C library moves such blocks
/// into the heap after the first was freed, and there small ones keep the room between them.
void keepLargeBlocksApart();

} // namespace amperly
