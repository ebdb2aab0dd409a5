#include "tests/platform/linux/tray/allocation_count.h"

#include <cstdlib>
#include <new>

namespace {

long s_count = 0;

void* counted(std::size_t size)
{
    ++s_count;
    if (void* memory = std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

} // namespace

void* operator new(std::size_t size)
{
    return counted(size);
}

void* operator new[](std::size_t size)
{
    return counted(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

long amperly::test::allocationCount()
{
    return s_count;
}
