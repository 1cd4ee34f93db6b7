#pragma once

#include "core/platform/nxExport.h"

#include <atomic>

/// @file
/// A stopwatch.

/// Measures durations by the system's high-resolution counter, which knows no calendar and is not moved when the wall
/// clock is set.
///
/// A plain value: nothing throws or logs, and a counter that threads share is guarded by its owner. The two static
/// operations may be called from any thread.
///
/// @code
/// nxElapsedTimeCounter counter;
/// Work();
/// double const seconds = counter.GetElapsedTimeInSeconds();
/// @endcode
class NX_CORE_API nxElapsedTimeCounter
{
public:
    /// Starts now.
    nxElapsedTimeCounter();

    /// A copy has the same start, so it goes on reporting the same elapsed time.
    nxElapsedTimeCounter(nxElapsedTimeCounter const& other) = default;
    nxElapsedTimeCounter& operator=(nxElapsedTimeCounter const& other) = default;
    virtual ~nxElapsedTimeCounter();

    /// Starts anew.
    void Reset();

    double GetElapsedTimeInSeconds() const;

    /// Starts the process-wide measurement anew, for all threads.
    static void ResetGlobalTime();

    /// Seconds since the last ResetGlobalTime(); before the first, the counter's whole value.
    static double GetGlobalElapsedTimeInSeconds();

private:
    long long _startCount;

    static long long const _countsPerSecond;
    static std::atomic<long long> _globalStartTime;
};
