#pragma once

#include "core/concurrency/nxMutex.h"

/// @file
/// Holds an nxMutex for the length of a scope.

/// Locks in its constructor, unlocks in its destructor and drops both results: the scope runs even where the
/// lock could not be had, and the mutex is then unlocked all the same.
class NX_CORE_API [[nodiscard]] nxMutexGuard
{
public:
    explicit nxMutexGuard(nxMutex& mutex) : _mutex(mutex)
    {
        (void)_mutex.Lock();
    }

    ~nxMutexGuard()
    {
        (void)_mutex.Unlock();
    }

private:
    nxMutexGuard() = delete;
    nxMutexGuard(nxMutexGuard const&) = delete;
    nxMutexGuard& operator=(nxMutexGuard const&) = delete;

    nxMutex& _mutex;
};
