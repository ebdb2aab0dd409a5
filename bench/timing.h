// How long something takes, and what is usual among several times.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace amperly {

inline double nanosecondsOf(auto work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

/// Of at least one value.
inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace amperly
