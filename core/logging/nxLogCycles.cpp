#include "core/logging/nxLogCycles.h"

#include "core/concurrency/nxMutexGuard.h"

#include <chrono>
#include <new>

void nxLogCycles::Begin()
{
    nxMutexGuard guard(_mutex);
    _hasWriter = true;
}

void nxLogCycles::TakingQueue()
{
    nxMutexGuard guard(_mutex);
    ++_taken;
}

void nxLogCycles::Written()
{
    nxMutexGuard guard(_mutex);
    ++_written;
    _writtenTaken = _taken;
    (void)_changed.SignalAll();
}

void nxLogCycles::End()
{
    nxMutexGuard guard(_mutex);
    _hasWriter = false;
    (void)_changed.SignalAll();
}

void nxLogCycles::WaitForNext(nxDoubleValueWrapper const& timeoutSeconds)
{
    // A wait of that many seconds is one without limit; as a deadline it would overflow.
    constexpr double longestWait = 1e9;
    using Clock = std::chrono::steady_clock;

    double const seconds = timeoutSeconds;
    bool const isLimited = !(seconds > longestWait); // a null is beyond it, too
    auto const start = Clock::now();
    nxMutexGuard guard(_mutex);
    unsigned long long const written = _written;
    while (_hasWriter && _written == written)
    {
        if (!isLimited)
        {
            (void)_changed.Wait(_mutex);
            continue;
        }
        double const left = seconds - std::chrono::duration<double>(Clock::now() - start).count();
        if (!(left > 0.0))
            return;
        (void)_changed.TimedWait(_mutex, left);
    }
}

void nxLogCycles::WaitForQueued()
{
    nxMutexGuard guard(_mutex);
    // What was queued up to now goes out with a batch that is taken after now.
    unsigned long long const taken = _taken;
    while (_hasWriter && _writtenTaken <= taken)
        (void)_changed.Wait(_mutex);
}

void nxLogCycles::LockBeforeFork()
{
    (void)_mutex.Lock();
}

void nxLogCycles::UnlockInParent()
{
    (void)_mutex.Unlock();
}

void nxLogCycles::RemakeInChild()
{
    new (&_mutex) nxMutex;
    new (&_changed) nxConditionRaw;
    _hasWriter = false;
}
