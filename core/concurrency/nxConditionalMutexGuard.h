#pragma once

#include "core/concurrency/nxMutex.h"

/// @file
/// Holds an nxMutex for the length of a scope, if it is told to.

/// An nxMutexGuard for a caller who may hold the mutex already. Drops both results.
class NX_CORE_API [[nodiscard]] nxConditionalMutexGuard
{
public:
    /// @param lock  false leaves the mutex alone, here and in the destructor.
    nxConditionalMutexGuard(nxMutex& mutex, bool lock) : _mutex(mutex), _locked(lock)
    {
        if (_locked)
            (void)_mutex.Lock();
    }

    ~nxConditionalMutexGuard()
    {
        if (_locked)
            (void)_mutex.Unlock();
    }

private:
    nxConditionalMutexGuard() = delete;
    nxConditionalMutexGuard(nxConditionalMutexGuard const&) = delete;
    nxConditionalMutexGuard& operator=(nxConditionalMutexGuard const&) = delete;

    nxMutex& _mutex;
    bool const _locked;
};
