#include "tests/support/allocation_count.h"

#include <cstdlib>
#include <new>

namespace {

long s_allocations = 0;

} // namespace

// The standard library's operator new[] calls this one.
void* operator new(std::size_t size)
{
    ++s_allocations;
    if (void* const block = std::malloc(size == 0 ? 1 : size))
        return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

long amperly::allocationsSoFar()
{
    return s_allocations;
}
