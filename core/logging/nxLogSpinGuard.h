#pragma once

#include "core/concurrency/nxSpinLock.h"
#include "core/platform/nxPause.h"

#include <thread>

/// @file
/// Holds a spin lock for the length of a scope, and lets others run when it has to wait. For the sources of this
/// folder.

/// What nxSpinLockGuard does, for a lock that many threads take all the time: whoever finds the owner without a
/// processor gives its own away instead of spinning until its time is over.
class nxLogSpinGuard
{
public:
    explicit nxLogSpinGuard(nxSpinLock& lock) : _lock(lock)
    {
        constexpr unsigned int patience = 100; // attempts: some microseconds, more than any section takes

        for (unsigned int attempts = 0; !_lock.TryLock().IsOK(); ++attempts)
            if (attempts < patience)
                nxPlatform::Pause();
            else
                std::this_thread::yield();
    }

    ~nxLogSpinGuard()
    {
        (void)_lock.Unlock();
    }

    nxLogSpinGuard(nxLogSpinGuard const&) = delete;
    nxLogSpinGuard& operator=(nxLogSpinGuard const&) = delete;

private:
    nxSpinLock& _lock;
};
