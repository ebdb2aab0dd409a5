// Counts what a test program takes from the heap with operator new. To be included by exactly
// one source file of a program, because it replaces the operators.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

namespace amperly {

inline long allocationCount = 0;

/// Allocations since this object was made.
class AllocationCount {
public:
    [[nodiscard]] long value() const { return allocationCount - m_before; }

private:
    long m_before = allocationCount;
};

} // namespace amperly

void* operator new(std::size_t size)
{
    ++amperly::allocationCount;
    if (void* const block = std::malloc(size))
        return block;
    throw std::bad_alloc{};
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}
