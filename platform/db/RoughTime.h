#pragma once

#include <chrono>
#include <ctime>

/// The monotonic time to some milliseconds, for a tenth of what the exact time costs.
inline std::chrono::steady_clock::time_point RoughTime()
{
    timespec time = {};
    ::clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
    return std::chrono::steady_clock::time_point(
        std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}
