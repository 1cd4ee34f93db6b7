#include "core/time/nxElapsedTimeCounter.h"

#include "core/platform/nxClock.h"

constinit long long const nxElapsedTimeCounter::_countsPerSecond = nxPlatform::QueryPerformanceFrequency();
constinit std::atomic<long long> nxElapsedTimeCounter::_globalStartTime = 0;

nxElapsedTimeCounter::nxElapsedTimeCounter() : _startCount(nxPlatform::QueryPerformanceCounter())
{
}

nxElapsedTimeCounter::~nxElapsedTimeCounter() = default;

void nxElapsedTimeCounter::Reset()
{
    _startCount = nxPlatform::QueryPerformanceCounter();
}

double nxElapsedTimeCounter::GetElapsedTimeInSeconds() const
{
    long long const elapsed = nxPlatform::QueryPerformanceCounter() - _startCount;
    return static_cast<double>(elapsed) / static_cast<double>(_countsPerSecond);
}

void nxElapsedTimeCounter::ResetGlobalTime()
{
    _globalStartTime.store(nxPlatform::QueryPerformanceCounter(), std::memory_order_relaxed);
}

double nxElapsedTimeCounter::GetGlobalElapsedTimeInSeconds()
{
    long long const elapsed =
        nxPlatform::QueryPerformanceCounter() - _globalStartTime.load(std::memory_order_relaxed);
    return static_cast<double>(elapsed) / static_cast<double>(_countsPerSecond);
}
