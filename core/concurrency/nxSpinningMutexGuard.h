#pragma once

#include "core/concurrency/nxMutex.h"
#include "core/platform/nxThreads.h"

/// @file
/// Holds an nxMutex for a scope of a few instructions. For the sources of this folder.

/// An nxMutexGuard for a mutex that is never held for long. When it is taken, this looks again a number of
/// times before it goes to sleep: to sleep and be woken takes a hundred times as long as such a scope. The
/// rests between the looks are long enough for the owner to come back several times while the mutex is still
/// in its processor's cache.
class nxSpinningMutexGuard
{
public:
    explicit nxSpinningMutexGuard(nxMutex& mutex) : _mutex(mutex)
    {
        constexpr int looks = 30;
        for (int look = 0; look < looks; ++look)
        {
            if (_mutex.TryLock().IsOK())
                return;
            nxPlatform::Relax();
        }
        (void)_mutex.Lock();
    }

    ~nxSpinningMutexGuard()
    {
        (void)_mutex.Unlock();
    }

    nxSpinningMutexGuard(nxSpinningMutexGuard const&) = delete;
    nxSpinningMutexGuard& operator=(nxSpinningMutexGuard const&) = delete;

private:
    nxMutex& _mutex;
};
