#pragma once

#include "core/concurrency/nxSpinLock.h"

/// @file
/// Holds an nxSpinLock for the length of a scope.

/// Locks in its constructor, unlocks in its destructor and drops both results. Calls the system directly:
/// nothing lies between the guarded section and the lock.
class NX_CORE_API [[nodiscard]] nxSpinLockGuard
{
public:
    explicit nxSpinLockGuard(nxSpinLock& lock) : _lock(lock)
    {
        (void)pthread_spin_lock(&_lock._lock);
    }

    ~nxSpinLockGuard()
    {
        (void)pthread_spin_unlock(&_lock._lock);
    }

private:
    nxSpinLockGuard(nxSpinLockGuard const&) = delete;
    nxSpinLockGuard& operator=(nxSpinLockGuard const&) = delete;

    nxSpinLock& _lock;
};
