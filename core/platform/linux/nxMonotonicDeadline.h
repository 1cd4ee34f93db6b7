#pragma once

#include <algorithm>
#include <ctime>

/// @file
/// When a wait ends that nobody moves by setting the wall clock.

namespace nxPlatform
{

/// @return the moment so many seconds from now, on CLOCK_MONOTONIC; below none is now, and no wait is longer than some
///         eleven days.
inline timespec MonotonicDeadline(double seconds)
{
    constexpr double longestSleep = 1e6;
    constexpr long nanosecondsPerSecond = 1000000000;

    double const length = std::clamp(seconds, 0.0, longestSleep);
    long const wholeSeconds = static_cast<long>(length);
    long const nanoseconds = static_cast<long>((length - static_cast<double>(wholeSeconds)) * 1e9);

    timespec deadline{};
    (void)clock_gettime(CLOCK_MONOTONIC, &deadline);
    deadline.tv_sec += wholeSeconds;
    deadline.tv_nsec += nanoseconds;
    if (deadline.tv_nsec >= nanosecondsPerSecond)
    {
        deadline.tv_nsec -= nanosecondsPerSecond;
        ++deadline.tv_sec;
    }
    return deadline;
}

} // namespace nxPlatform
