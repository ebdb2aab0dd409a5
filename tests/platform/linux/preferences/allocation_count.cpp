#include "tests/platform/linux/preferences/allocation_count.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t s_allocations = 0;

}

void* operator new(std::size_t size)
{
    ++s_allocations;
    void* const memory = std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace amperly {

std::size_t allocationCount()
{
    return s_allocations;
}

} // namespace amperly
