// Counts what a test program takes from the heap with operator new: linking allocation_count
// replaces the operator for the whole program.
#pragma once

namespace amperly {

/// Allocations of this program since it started.
[[nodiscard]] long allocationsSoFar();

/// Allocations since this object was made.
class AllocationCount {
public:
    [[nodiscard]] long value() const { return allocationsSoFar() - m_before; }

private:
    long m_before = allocationsSoFar();
};

} // namespace amperly
